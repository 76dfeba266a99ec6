#include "viewer/Framing.h"

#include "view/Camera.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace ZEP {

namespace {

constexpr double Margin = 1.12;

/// Across one direction of the view: where the eye stands, and how far from the target's plane.
struct TSpan {
    double Middle = 0, Distance = 0;
};

/// A point at (x, away) is seen where |x - middle| <= slope (away + distance); the two outermost
/// ones to either side decide.
class TSpanFinder {
public:
    explicit TSpanFinder(double slope) : m_slope(slope) {}

    void Add(double x, double away) {
        m_above = std::max(m_above, x - m_slope * away);
        m_below = std::max(m_below, -x - m_slope * away);
    }
    [[nodiscard]] TSpan Span() const {
        return {(m_above - m_below) / 2, (m_above + m_below) / 2 / m_slope};
    }

private:
    double m_slope;
    double m_above = -std::numeric_limits<double>::max();
    double m_below = -std::numeric_limits<double>::max();
};

TGLArrayd3 Sum(const TGLArrayd3& a, const TGLArrayd3& b, double times) {
    return {a[0] + b[0] * times, a[1] + b[1] * times, a[2] + b[2] * times};
}

} // namespace

void FrameTightly(TZEPCamera& camera, const std::vector<TGLArrayd3>& points, double aspect) {
    if (points.empty()) return;
    const TGLArrayd3 target = camera.GetTarget();
    const TGLArrayd3 eye = camera.GetPosition();
    TGLArrayd3 away = Sum(target, eye, -1);
    const double before = std::sqrt(Dotd(away, away));
    Normalized(away);
    TGLArrayd3 right;
    CrossProdd(away, camera.Up()->Data(), right);
    Normalized(right);
    TGLArrayd3 up;
    CrossProdd(right, away, up);
    const double slope = std::tan(camera.FieldOfView() * std::numbers::pi / 360) / Margin;
    TSpanFinder across(slope * aspect);
    TSpanFinder upwards(slope);
    double depth = 0; // of the points before the target
    for (const TGLArrayd3& point : points) {
        const TGLArrayd3 place = Sum(point, target, -1);
        depth = std::max(depth, -Dotd(place, away));
        across.Add(Dotd(place, right), Dotd(place, away));
        upwards.Add(Dotd(place, up), Dotd(place, away));
    }
    const TSpan x = across.Span();
    const TSpan y = upwards.Span();
    // What is seen from its end has hardly an extent, and the eye must not come into it.
    const double distance = std::max({x.Distance, y.Distance, before / 2, 1.1 * depth});
    if (!std::isfinite(distance)) return;
    const TGLArrayd3 newTarget = Sum(Sum(target, right, x.Middle), up, y.Middle);
    const TGLArrayd3 newEye = Sum(newTarget, away, -distance);
    camera.Target()->SetData(newTarget[0], newTarget[1], newTarget[2]);
    camera.Position()->SetData(newEye[0], newEye[1], newEye[2]);
    camera.Reset();
}

} // namespace ZEP
