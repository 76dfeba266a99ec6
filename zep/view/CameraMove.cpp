#include <zep/scene/Vectors.h>
#include <zep/view/Camera.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

using std::numbers::pi;

constexpr double NearestToPole = 0.05; // degrees: at the pole nothing is up
constexpr double LargestStep = 0.9;    // of the distance, towards the target
constexpr double PointerFactor = 5;    // of the panel's control, in perspective

/// How far a point moves that is turned about the origin, by `a` degrees around the z axis and `b`
/// down from it.
TGLArrayd3 TurnBy(const TGLArrayd3& from, double a, double b, bool aboveHorizon = false) {
    constexpr double Margin = 0.001;
    // There and back through spherical coordinates would leave a trace of rounding: a drag that
    // returns to its start returns to the very view.
    if (a == 0 && b == 0 && !aboveHorizon) return zero3d;
    TGLArrayd3 s;
    OrthoToSphered(from, s);
    s[1] += pi * a / 180;
    s[2] += pi * b / 180;
    if (aboveHorizon) {
        const double polar = std::clamp(s[2], Margin, pi / 2 - Margin);
        if (a == 0 && b == 0 && polar == s[2]) return zero3d;
        s[2] = polar;
    }
    TGLArrayd3 to;
    SphereToOrthod(s, to);
    return to - from;
}

/// The axes of what looks along a direction with a level horizon.
std::array<TGLArrayd3, 3> LevelAxes(const TGLArrayd3& toEye, double azimuth) {
    const TGLArrayd3 right{-std::sin(azimuth), std::cos(azimuth), 0};
    const TGLArrayd3 back = Unit(toEye);
    TGLArrayd3 up;
    CrossProdd(back, right, up);
    return {right, back, up};
}

/// How far a point moves that is turned with an eye which goes `a` degrees around the z axis, from
/// one place to another. \param beside  from what it is turned about
TGLArrayd3 TurnWith(const TGLArrayd3& from, const TGLArrayd3& to, double a,
                    const TGLArrayd3& beside) {
    if (from == to) return zero3d;
    const double azimuth = std::atan2(from[1], from[0]);
    const auto old = LevelAxes(from, azimuth);
    const auto turned = LevelAxes(to, azimuth + pi * a / 180);
    TGLArrayd3 place{};
    for (std::size_t i = 0; i < 3; ++i) place = place + Dotd(beside, old[i]) * turned[i];
    return place - beside;
}

} // namespace

void TZEPCamera::Store() {
    m_storedNavigation = m_navigation;
    m_stored = true;
}

void TZEPCamera::Restore() {
    m_navigation = m_storedNavigation;
    m_stored = false;
}

void TZEPCamera::Reset() {
    m_navigation = {};
    Invalidate(this);
}

void TZEPCamera::Move(double px, double py, double pz, double tx, double ty, double tz) {
    m_navigation.Position[0] += px;
    m_navigation.Position[1] += py;
    m_navigation.Position[2] += pz;
    m_navigation.Target[0] += tx;
    m_navigation.Target[1] += ty;
    m_navigation.Target[2] += tz;
    Invalidate(this);
}

void TZEPCamera::Truck(double dx, double dy, double dz) {
    if (!m_extended) dz = 0;
    const double k = -TruckFactor();
    Move(k * dx, k * dy, k * dz, k * dx, k * dy, k * dz);
}

double TZEPCamera::TruckFactor() const {
    if (Orthographic()) return 1;
    if (!m_extended) return 10;
    // The pointer's place is known where depths are halfway between the planes.
    const double middle = 2 * m_nearClipPlane * m_farClipPlane / (m_nearClipPlane + m_farClipPlane);
    return Distance() / middle / PointerFactor;
}

void TZEPCamera::Pan(double a, double b) {
    const TGLArrayd3 toEye = ToEye();
    const TGLArrayd3 direction{-toEye[0], -toEye[1], -toEye[2]};
    TGLArrayd3 right;
    CrossProdd(m_up.Data(), direction, right);
    Normalized(right);
    TGLArrayd3 up;
    CrossProdd(direction, right, up);
    Normalized(up);
    TGLArrayd3 back;
    CrossProdd(up, right, back);
    const TGLArrayd3 own = TurnBy({0, -std::sqrt(Dotd(toEye, toEye)), 0}, a, b);
    TGLArrayd3 shift;
    for (std::size_t k = 0; k < 3; ++k)
        shift[k] = right[k] * own[0] + back[k] * own[1] + up[k] * own[2];
    Move(0, 0, 0, shift[0], shift[1], shift[2]);
}

void TZEPCamera::Orbit(double a, double b) {
    const bool limited = SceneContext() && SceneContext()->LimitCameraMovement();
    const TGLArrayd3 toEye = ToEye();
    const TGLArrayd3 turn = TurnBy(toEye, a, m_extended ? WithinPoles(b) : b, limited);
    const TGLArrayd3 aside =
        m_orbitCenter ? TurnWith(toEye, toEye + turn, a, GetTarget() - *m_orbitCenter) : zero3d;
    const auto [x, y, z] = turn + aside;
    Move(x, y, z, aside[0], aside[1], aside[2]);
}

double TZEPCamera::WithinPoles(double b) const {
    if (b == 0) return 0; // there and back through the angle would leave a trace of rounding
    TGLArrayd3 s;
    OrthoToSphered(ToEye(), s);
    const double polar = s[2] * 180 / pi;
    return std::clamp(polar + b, NearestToPole, 180 - NearestToPole) - polar;
}

void TZEPCamera::Roll(double angle) {
    const double roll = NormAngle360(m_navigation.Roll + angle);
    m_navigation.Roll = roll == 360 ? 0 : roll;
    Invalidate(this);
}

void TZEPCamera::FOV(double delta) {
    const double field = m_navigation.Field + delta;
    if (!(FOVY() + field >= 1 && FOVY() + field <= 175)) return;
    m_navigation.Field = field;
    Invalidate(this);
}

void TZEPCamera::Perspective(double factor) {
    if (Orthographic()) return;
    const TGLArrayd3 toEye = ToEye();
    const double d = std::sqrt(Dotd(toEye, toEye));
    if (d == 0) return;
    if (factor == 0) return Invalidate(this); // the tangent and back would leave a trace
    // The tangent of the whole angle, not of the half: the zoom that users know.
    const double t = std::tan((FOVY() + m_navigation.Field) / 180 * pi);
    m_navigation.Field = std::atan(t * d / (d * factor + d)) * 180 / pi - FOVY();
    Move(toEye[0] * factor, toEye[1] * factor, toEye[2] * factor, 0, 0, 0);
}

void TZEPCamera::Dolly(double factor) {
    TGLArrayd3 toEye = ToEye();
    // Close to the target the step keeps its size, else it would never get anywhere.
    if (!m_extended && Dotd(toEye, toEye) < 1) Normalized(toEye);
    if (m_extended) factor = std::max(factor, -LargestStep);
    Move(toEye[0] * factor, toEye[1] * factor, toEye[2] * factor, 0, 0, 0);
}

} // namespace ZEP
