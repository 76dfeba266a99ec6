#pragma once

/// \file
/// The reader of 3DS scenes.

#include <zep/converters/threeds/Converter.h>
