#pragma once

#include <zep/scene/Geom.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

/// \file
/// Arithmetic of three coordinates at once, for formulas that read as they are written. What stands
/// in Geom.h keeps the published form, with its outputs as arguments.

[[nodiscard]] constexpr TGLArrayd3 operator+(const TGLArrayd3& a, const TGLArrayd3& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
[[nodiscard]] constexpr TGLArrayd3 operator-(const TGLArrayd3& a, const TGLArrayd3& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
[[nodiscard]] constexpr TGLArrayd3 operator-(const TGLArrayd3& a) {
    return {-a[0], -a[1], -a[2]};
}
[[nodiscard]] constexpr TGLArrayd3 operator*(double times, const TGLArrayd3& a) {
    return {times * a[0], times * a[1], times * a[2]};
}
[[nodiscard]] constexpr TGLArrayd3 operator*(const TGLArrayd3& a, double times) {
    return times * a;
}
[[nodiscard]] constexpr TGLArrayf3 operator-(const TGLArrayf3& a, const TGLArrayf3& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
[[nodiscard]] constexpr TGLArrayd3 operator/(const TGLArrayd3& a, double by) {
    return {a[0] / by, a[1] / by, a[2] / by};
}
constexpr TGLArrayd3& operator+=(TGLArrayd3& a, const TGLArrayd3& b) {
    return a = a + b;
}
constexpr TGLArrayd3& operator-=(TGLArrayd3& a, const TGLArrayd3& b) {
    return a = a - b;
}
constexpr TGLArrayd3& operator*=(TGLArrayd3& a, double times) {
    return a = times * a;
}

[[nodiscard]] constexpr TGLArrayd3 Middle(const TGLArrayd3& a, const TGLArrayd3& b) {
    return (a + b) / 2;
}
/// Right-handed: that of x and y is z.
[[nodiscard]] constexpr TGLArrayd3 Cross(const TGLArrayd3& a, const TGLArrayd3& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
/// Without overflow on the way.
[[nodiscard]] inline double Length(const TGLArrayd3& a) {
    return std::hypot(a[0], a[1], a[2]);
}
[[nodiscard]] inline double Distance(const TGLArrayd3& a, const TGLArrayd3& b) {
    return Length(b - a);
}
/// Of length 1; the zero vector stays as it is.
[[nodiscard]] inline TGLArrayd3 Unit(TGLArrayd3 a) {
    Normalized(a);
    return a;
}
[[nodiscard]] inline bool IsFinite(const TGLArrayd3& a) {
    return std::isfinite(a[0]) && std::isfinite(a[1]) && std::isfinite(a[2]);
}
[[nodiscard]] inline bool AreFinite(const TGLMatrixd4& m) {
    return std::ranges::all_of(m, [](const auto& row) {
        return std::ranges::all_of(row, [](double c) { return std::isfinite(c); });
    });
}
/// For calls that hand coordinates out one by one.
constexpr void Spread(const TGLArrayd3& a, double& x, double& y, double& z) {
    x = a[0];
    y = a[1];
    z = a[2];
}
[[nodiscard]] constexpr TGLArrayf3 ToFloats(const TGLArrayd3& a) {
    return {static_cast<float>(a[0]), static_cast<float>(a[1]), static_cast<float>(a[2])};
}
[[nodiscard]] constexpr TGLArrayd3 ToDoubles(const TGLArrayf3& a) {
    return {a[0], a[1], a[2]};
}

} // namespace ZEP
