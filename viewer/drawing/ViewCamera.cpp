#include "viewer/drawing/ViewCamera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

constexpr double NearestToPole = 0.05; // degrees: at the pole up is undefined
constexpr double LargestStep = 0.9;    // of the distance, towards the target
constexpr double PointerFactor = 5;    // of the panel's control, in perspective
constexpr double NearPart = 1e-3;      // of the distance

} // namespace

TGLArrayd3 TViewCamera::ToEye() const {
    const TGLArrayd3 eye = GetPosition();
    const TGLArrayd3 target = GetTarget();
    return {eye[0] - target[0], eye[1] - target[1], eye[2] - target[2]};
}

double TViewCamera::Distance() const {
    const TGLArrayd3 toEye = ToEye();
    return std::sqrt(Dotd(toEye, toEye));
}

void TViewCamera::Truck(double dx, double dy, double dz) {
    double k = -1;
    if (!Orthographic()) {
        const double sum = NearClipPlane() + FarClipPlane();
        const double middle = 2 * NearClipPlane() * FarClipPlane() / sum;
        k = -Distance() / middle / PointerFactor;
    }
    Move(k * dx, k * dy, k * dz, k * dx, k * dy, k * dz);
}

void TViewCamera::Orbit(double a, double b) {
    if (b == 0) return TZEPCamera::Orbit(a, 0);
    TGLArrayd3 spherical;
    OrthoToSphered(ToEye(), spherical);
    const double polar = spherical[2] * 180 / std::numbers::pi;
    TZEPCamera::Orbit(a, std::clamp(polar + b, NearestToPole, 180 - NearestToPole) - polar);
}

void TViewCamera::Dolly(double factor) {
    // Below a distance of 1 the camera steps by parts of 1.
    TZEPCamera::Dolly(std::max(factor, -LargestStep) * std::min(Distance(), 1.0));
}

void TViewCamera::SwitchProjection(bool parallel, double aspect) {
    if (parallel == Orthographic()) return;
    SetOrthographic(parallel);
    // The field of view is across in a parallel view, else upwards.
    const TGLArrayd3 toEye = ToEye();
    const double k = (parallel ? aspect : 1 / aspect) - 1;
    Move(k * toEye[0], k * toEye[1], k * toEye[2], 0, 0, 0);
    // Parts of the path may be behind the eye of a parallel view.
    SetNearClipPlane(parallel ? -FarClipPlane() : Distance() * NearPart);
}

} // namespace ZEP
