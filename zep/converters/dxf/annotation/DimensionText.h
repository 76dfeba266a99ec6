#pragma once

#include <string>

namespace ZEP {

class TDXFDimensionStyle;

/// \file
/// What a dimension says, as a text with inline codes (MTEXT).

/// \param length  in the unit of the drawing; the style scales, rounds and writes it
[[nodiscard]] std::string DXFLengthText(double length, const TDXFDimensionStyle& style);
/// \param angle  in radians
[[nodiscard]] std::string DXFAngleText(double angle, const TDXFDimensionStyle& style);

/// What a style sets about a length: a prefix, a suffix, tolerances or limits.
/// \param prefix  where the style has none of its own
[[nodiscard]] std::string DXFMeasuredText(double length, const TDXFDimensionStyle& style,
                                          const std::string& prefix = {});

} // namespace ZEP
