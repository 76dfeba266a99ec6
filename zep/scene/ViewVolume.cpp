#include <zep/scene/ViewVolume.h>

#include <zep/scene/Frame.h>
#include <zep/scene/GLState.h>
#include <zep/scene/SeenRegion.h>

#include <cmath>
#include <utility>

namespace ZEP {

namespace {

/// OpenGL calculates in single precision: what lies outside by less may be seen.
constexpr double Slack = 1e-6;

/// From the clip coordinates of a viewport to those of a part of it.
TGLMatrixd4 ToPart(const std::array<GLint, 4>& viewport, const TZEPRegion& part) {
    TGLMatrixd4 matrix = idd;
    const auto narrow = [&](std::size_t axis, double size, double start, double width) {
        matrix[axis][axis] = size / width;
        matrix[3][axis] = (size - 2 * start) / width - 1;
    };
    narrow(0, viewport[2], part.X, part.Width);
    narrow(1, viewport[3], part.Y, part.Height);
    return matrix;
}

} // namespace

TZEPViewVolume::TZEPViewVolume(const TGLMatrixd4& toClip, double marginX, double marginY) {
    // The planes are x + w, w - x, and so on: from G. Gribb and K. Hartmann, "Fast extraction of
    // viewing frustum planes from the world-view-projection matrix", 2001.
    const std::array<double, 3> reach{1 + marginX, 1 + marginY, 1};
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t axis = 0; axis < 3; ++axis) {
            m_planes[i][2 * axis] = reach[axis] * toClip[i][3] + toClip[i][axis];
            m_planes[i][2 * axis + 1] = reach[axis] * toClip[i][3] - toClip[i][axis];
        }
    for (double& distance : m_planes[3]) distance += Slack * std::abs(distance);
    Measure();
}

TZEPViewVolume TZEPViewVolume::OfContext(double pixels, const TZEPRegion* part) {
    std::array<GLint, 4> viewport{};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    if (!part || part->IsEmpty())
        return TZEPViewVolume(LoadedToClip(), 2 * pixels / std::fmax(viewport[2], 1),
                              2 * pixels / std::fmax(viewport[3], 1));
    TGLMatrixd4 toClip;
    MultMatrixd(ToPart(viewport, *part), LoadedToClip(), toClip);
    return TZEPViewVolume(toClip, 2 * pixels / part->Width, 2 * pixels / part->Height);
}

std::optional<TZEPViewVolume> TZEPViewVolume::OfSight() {
    GLint list = 0;
    glGetIntegerv(GL_LIST_INDEX, &list);
    if (list != 0) return {};
    return OfContext(WidestCulled / 2);
}

TZEPViewVolume TZEPViewVolume::Within(const TGLMatrixd4& matrix) const {
    TZEPViewVolume inner;
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t k = 0; k < 4; ++k)
            for (std::size_t plane = 0; plane < Planes; ++plane)
                inner.m_planes[i][plane] += matrix[i][k] * m_planes[k][plane];
    inner.Measure();
    return inner;
}

void TZEPViewVolume::Measure() {
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t plane = 0; plane < Planes; ++plane)
            m_sizes[i][plane] = std::abs(m_planes[i][plane]);
}

TZEPSeen TZEPViewVolume::Shows(const TGLArrayd3& min, const TGLArrayd3& max) const {
    std::array<double, Planes> centers = m_planes[3]; // the signed distance of the centre
    std::array<double, Planes> extents{};             // and how far the box reaches either way
    for (std::size_t i = 0; i < 3; ++i) {
        const double center = (min[i] + max[i]) / 2;
        const double extent = (max[i] - min[i]) / 2;
        for (std::size_t plane = 0; plane < Planes; ++plane) {
            centers[plane] += m_planes[i][plane] * center;
            extents[plane] += m_sizes[i][plane] * extent;
        }
    }
    bool outside = false;
    bool inside = true;
    for (std::size_t plane = 0; plane < Planes; ++plane) {
        outside |= centers[plane] + extents[plane] < 0;
        inside &= centers[plane] - extents[plane] >= 0;
    }
    if (outside) return TZEPSeen::Nothing;
    return inside ? TZEPSeen::All : TZEPSeen::Part;
}

TZEPViewFrame::TZEPViewFrame(TZEPFrame& frame, std::optional<TZEPViewVolume> volume)
    : m_frame(frame), m_outer(std::exchange(frame.View, this)), m_volume(volume),
      m_bounds(volume.has_value()) {}

TZEPViewFrame::TZEPViewFrame(TZEPFrame& frame, const TGLMatrixd4& matrix)
    : m_frame(frame), m_outer(frame.View), m_matrix(&matrix), m_bounds(Bounds(frame)) {
    frame.View = this;
}

TZEPViewFrame::~TZEPViewFrame() {
    m_frame.View = m_outer;
}

bool TZEPViewFrame::Bounds(const TZEPFrame& frame) {
    return frame.View && frame.View->m_bounds;
}

TZEPSeen TZEPViewFrame::Shows(const TZEPFrame& frame, const TZEPBlockBox& box) {
    // An object that leaves the scene while it is drawn looks at a frame without a view, and one of
    // a scene within another at a view that nothing bounds.
    return Bounds(frame) ? frame.View->Volume().Shows(box.Min, box.Max) : TZEPSeen::Part;
}

const TZEPViewVolume& TZEPViewFrame::Volume() {
    if (!m_volume) m_volume = m_outer->Volume().Within(*m_matrix);
    return *m_volume;
}

} // namespace ZEP
