#pragma once

#include <zep/converters/dxf/Record.h>
#include <zep/objects/Tessellation.h>

namespace ZEP {

/// The boundaries of a hatch as closed chains in its plane, at its elevation: polylines with
/// bulges, and edges that are lines, arcs, ellipses and splines. Edges that meet make one chain,
/// whichever way round they run.
/// \param mostPoints  once there are more, the rest is left out
[[nodiscard]] TContours HatchContours(const TDXFRecord& record, std::size_t mostPoints);

/// What a hatch does with contours in others.
enum class TDXFHatchStyle { Normal, Outer, Ignore };

/// Without those that the style passes over. What is left is filled by the odd rule.
[[nodiscard]] TContours ContoursOfStyle(TContours contours, TDXFHatchStyle style);

} // namespace ZEP
