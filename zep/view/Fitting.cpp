#include <zep/view/Fitting.h>

#include <zep/scene/Vectors.h>
#include <zep/view/Camera.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace ZEP {

namespace {

constexpr double FarAway = 100;         // the far plane, in distances: there is room to zoom out
constexpr double Near = 1e-3;           // the near plane, in distances
constexpr double Clear = 1.1;           // the eye, in distances of what it must not come into
constexpr double LeastWidth = 1e-3;     // of a parallel view, in radii: a line may be seen endwise
constexpr double LeastDistance = 1e-12; // of the coordinates: eye and target are told apart
constexpr double Lean = 1e-3;           // of a view along the up vector
constexpr double RoomyMargin = 1.05;    // of a view that can be turned

/// The axes of a view in the camera's own frame, and the way there.
struct TViewAxes {
    TGLMatrixd4 ToOwn;
    TGLArrayd3 Right, Up, Away;
};

/// A view along the up vector leans a little, so that something is up in it.
TViewAxes AxesOf(const TZEPCamera& camera, TGLArrayd3 up) {
    TViewAxes axes{camera.GetAbsoluteMatrix(), {}, {}, camera.GetTarget() - camera.GetPosition()};
    InverseMatrixd(axes.ToOwn);
    if (up == zero3d) up = unitz;
    if (axes.Away == zero3d) axes.Away = {-1, 1, -1};
    Normalized(axes.Away);
    axes.Right = Cross(axes.Away, up);
    if (Dotd(axes.Right, axes.Right) <= 1e-12 * Dotd(up, up)) {
        axes.Away = Unit(axes.Away + Lean * (std::abs(axes.Away[1]) < 0.9 ? unity : unitz));
        axes.Right = Cross(axes.Away, up);
    }
    Normalized(axes.Right);
    axes.Up = Cross(axes.Right, axes.Away);
    return axes;
}

/// Points about a middle, across one direction of the view: one at (x, away) is seen where
/// |x - centre| <= slope (away + distance). In a parallel view what is away is not smaller.
class TSpan {
public:
    TSpan(double slope, bool parallel) : m_slope(slope), m_parallel(parallel) {}

    void Add(double x, double away) { m_points.push_back({x, m_parallel ? 0 : away}); }

    /// The least one from which all points are seen; those farthest out to either side decide.
    [[nodiscard]] double Distance(bool centred) const {
        double above = -std::numeric_limits<double>::infinity();
        double below = above;
        for (const auto& [x, away] : m_points) {
            above = std::max(above, x - m_slope * away);
            below = std::max(below, -x - m_slope * away);
        }
        return (centred ? std::max(above, below) : (above + below) / 2) / m_slope;
    }

    /// Where the eye stands so that from that distance the margins to both sides are even: there
    /// the slope that takes all points in is the least one. The gap that a slope leaves open is
    /// convex and made of straight pieces, so that Newton's steps end at its zero.
    [[nodiscard]] double Centre(double distance) const {
        TLine above{}, below{};
        double slope = 0;
        for (int step = 0; step < MostSteps; ++step) {
            above = Outermost(1, slope, distance);
            below = Outermost(-1, slope, distance);
            const double gap = above.At(slope) + below.At(slope);
            const double next = slope + gap / (above.Depth + below.Depth);
            if (!(next > slope)) break;
            slope = next;
        }
        return (above.At(slope) - below.At(slope)) / 2;
    }

private:
    static constexpr int MostSteps = 60;

    struct TPoint {
        double X, Away;
    };
    /// How far a point reaches beyond the view, if that has a slope.
    struct TLine {
        double X, Depth;
        [[nodiscard]] double At(double slope) const { return X - slope * Depth; }
    };

    [[nodiscard]] TLine Outermost(double side, double slope, double distance) const {
        TLine outermost{-std::numeric_limits<double>::infinity(), 1};
        for (const auto& [x, away] : m_points)
            if (const TLine line{side * x, away + distance}; line.At(slope) > outermost.At(slope))
                outermost = line;
        return outermost;
    }

    std::vector<TPoint> m_points;
    double m_slope;
    bool m_parallel;
};

/// Finite points about the middle of the box that they fill.
struct TPoints {
    explicit TPoints(std::span<const TGLArrayd3> points) {
        TZEPBounds box{points.front(), points.front()};
        for (const TGLArrayd3& point : points) {
            MinBoundsd(box.Min, point);
            MaxBoundsd(box.Max, point);
        }
        Middle = box.Min / 2 + box.Max / 2; // no overflow where the sum has one
        const TGLArrayd3 half = box.Max / 2 - box.Min / 2;
        for (const TGLArrayd3& point : points) FromMiddle.push_back(point - Middle);
        Box = CornersOf({-half, half});
        if (half == zero3d) FromMiddle = Box = CornersOf({{-0.5, -0.5, -0.5}, {0.5, 0.5, 0.5}});
        Radius = Length(Box.front());
    }

    TGLArrayd3 Middle;
    std::vector<TGLArrayd3> FromMiddle, Box;
    double Radius;
};

double Usable(double aspect) {
    return aspect > 0 && std::isfinite(aspect) ? aspect : 1;
}

double SlopeOf(double degrees) {
    return std::tan((degrees >= 0.1 ? std::min(degrees, 175.0) : 0.1) * std::numbers::pi / 360);
}

void SetPoint(TZEPVertex3& vertex, const TGLArrayd3& point) {
    vertex.SetData(point);
}

void Place(TZEPCamera& camera, const TGLArrayd3& eye, const TGLArrayd3& target, double nearPlane,
           double farPlane) {
    camera.BeginUpdate();
    camera.Reset();
    camera.SetPositionObject(nullptr);
    camera.SetTargetObject(nullptr);
    SetPoint(*camera.Position(), eye);
    SetPoint(*camera.Target(), target);
    camera.SetNearClipPlane(nearPlane);
    camera.SetFarClipPlane(farPlane);
    camera.EndUpdate();
}

/// What is seen of points about a middle.
class TView {
public:
    TView(const TZEPCamera& camera, const TViewAxes& axes, double aspect, double margin)
        : m_parallel(camera.Orthographic()), m_slope(SlopeOf(camera.FOVY()) / margin),
          // A parallel view has its angle across, any other one upwards.
          m_across(m_parallel ? m_slope : m_slope * aspect, m_parallel),
          m_upwards(m_parallel ? m_slope / aspect : m_slope, m_parallel), m_axes(axes) {
        m_axes.ToOwn[3] = {0, 0, 0, 1};
    }

    void Add(const std::vector<TGLArrayd3>& points) {
        for (TGLArrayd3 point : points) {
            Xformd(m_axes.ToOwn, point);
            const double away = Dotd(point, m_axes.Away);
            m_depth = std::max(m_depth, -away);
            m_across.Add(Dotd(point, m_axes.Right), away);
            m_upwards.Add(Dotd(point, m_axes.Up), away);
        }
    }

    /// Of the eye. \param radius  of the sphere about the points
    [[nodiscard]] double Distance(bool centred, double radius) const {
        const double clear =
            m_parallel ? LeastWidth * radius / m_slope : Clear * (centred ? radius : m_depth);
        return std::max({m_across.Distance(centred), m_upwards.Distance(centred), clear});
    }

    /// From the middle to where margins are even.
    [[nodiscard]] TGLArrayd3 Shift(double distance) const {
        return m_across.Centre(distance) * m_axes.Right + m_upwards.Centre(distance) * m_axes.Up;
    }

private:
    bool m_parallel;
    double m_slope;
    TSpan m_across, m_upwards;
    TViewAxes m_axes;
    double m_depth = 0; ///< of the points before the middle
};

bool Fit(TZEPCamera& camera, const TPoints& points, double aspect, const TFitOptions& options) {
    const TViewAxes axes = AxesOf(camera, camera.Up()->Data());
    TView view(camera, axes, aspect, std::max(1.0, options.Margin));
    view.Add(points.FromMiddle);
    TView roomy(camera, axes, aspect, RoomyMargin);
    roomy.Add(points.Box);
    TGLArrayd3 target = points.Middle;
    Xformd(axes.ToOwn, target);
    const double least = LeastDistance * Length(target);
    const double distance = std::max(view.Distance(options.Centred, points.Radius), least);
    if (!options.Centred) target += view.Shift(distance);
    const TGLArrayd3 eye = target - distance * axes.Away;
    // The planes are those from where all of the box can be turned, however near the eye is now.
    const double room = std::max(roomy.Distance(true, points.Radius), least);
    double farPlane = FarAway * (room + points.Radius);
    if (!std::isfinite(Dotd(eye, eye) + farPlane)) return false;
    if (options.KeepsDepth) farPlane = std::max(farPlane, camera.FarClipPlane());
    // A parallel view cuts behind the eye, where parts of what is seen may be.
    Place(camera, eye, target, camera.Orthographic() ? -farPlane : Near * room, farPlane);
    return true;
}

} // namespace

bool FitCamera(TZEPCamera& camera, std::span<const TGLArrayd3> points, double aspect,
               const TFitOptions& options) {
    std::vector<TGLArrayd3> finite;
    std::ranges::copy_if(points, std::back_inserter(finite), &IsFinite);
    return !finite.empty() && Fit(camera, TPoints(finite), Usable(aspect), options);
}

bool FitCamera(TZEPCamera& camera, const TZEPBounds& box, double aspect,
               const TFitOptions& options) {
    for (std::size_t k = 0; k < 3; ++k)
        if (!(box.Min[k] <= box.Max[k])) return false;
    if (!IsFinite(box.Min) || !IsFinite(box.Max)) return false;
    return FitCamera(camera, CornersOf(box), aspect, options);
}

bool FitCamera(TZEPCamera& camera, TZEPObject& node, double aspect, const TFitOptions& options) {
    return FitCamera(camera, VisiblePoints(node), aspect, options);
}

void TZEPCamera::FitTo(const TGLArrayd3& min, const TGLArrayd3& max, double aspect) {
    FitCamera(*this, {min, max}, aspect, {.Margin = RoomyMargin, .Centred = true});
}

std::vector<TGLArrayd3> CornersOf(const TZEPBounds& box) {
    std::vector<TGLArrayd3> corners;
    for (unsigned i = 0; i < 8; ++i)
        corners.push_back({(i & 1U ? box.Max : box.Min)[0], (i & 2U ? box.Max : box.Min)[1],
                           (i & 4U ? box.Max : box.Min)[2]});
    return corners;
}

std::vector<TGLArrayd3> VisiblePoints(TZEPObject& node) {
    return VisibleExtent(node).Corners();
}

void SwitchProjection(TZEPCamera& camera, bool parallel, double aspect) {
    if (parallel == camera.Orthographic()) return;
    camera.SetOrthographic(parallel);
    // The field of view is across in a parallel view, else upwards.
    const double k = (parallel ? Usable(aspect) : 1 / Usable(aspect)) - 1;
    const auto [x, y, z] = k * (camera.GetPosition() - camera.GetTarget());
    camera.Move(x, y, z, 0, 0, 0);
    // Parts of what is seen may be behind the eye of a parallel view.
    camera.SetNearClipPlane(parallel ? -camera.FarClipPlane()
                                     : Near * Distance(camera.GetPosition(), camera.GetTarget()));
}

} // namespace ZEP
