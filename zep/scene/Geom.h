#pragma once

#include <zep/Export.h>

#include <array>

namespace ZEP {

/// \file
/// Fixed-size vectors and 4x4 matrices in double precision. The routines take arrays of the
/// caller, never allocate and never fail; an output may be the same array as an input. The suffix
/// of a name tells the element type: `d` double, `f` float, a further `v` takes a vector where its
/// namesake takes three numbers.

/// x, y, z: a point, a direction, a size, or spherical (radius, azimuth, polar angle).
using TGLArrayd3 = std::array<double, 3>;
using TGLArrayf3 = std::array<float, 3>;
/// Four numbers; as a plane (a, b, c, d) the points with a·x + b·y + c·z + d = 0.
using TGLArrayd4 = std::array<double, 4>;
/// Sixteen doubles in the order that `glLoadMatrixd` takes. `M[3]` is the translation; a point is
/// a row vector on the left: x' = x·M[0][0] + y·M[1][0] + z·M[2][0] + M[3][0].
using TGLMatrixd4 = std::array<std::array<double, 4>, 4>;
using TGLMatrixf4 = std::array<std::array<float, 4>, 4>;

inline constexpr TGLArrayd3 unitx{1, 0, 0};
inline constexpr TGLArrayd3 unity{0, 1, 0};
inline constexpr TGLArrayd3 unitz{0, 0, 1};
inline constexpr TGLMatrixd4 idd{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
inline constexpr TGLMatrixf4 idf{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
inline constexpr TGLArrayd3 zero3d{0, 0, 0};
inline constexpr TGLArrayf3 zero3f{0, 0, 0};

/// \name Vectors
/// @{

/// Unit normal of the triangle, counter-clockwise seen from its tip; zero for a flat triangle.
ZEP_CORE_EXPORT void CalcNormald(const TGLArrayd3& p1, const TGLArrayd3& p2, const TGLArrayd3& p3,
                                 TGLArrayd3& n);
/// The plane through three points, with the normal of `CalcNormald`.
ZEP_CORE_EXPORT void InitPlaned(const TGLArrayd3& p1, const TGLArrayd3& p2, const TGLArrayd3& p3,
                                TGLArrayd4& plane);
/// Scales `v` to length 1; leaves a vector of length exactly 0 as it is.
ZEP_CORE_EXPORT void Normalized(TGLArrayd3& v);
/// c = a × b.
ZEP_CORE_EXPORT void CrossProdd(const TGLArrayd3& a, const TGLArrayd3& b, TGLArrayd3& c);
ZEP_CORE_EXPORT void CrossProdf(const TGLArrayf3& a, const TGLArrayf3& b, TGLArrayf3& c);
[[nodiscard]] ZEP_CORE_EXPORT double Dotd(const TGLArrayd3& a, const TGLArrayd3& b);
/// Raises each coordinate of `max` to that of `v`.
ZEP_CORE_EXPORT void MaxBoundsd(TGLArrayd3& max, const TGLArrayd3& v);
/// Lowers each coordinate of `min` to that of `v`.
ZEP_CORE_EXPORT void MinBoundsd(TGLArrayd3& min, const TGLArrayd3& v);
/// Cartesian to spherical: radius, azimuth in (-π, π] from the x axis, polar angle in [0, π] from
/// the z axis. The zero vector gives zeros.
ZEP_CORE_EXPORT void OrthoToSphered(const TGLArrayd3& v, TGLArrayd3& s);
/// Spherical to Cartesian; angles in radians.
ZEP_CORE_EXPORT void SphereToOrthod(const TGLArrayd3& s, TGLArrayd3& v);
/// `angle` in degrees brought into (-180, 180]; -180 gives 180. NaN for infinity.
[[nodiscard]] ZEP_CORE_EXPORT double NormAngle180(double angle);
/// `angle` in degrees brought into (0, 360]; 0 gives 360. NaN for infinity.
[[nodiscard]] ZEP_CORE_EXPORT double NormAngle360(double angle);
/// @}

/// \name Matrices
/// `Translated`, `Scaled` and `Rotated` multiply like `glTranslated`, `glScaled` and `glRotated`:
/// what is multiplied last acts on a point first.
/// @{

/// Exactly the identity, with no tolerance.
[[nodiscard]] ZEP_CORE_EXPORT bool IsIdentityd(const TGLMatrixd4& m);
/// Transforms the point `v`; never divides by a fourth coordinate.
ZEP_CORE_EXPORT void Xformd(const TGLMatrixd4& m, TGLArrayd3& v);
/// The box about the transformed box.
ZEP_CORE_EXPORT void XformBoxd(const TGLMatrixd4& m, TGLArrayd3& min, TGLArrayd3& max);
/// c = a·b with `b` acting first, as `glLoadMatrixd(a)` followed by `glMultMatrixd(b)`.
ZEP_CORE_EXPORT void MultMatrixd(const TGLMatrixd4& a, const TGLMatrixd4& b, TGLMatrixd4& c);
ZEP_CORE_EXPORT void Translated(double x, double y, double z, TGLMatrixd4& m);
ZEP_CORE_EXPORT void Translatedv(const TGLArrayd3& v, TGLMatrixd4& m);
/// Leaves the fourth column as it is, unlike `glScaled` on a matrix that is not affine.
ZEP_CORE_EXPORT void Scaled(double x, double y, double z, TGLMatrixd4& m);
ZEP_CORE_EXPORT void Scaledv(const TGLArrayd3& v, TGLMatrixd4& m);
/// Rotation by `angle` degrees about the axis (x, y, z) of any length. An axis of length 0 counts
/// as length 1, which shrinks instead of turning.
ZEP_CORE_EXPORT void Rotated(double angle, double x, double y, double z, TGLMatrixd4& m);
/// Inverts a rigid transform: rotation and translation. Scale and shear give a wrong inverse.
ZEP_CORE_EXPORT void InverseMatrixd(TGLMatrixd4& m);
/// The reflection through a plane of unit normal.
ZEP_CORE_EXPORT void MirrorMatrixd(const TGLArrayd4& plane, TGLMatrixd4& m);
/// As `gluLookAt`.
[[nodiscard]] ZEP_CORE_EXPORT TGLMatrixd4 LookAtd(const TGLArrayd3& eye, const TGLArrayd3& target,
                                                  const TGLArrayd3& up);
/// As `gluPerspective`; `slope` is the tangent of half the angle.
[[nodiscard]] ZEP_CORE_EXPORT TGLMatrixd4 Perspectived(double slope, double aspect,
                                                       double nearPlane, double farPlane);
/// @}

} // namespace ZEP
