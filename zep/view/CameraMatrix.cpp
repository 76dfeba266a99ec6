#include <zep/view/Camera.h>

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

} // namespace

TGLMatrixd4 TZEPCamera::GetProjectionMatrix(int width, int height) const {
    const double aspect = static_cast<double>(std::max(width, 1)) / std::max(height, 1);
    const double slope = std::tan(FieldOfView() / 360 * std::numbers::pi);
    if (!m_orthographic) return Perspectived(slope, aspect, m_nearClipPlane, m_farClipPlane);
    const double right = slope * Distance();
    return Parallel(right, right / aspect, m_nearClipPlane, m_farClipPlane);
}

TGLMatrixd4 TZEPCamera::GetViewMatrix() const {
    TGLMatrixd4 toOwn = GetAbsoluteMatrix();
    InverseMatrixd(toOwn);
    TGLMatrixd4 view = idd;
    Rotated(m_navigation.Roll, 0, 0, 1, view);
    MultMatrixd(view, LookAtd(GetPosition(), GetTarget(), m_up.Data()), view);
    Translatedv(m_navigation.View, view);
    MultMatrixd(view, toOwn, view);
    return view;
}

} // namespace ZEP
