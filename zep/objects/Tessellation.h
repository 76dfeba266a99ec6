#pragma once

#include <zep/Export.h>
#include <zep/scene/Geom.h>

#include <GL/gl.h>

#include <span>
#include <vector>

namespace ZEP {

/// \file
/// What GLU's tessellator makes of polygons. Of places that it cannot compute with it makes
/// nothing.

struct TTriangles {
    std::vector<TGLArrayd3> Points; ///< three for each
    std::vector<GLboolean> Edges;   ///< from each point to the next one: of the outline
};

/// Fills what the polygon runs round, as `TZEPPolygon` does where it is concave.
[[nodiscard]] ZEP_CORE_EXPORT TTriangles TrianglesOf(std::span<const TGLArrayd3> polygon);

using TContours = std::vector<std::vector<TGLArrayd3>>;

/// How contours fill an area.
enum class TFillRule {
    Odd,    ///< what an odd number of contours runs round
    NonZero ///< what they run round, whatever their order
};

/// The outlines of that area, whatever the contours cross: they neither cross nor lie upon each
/// other, and the area is on their left.
/// \param contours  in a plane of one z
[[nodiscard]] ZEP_CORE_EXPORT TContours OutlinesOf(const TContours& contours, TFillRule rule);

/// They may have so many crossings, or sides above each other, that `OutlinesOf` would take
/// seconds.
[[nodiscard]] ZEP_CORE_EXPORT bool AreTangled(const TContours& contours);

/// One polygon in place of several: it goes over from each to the next and comes back on the same
/// way, so that it runs round the same area. It begins at a corner that is no dent.
/// \param outlines  as `OutlinesOf` makes them
[[nodiscard]] ZEP_CORE_EXPORT std::vector<TGLArrayd3> PolygonOf(TContours outlines);

} // namespace ZEP
