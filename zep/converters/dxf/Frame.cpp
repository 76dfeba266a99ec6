#include <zep/converters/dxf/Frame.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

constexpr double NearZ = 1.0 / 64;
constexpr double Upright = 1 - 1e-12;

/// Also of a vector whose square no double holds; all zero where there is no direction.
TGLArrayd3 Direction(const TGLArrayd3& v) {
    const double size = std::max({std::abs(v[0]), std::abs(v[1]), std::abs(v[2])});
    if (!(size > 0) || !std::isfinite(v[0] / size + v[1] / size + v[2] / size)) return zero3d;
    TGLArrayd3 direction{v[0] / size, v[1] / size, v[2] / size};
    Normalized(direction);
    return direction;
}

double Degrees(double radians) {
    return radians * 180 / std::numbers::pi;
}

} // namespace

TGLMatrixd4 ExtrusionFrame(const TGLArrayd3& extrusion) {
    const TGLArrayd3 z = Direction(extrusion);
    if (z == zero3d || z == unitz) return idd;
    const bool isNearZ = std::abs(z[0]) < NearZ && std::abs(z[1]) < NearZ;
    TGLArrayd3 x, y;
    CrossProdd(isNearZ ? unity : unitz, z, x);
    Normalized(x);
    CrossProdd(z, x, y);
    return {{{x[0], x[1], x[2], 0}, {y[0], y[1], y[2], 0}, {z[0], z[1], z[2], 0}, {0, 0, 0, 1}}};
}

TGLArrayd3 RotationAngles(const TGLMatrixd4& m) {
    const double y = Degrees(std::asin(std::clamp(m[2][0], -1.0, 1.0)));
    if (std::abs(m[2][0]) > Upright) return {0, y, Degrees(std::atan2(m[0][1], m[1][1]))};
    return {Degrees(std::atan2(-m[2][1], m[2][2])), y, Degrees(std::atan2(-m[1][0], m[0][0]))};
}

} // namespace ZEP
