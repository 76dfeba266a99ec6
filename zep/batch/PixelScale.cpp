#include <zep/batch/PixelScale.h>

#include <zep/scene/GLState.h>
#include <zep/scene/Vectors.h>

#include <algorithm>
#include <limits>

namespace ZEP {

TPixelScale TPixelScale::OfContext() {
    const TGLMatrixd4 toClip = LoadedToClip();
    std::array<GLint, 4> viewport{};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    const auto row = [&](std::size_t i) -> TGLArrayd3 {
        return {toClip[0][i], toClip[1][i], toClip[2][i]};
    };
    // x / w changes with x and, at the rim of the view, by as much with w.
    const auto scale = [&](std::size_t i, GLint size) {
        return (Length(row(i)) + Length(row(3))) * size / 2;
    };
    TPixelScale view;
    view.m_depth = {toClip[0][3], toClip[1][3], toClip[2][3], toClip[3][3]};
    view.m_scale = std::max(scale(0, viewport[2]), scale(1, viewport[3]));
    return view;
}

double TPixelScale::Most(const TGLArrayd3& min, const TGLArrayd3& max) const {
    double nearest = m_depth[3];
    for (std::size_t k = 0; k < 3; ++k)
        nearest += std::min(m_depth[k] * min[k], m_depth[k] * max[k]);
    return nearest > 0 ? m_scale / nearest : std::numeric_limits<double>::infinity();
}

} // namespace ZEP
