#pragma once

#include <zep/scene/Geom.h>

#include <functional>
#include <vector>

namespace ZEP {

/// A corner of a drawn polygon, in the coordinates that were in force outside of the drawing.
struct TDrawnVertex {
    TGLArrayd3 Point{};
    TGLArrayd3 Normal{}; ///< of length 1 where the context normalizes
};
using TDrawnPolygon = std::vector<TDrawnVertex>;

/// The polygons that `draw` draws, in order, as OpenGL's feedback mode gives them: whoever sends
/// them, with what it does to the matrix. A polygon may come in pieces; the order of corners that
/// it is sent in holds. What lies beyond `reach` from the origin along an axis is cut off.
std::vector<TDrawnPolygon> DrawnPolygons(double reach, const std::function<void()>& draw);

} // namespace ZEP
