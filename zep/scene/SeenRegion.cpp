#include <zep/scene/SeenRegion.h>

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

/// Where a corner of a box is in the viewport, in parts of its width and height; false behind the
/// eye.
bool ToView(const TGLMatrixd4& toClip, const TGLArrayd3& corner, double& x, double& y) {
    std::array<double, 4> clip = toClip[3];
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 4; ++k) clip[k] += corner[i] * toClip[i][k];
    if (!(clip[3] > 1e-9)) return false;
    x = (clip[0] / clip[3] + 1) / 2;
    y = (clip[1] / clip[3] + 1) / 2;
    return std::isfinite(x) && std::isfinite(y);
}

} // namespace

void TZEPSeenPart::Add(const TGLMatrixd4& toClip, const TGLArrayd3& min, const TGLArrayd3& max) {
    for (unsigned corner = 0; corner < 8; ++corner) {
        double x = 0;
        double y = 0;
        if (!ToView(toClip,
                    {(corner & 1U ? max : min)[0], (corner & 2U ? max : min)[1],
                     (corner & 4U ? max : min)[2]},
                    x, y))
            return AddAll();
        m_minX = std::min(m_minX, x);
        m_minY = std::min(m_minY, y);
        m_maxX = std::max(m_maxX, x);
        m_maxY = std::max(m_maxY, y);
    }
}

void TZEPSeenPart::AddAll() {
    m_minX = m_minY = 0;
    m_maxX = m_maxY = 1;
}

TZEPRegion TZEPSeenPart::InPixels() const {
    std::array<GLint, 4> viewport{};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    const auto place = [](double part, int size, int spare) {
        return static_cast<int>(std::clamp(part, 0.0, 1.0) * size) + spare;
    };
    TZEPRegion region;
    region.X = std::max(place(m_minX, viewport[2], -1), 0);
    region.Y = std::max(place(m_minY, viewport[3], -1), 0);
    region.Width = std::min(place(m_maxX, viewport[2], 2), viewport[2]) - region.X;
    region.Height = std::min(place(m_maxY, viewport[3], 2), viewport[3]) - region.Y;
    return region;
}

} // namespace ZEP
