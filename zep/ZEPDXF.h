#pragma once

/// \file
/// Unit ZEPDXF: the reader and writer of DXF drawings.

#include <zep/converters/dxf/Colors.h>
#include <zep/converters/dxf/Converter.h>
