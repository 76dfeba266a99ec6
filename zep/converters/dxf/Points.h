#pragma once

#include <zep/scene/Geom.h>

#include <cmath>
#include <span>

namespace ZEP {

[[nodiscard]] inline bool IsFinite(const TGLArrayd3& p) {
    return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
}

[[nodiscard]] inline double Distance(const TGLArrayd3& a, const TGLArrayd3& b) {
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

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
