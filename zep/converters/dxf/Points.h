#pragma once

#include <zep/scene/Vectors.h>

#include <span>

namespace ZEP {

/// Diagonal of the box about the points, of which there is one at least.
[[nodiscard]] inline double SizeOf(std::span<const TGLArrayd3> points) {
    TGLArrayd3 min = points.front(), max = min;
    for (const TGLArrayd3& point : points) {
        MinBoundsd(min, point);
        MaxBoundsd(max, point);
    }
    return Distance(min, max);
}

} // namespace ZEP
