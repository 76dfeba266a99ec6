#include "viewer/drawing/Framing.h"

#include <zep/view/Camera.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace ZEP {

namespace {

constexpr double Margin = 1.12;

/// The points as they lie across one direction of the view: a point at (x, away) is seen within
/// the view where |x - middle| <= slope (away + distance).
class TSpan {
public:
    explicit TSpan(double slope) : m_slope(slope) {}

    void Add(double x, double away) { m_points.push_back({x, away}); }

    /// The least distance of the eye; the two outermost points to either side decide.
    [[nodiscard]] double Distance() const {
        double above = -std::numeric_limits<double>::max();
        double below = above;
        for (const auto& [x, away] : m_points) {
            above = std::max(above, x - m_slope * away);
            below = std::max(below, -x - m_slope * away);
        }
        return (above + below) / 2 / m_slope;
    }

    /// Where the eye stands so that from that distance the margins to both sides are even.
    [[nodiscard]] double Middle(double distance) const {
        double middle = 0;
        for (int step = 0; step < Steps; ++step) {
            double low = std::numeric_limits<double>::max();
            double high = -low;
            for (const auto& [x, away] : m_points) {
                const double seen = (x - middle) / (away + distance);
                low = std::min(low, seen);
                high = std::max(high, seen);
            }
            middle += (low + high) / 4 * distance;
        }
        return middle;
    }

private:
    static constexpr int Steps = 30; // each halves the error, about

    struct TPoint {
        double X, Away;
    };

    double m_slope;
    std::vector<TPoint> m_points;
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
    // A parallel view has its angle across, and what is away is not smaller.
    const bool parallel = camera.Orthographic();
    TSpan across(parallel ? slope : slope * aspect);
    TSpan upwards(parallel ? slope / aspect : slope);
    double depth = 0; // of the points before the target
    for (const TGLArrayd3& point : points) {
        const TGLArrayd3 place = Sum(point, target, -1);
        depth = std::max(depth, -Dotd(place, away));
        const double depthSeen = parallel ? 0 : Dotd(place, away);
        across.Add(Dotd(place, right), depthSeen);
        upwards.Add(Dotd(place, up), depthSeen);
    }
    // What is seen from its end has hardly an extent, and the eye must not come into it.
    const double distance =
        std::max({across.Distance(), upwards.Distance(), before / 2, 1.1 * depth});
    if (!std::isfinite(distance)) return;
    const TGLArrayd3 newTarget =
        Sum(Sum(target, right, across.Middle(distance)), up, upwards.Middle(distance));
    const TGLArrayd3 newEye = Sum(newTarget, away, -distance);
    camera.Target()->SetData(newTarget[0], newTarget[1], newTarget[2]);
    camera.Position()->SetData(newEye[0], newEye[1], newEye[2]);
    camera.Reset();
}

} // namespace ZEP
