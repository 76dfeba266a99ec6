#include <zep/view/Camera.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

constexpr double Margin = 1.05; // of the view left free around the box

/// A box about its centre, in the axes of a view: half its width and height as seen, and for each
/// corner its place (right, up, away).
struct SeenBox {
    std::array<TGLArrayd3, 8> Corners;
    TGLArrayd3 Center;
    double Radius;
};

struct Axes {
    TGLArrayd3 Right, Up, Away;
};

Axes AxesOf(TGLArrayd3 away, const TGLArrayd3& up) {
    if (Dotd(away, away) == 0) away = {-1, 1, -1};
    Normalized(away);
    Axes axes{zero3d, zero3d, away};
    // Where the view runs along the up vector any other one does.
    for (const TGLArrayd3& u : {up, unitz, unity}) {
        CrossProdd(away, u, axes.Right);
        if (Dotd(axes.Right, axes.Right) > 1e-12 * Dotd(u, u)) break;
    }
    Normalized(axes.Right);
    CrossProdd(axes.Right, away, axes.Up);
    return axes;
}

/// The box as the eye sees it. \param toOwn  from absolute coordinates to those of the camera
SeenBox Look(const TGLArrayd3& min, const TGLArrayd3& max, const TGLMatrixd4& toOwn,
             const Axes& axes) {
    SeenBox box;
    TGLArrayd3 half;
    for (std::size_t k = 0; k < 3; ++k) {
        box.Center[k] = min[k] / 2 + max[k] / 2;
        half[k] = max[k] / 2 - min[k] / 2;
    }
    if (half == zero3d) half = {0.5, 0.5, 0.5};
    box.Radius = std::hypot(half[0], half[1], half[2]);
    TGLMatrixd4 turn = toOwn;
    turn[3] = {0, 0, 0, 1};
    for (std::size_t i = 0; i < 8; ++i) {
        TGLArrayd3 corner{i & 1U ? half[0] : -half[0], i & 2U ? half[1] : -half[1],
                          i & 4U ? half[2] : -half[2]};
        Xformd(turn, corner);
        box.Corners[i] = {Dotd(corner, axes.Right), Dotd(corner, axes.Up), Dotd(corner, axes.Away)};
    }
    Xformd(toOwn, box.Center);
    return box;
}

/// From where the box fills a perspective view; `slope` is the tangent of half the field of view.
double PerspectiveDistance(const SeenBox& box, double slope, double aspect) {
    double distance = 0;
    for (const auto& [right, up, away] : box.Corners)
        distance = std::max({distance, std::abs(right) * Margin / (slope * aspect) - away,
                             std::abs(up) * Margin / slope - away});
    return distance;
}

/// The distance that gives a parallel view the width, and with it the height, of the box.
double ParallelDistance(const SeenBox& box, double slope, double aspect) {
    double halfWidth = 0;
    for (const auto& [right, up, away] : box.Corners)
        halfWidth = std::max({halfWidth, std::abs(right), std::abs(up) * aspect});
    // A line seen from its end has no width at all.
    return std::max(halfWidth, box.Radius * 1e-3) * Margin / slope;
}

} // namespace

void TZEPCamera::FitTo(const TGLArrayd3& min, const TGLArrayd3& max, double aspect) {
    for (std::size_t k = 0; k < 3; ++k)
        if (!(min[k] <= max[k])) return;
    if (!(aspect > 0 && std::isfinite(aspect))) aspect = 1;
    const TGLArrayd3 toEye = ToEye();
    const Axes axes = AxesOf({-toEye[0], -toEye[1], -toEye[2]}, m_up.Data());
    TGLMatrixd4 toOwn = GetAbsoluteMatrix();
    InverseMatrixd(toOwn);
    const SeenBox box = Look(min, max, toOwn, axes);
    const double slope = std::tan(std::clamp(FOVY(), 0.1, 175.0) / 360 * std::numbers::pi);
    // An eye outside of the sphere about the box can be turned around it.
    const double distance =
        Orthographic() ? ParallelDistance(box, slope, aspect)
                       : std::max(PerspectiveDistance(box, slope, aspect), 1.1 * box.Radius);
    TGLArrayd3 eye;
    for (std::size_t k = 0; k < 3; ++k) eye[k] = box.Center[k] - distance * axes.Away[k];
    if (!std::isfinite(Dotd(eye, eye) + distance)) return;
    // Far beyond the box there is room to zoom out, which costs no depth worth speaking of: that
    // hangs on the near plane. A parallel view cuts behind the eye, where parts of the box may be.
    const double farPlane = 100 * (distance + box.Radius);
    Place(eye, box.Center, Orthographic() ? -farPlane : distance / 1000, farPlane);
}

void TZEPCamera::Place(const TGLArrayd3& eye, const TGLArrayd3& target, double nearPlane,
                       double farPlane) {
    BeginUpdate();
    Reset();
    SetPositionObject(nullptr);
    SetTargetObject(nullptr);
    Position()->SetData(eye[0], eye[1], eye[2]);
    Target()->SetData(target[0], target[1], target[2]);
    SetNearClipPlane(nearPlane);
    SetFarClipPlane(farPlane);
    EndUpdate();
}

} // namespace ZEP
