#include "view/Camera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

/// As `glOrtho` for a box that is symmetric about the axis.
TGLMatrixd4 Parallel(double right, double top, double nearPlane, double farPlane) {
    const double depth = farPlane - nearPlane;
    TGLMatrixd4 m = idd;
    m[0][0] = 1 / right;
    m[1][1] = 1 / top;
    m[2][2] = -2 / depth;
    m[3][2] = -(farPlane + nearPlane) / depth;
    return m;
}

/// As `gluPerspective`; `slope` is the tangent of half the angle.
TGLMatrixd4 Central(double slope, double aspect, double nearPlane, double farPlane) {
    const double depth = farPlane - nearPlane;
    TGLMatrixd4 m{};
    m[0][0] = 1 / (slope * aspect);
    m[1][1] = 1 / slope;
    m[2][2] = -(farPlane + nearPlane) / depth;
    m[2][3] = -1;
    m[3][2] = -2 * farPlane * nearPlane / depth;
    return m;
}

/// As `gluLookAt`.
TGLMatrixd4 LookAt(const TGLArrayd3& eye, const TGLArrayd3& target, const TGLArrayd3& up) {
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

} // namespace

TGLMatrixd4 TZEPCamera::GetProjectionMatrix(int width, int height) const {
    const double aspect = static_cast<double>(std::max(width, 1)) / std::max(height, 1);
    const double slope = std::tan(FieldOfView() / 360 * std::numbers::pi);
    if (!m_orthographic) return Central(slope, aspect, m_nearClipPlane, m_farClipPlane);
    const double right = slope * Distance();
    return Parallel(right, right / aspect, m_nearClipPlane, m_farClipPlane);
}

TGLMatrixd4 TZEPCamera::GetViewMatrix() const {
    TGLMatrixd4 toOwn = GetAbsoluteMatrix();
    InverseMatrixd(toOwn);
    TGLMatrixd4 view = idd;
    Rotated(m_navigation.Roll, 0, 0, 1, view);
    MultMatrixd(view, LookAt(GetPosition(), GetTarget(), m_up.Data()), view);
    Translatedv(m_navigation.View, view);
    MultMatrixd(view, toOwn, view);
    return view;
}

} // namespace ZEP
