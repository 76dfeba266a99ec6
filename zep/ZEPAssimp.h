#pragma once

/// \file
/// Unit ZEPAssimp: the reader of models of many formats.

#include <zep/converters/assimp/Converter.h>
