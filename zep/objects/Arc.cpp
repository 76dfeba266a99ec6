#include <zep/objects/Arc.h>

#include <zep/framework/Property.h>
#include <zep/objects/CirclePoints.h>
#include <zep/objects/SegmentCount.h>

#include <algorithm>
#include <numbers>

namespace ZEP {

namespace {

const TRegisterObject<TZEPArc> RegisteredArc;

constexpr double Radian = std::numbers::pi / 180;
constexpr double Quarter = 90;

TGLArrayd3 PointAt(double degrees) {
    return {0.5 * std::cos(degrees * Radian), 0.5 * std::sin(degrees * Radian), 0};
}

/// Where the circle meets the axis at `quarter` quarter turns.
TGLArrayd3 AxisPoint(double quarter) {
    const double rounded = quarter - 4 * std::floor(quarter / 4);
    if (rounded == 0) return {0.5, 0, 0};
    if (rounded == 1) return {0, 0.5, 0};
    if (rounded == 2) return {-0.5, 0, 0};
    return {0, -0.5, 0};
}

} // namespace

void TZEPArc::SetSegments(int segments) {
    if (Change(m_segments, SegmentCount(segments))) Invalidate(this);
}

void TZEPArc::SetStartAngle(double angle) {
    if (Change(m_startAngle, angle)) Invalidate(this);
}

void TZEPArc::SetEndAngle(double angle) {
    if (Change(m_endAngle, angle)) Invalidate(this);
}

double TZEPArc::Sweep() const {
    const double sweep = m_endAngle - m_startAngle;
    return m_startAngle < m_endAngle ? sweep : sweep + 360;
}

void TZEPArc::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    const auto [from, to] = std::minmax({m_startAngle, m_startAngle + Sweep()});
    min = max = PointAt(from);
    const auto widen = [&](const TGLArrayd3& point) {
        MinBoundsd(min, point);
        MaxBoundsd(max, point);
    };
    widen(PointAt(to));
    const double first = std::floor(from / Quarter) + 1;
    for (int i = 0; i < 4 && (first + i) * Quarter < to; ++i) widen(AxisPoint(first + i));
}

void TZEPArc::DrawShape(GLenum, bool) {
    glBegin(GL_LINE_STRIP);
    glNormal3b(127, 0, 0);
    ForCirclePoints(
        m_startAngle * Radian, Sweep() * Radian / m_segments, m_segments + 1,
        [](double x, double y) { glVertex3f(static_cast<float>(x), static_cast<float>(y), 0); });
    glEnd();
}

} // namespace ZEP
