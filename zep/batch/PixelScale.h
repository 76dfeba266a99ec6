#pragma once

#include <zep/scene/Geom.h>

namespace ZEP {

/// How large OpenGL's present view draws what is about a place.
class TPixelScale {
public:
    [[nodiscard]] static TPixelScale OfContext();
    /// Pixels of a unit within the box, at most; infinite where it reaches behind the eye.
    [[nodiscard]] double Most(const TGLArrayd3& min, const TGLArrayd3& max) const;

private:
    std::array<double, 4> m_depth{}; ///< the fourth clip coordinate of a place
    double m_scale = 1;              ///< pixels of a unit where that is 1
};

} // namespace ZEP
