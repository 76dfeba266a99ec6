#include <zep/scene/Geom.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

TGLArrayd3 Difference(const TGLArrayd3& a, const TGLArrayd3& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

template <class Array>
Array Cross(const Array& a, const Array& b) {
    return {a[1] * b[2] - b[1] * a[2], a[2] * b[0] - b[2] * a[0], a[0] * b[1] - b[0] * a[1]};
}

/// Whole turns taken off one by one would never end for an angle beyond the precision of a double;
/// up to there the remainder is exact and gives the same angle.
double WithoutManyTurns(double angle) {
    return std::abs(angle) > 36000 ? std::fmod(angle, 360) : angle;
}

} // namespace

void CalcNormald(const TGLArrayd3& p1, const TGLArrayd3& p2, const TGLArrayd3& p3, TGLArrayd3& n) {
    n = Cross(Difference(p2, p1), Difference(p3, p1));
    Normalized(n);
}

void InitPlaned(const TGLArrayd3& p1, const TGLArrayd3& p2, const TGLArrayd3& p3,
                TGLArrayd4& plane) {
    TGLArrayd3 n;
    CalcNormald(p1, p2, p3, n);
    plane = {n[0], n[1], n[2], -Dotd(n, p1)};
}

void Normalized(TGLArrayd3& v) {
    const double length = std::sqrt(Dotd(v, v));
    if (length == 0) return;
    for (double& c : v) c /= length;
}

void CrossProdd(const TGLArrayd3& a, const TGLArrayd3& b, TGLArrayd3& c) {
    c = Cross(a, b);
}

void CrossProdf(const TGLArrayf3& a, const TGLArrayf3& b, TGLArrayf3& c) {
    c = Cross(a, b);
}

double Dotd(const TGLArrayd3& a, const TGLArrayd3& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

void MaxBoundsd(TGLArrayd3& max, const TGLArrayd3& v) {
    for (std::size_t k = 0; k < 3; ++k)
        if (v[k] > max[k]) max[k] = v[k];
}

void MinBoundsd(TGLArrayd3& min, const TGLArrayd3& v) {
    for (std::size_t k = 0; k < 3; ++k)
        if (v[k] < min[k]) min[k] = v[k];
}

void OrthoToSphered(const TGLArrayd3& v, TGLArrayd3& s) {
    const double radius = std::sqrt(Dotd(v, v));
    if (radius == 0) {
        s = zero3d;
        return;
    }
    // The squares of tiny coordinates lose digits, so that the quotient may leave the arcsine's
    // range.
    const double sine = std::clamp(v[2] / radius, -1.0, 1.0);
    s = {radius, std::atan2(v[1], v[0]), std::numbers::pi / 2 - std::asin(sine)};
}

void SphereToOrthod(const TGLArrayd3& s, TGLArrayd3& v) {
    const auto [radius, azimuth, polar] = s;
    v = {radius * std::cos(azimuth) * std::sin(polar), radius * std::sin(azimuth) * std::sin(polar),
         radius * std::cos(polar)};
}

double NormAngle180(double angle) {
    angle = WithoutManyTurns(angle);
    while (angle > 180) angle -= 360;
    while (angle <= -180) angle += 360;
    return angle;
}

double NormAngle360(double angle) {
    angle = WithoutManyTurns(angle);
    while (angle > 360) angle -= 360;
    while (angle <= 0) angle += 360;
    return angle;
}

bool IsIdentityd(const TGLMatrixd4& m) {
    return m == idd;
}

void Xformd(const TGLMatrixd4& m, TGLArrayd3& v) {
    const auto [x, y, z] = v;
    for (std::size_t j = 0; j < 3; ++j) v[j] = x * m[0][j] + y * m[1][j] + z * m[2][j] + m[3][j];
}

void XformBoxd(const TGLMatrixd4& m, TGLArrayd3& min, TGLArrayd3& max) {
    TGLArrayd3 center;
    TGLArrayd3 extent{};
    for (std::size_t i = 0; i < 3; ++i) {
        center[i] = (min[i] + max[i]) / 2;
        const double half = (max[i] - min[i]) / 2;
        for (std::size_t j = 0; j < 3; ++j) extent[j] += std::abs(m[i][j]) * half;
    }
    Xformd(m, center);
    for (std::size_t j = 0; j < 3; ++j) {
        min[j] = center[j] - extent[j];
        max[j] = center[j] + extent[j];
    }
}

void MultMatrixd(const TGLMatrixd4& a, const TGLMatrixd4& b, TGLMatrixd4& c) {
    TGLMatrixd4 product;
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = 0; j < 4; ++j)
            product[i][j] =
                b[i][0] * a[0][j] + b[i][1] * a[1][j] + b[i][2] * a[2][j] + b[i][3] * a[3][j];
    c = product;
}

void Translated(double x, double y, double z, TGLMatrixd4& m) {
    for (std::size_t j = 0; j < 4; ++j) m[3][j] = x * m[0][j] + y * m[1][j] + z * m[2][j] + m[3][j];
}

void Translatedv(const TGLArrayd3& v, TGLMatrixd4& m) {
    Translated(v[0], v[1], v[2], m);
}

void Scaled(double x, double y, double z, TGLMatrixd4& m) {
    for (std::size_t j = 0; j < 3; ++j) {
        m[0][j] *= x;
        m[1][j] *= y;
        m[2][j] *= z;
    }
}

void Scaledv(const TGLArrayd3& v, TGLMatrixd4& m) {
    Scaled(v[0], v[1], v[2], m);
}

void Rotated(double angle, double x, double y, double z, TGLMatrixd4& m) {
    if (angle == 0) return;
    const double theta = angle / 180 * std::numbers::pi;
    const double s = std::sin(theta);
    const double c = std::cos(theta);
    const double t = 1 - c;
    double length = std::sqrt(x * x + y * y + z * z);
    if (length == 0) length = 1;
    x /= length;
    y /= length;
    z /= length;
    const TGLMatrixd4 rotation{{{t * x * x + c, t * x * y + s * z, t * x * z - s * y, 0},
                                {t * x * y - s * z, t * y * y + c, t * y * z + s * x, 0},
                                {t * x * z + s * y, t * y * z - s * x, t * z * z + c, 0},
                                {0, 0, 0, 1}}};
    MultMatrixd(m, rotation, m);
}

void InverseMatrixd(TGLMatrixd4& m) {
    const TGLMatrixd4 t = m;
    m = idd;
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) m[i][j] = t[j][i];
        m[3][i] = -(t[i][0] * t[3][0] + t[i][1] * t[3][1] + t[i][2] * t[3][2]);
    }
}

void MirrorMatrixd(const TGLArrayd4& plane, TGLMatrixd4& m) {
    const auto [a, b, c, d] = plane;
    m = {{{1 - 2 * a * a, -2 * a * b, -2 * a * c, 0},
          {-2 * a * b, 1 - 2 * b * b, -2 * b * c, 0},
          {-2 * a * c, -2 * b * c, 1 - 2 * c * c, 0},
          {-2 * a * d, -2 * b * d, -2 * c * d, 1}}};
}

TGLMatrixd4 Perspectived(double slope, double aspect, double nearPlane, double farPlane) {
    const double depth = farPlane - nearPlane;
    TGLMatrixd4 m{};
    m[0][0] = 1 / (slope * aspect);
    m[1][1] = 1 / slope;
    m[2][2] = -(farPlane + nearPlane) / depth;
    m[2][3] = -1;
    m[3][2] = -2 * farPlane * nearPlane / depth;
    return m;
}

TGLMatrixd4 LookAtd(const TGLArrayd3& eye, const TGLArrayd3& target, const TGLArrayd3& up) {
    TGLArrayd3 away{target[0] - eye[0], target[1] - eye[1], target[2] - eye[2]};
    Normalized(away);
    TGLArrayd3 right;
    CrossProdd(away, up, right);
    Normalized(right);
    TGLArrayd3 above;
    CrossProdd(right, away, above);
    TGLMatrixd4 m = idd;
    for (std::size_t k = 0; k < 3; ++k) {
        m[k][0] = right[k];
        m[k][1] = above[k];
        m[k][2] = -away[k];
    }
    Translated(-eye[0], -eye[1], -eye[2], m);
    return m;
}

} // namespace ZEP
