#pragma once

/// \file
/// Unit ZEP3DS: the reader of 3DS scenes.

#include <zep/converters/threeds/Converter.h>
