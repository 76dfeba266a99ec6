#pragma once

#include <zep/scene/Vectors.h>
#include <zep/scene/VertexItems.h>

#include <algorithm>

namespace ZEP {

/// Box of the vertexes; all zero with fewer than two.
template <class TVertex>
void GetVertexBounds(const TZEPCollectionOf<TVertex>& vertexes, TGLArrayd3& min, TGLArrayd3& max) {
    min = max = zero3d;
    if (vertexes.Count() < 2) return;
    min = max = vertexes[0].Data();
    for (int i = 1; i < vertexes.Count(); ++i) {
        MinBoundsd(min, vertexes[i].Data());
        MaxBoundsd(max, vertexes[i].Data());
    }
}

/// The sum of all vertexes but the first, divided by the number of all; zero with fewer than two.
/// Cameras and pivots were placed by it, so that it stays as it is.
template <class TVertex>
[[nodiscard]] TGLArrayd3 VertexCenter(const TZEPCollectionOf<TVertex>& vertexes) {
    TGLArrayd3 center{};
    if (vertexes.Count() < 2) return center;
    for (int i = 1; i < vertexes.Count(); ++i) center += vertexes[i].Data();
    return center / vertexes.Count();
}

/// Half of a box's largest extent.
[[nodiscard]] inline double BoxRadius(const TGLArrayd3& min, const TGLArrayd3& max) {
    return std::max({max[0] - min[0], max[1] - min[1], max[2] - min[2]}) / 2;
}

} // namespace ZEP
