#pragma once

/// \file
/// The reader of DXF drawings.

#include <zep/converters/dxf/Colors.h>
#include <zep/converters/dxf/Converter.h>
