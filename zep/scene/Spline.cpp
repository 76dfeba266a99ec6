#include <zep/scene/Spline.h>

#include <zep/framework/Property.h>
#include <zep/scene/Vectors.h>

#include <algorithm>

namespace ZEP {

void TZEPSpline::SetClosed(bool closed) {
    if (Change(m_closed, closed)) m_prepared = false;
}

void TZEPSpline::Clear() {
    m_points.clear();
    m_prepared = false;
}

void TZEPSpline::AddVertex(const TGLArrayd3& v) {
    m_points.push_back(v);
    m_prepared = false;
}

// The tridiagonal system of a natural spline has the same coefficients on every axis, so that one
// sweep serves all three; its right-hand sides are kept where the derivatives come to stand.
void TZEPSpline::Prepare() {
    const std::size_t n = m_points.size();
    if (n < 1) return;
    m_derivs.assign(n, zero3d);
    m_sweep.assign(n, 0);
    m_prepared = true;
    if (n < 3) return;
    SweepForward(1.0 / static_cast<double>(n - 1));
    for (std::size_t i = n - 2; i-- > 0;) m_derivs[i] = m_sweep[i] * m_derivs[i + 1] + m_derivs[i];
}

void TZEPSpline::SweepForward(double h) {
    constexpr double Half = 0.5; // share of each neighbour at uniform parameters
    for (std::size_t i = 1; i + 1 < m_points.size(); ++i) {
        const double p = 1 / (Half * m_sweep[i - 1] + 2);
        m_sweep[i] = -Half * p;
        const TGLArrayd3 before = (m_points[i] - m_points[i - 1]) / h;
        const TGLArrayd3 after = (m_points[i + 1] - m_points[i]) / h;
        const TGLArrayd3 bend = (after - before) * 6 / (h + h);
        m_derivs[i] = (bend - Half * m_derivs[i - 1]) * p;
    }
}

void TZEPSpline::GetVertex(double t, TGLArrayd3& v) {
    v = zero3d;
    if (m_points.empty() || !(t >= 0 && t <= 1)) return;
    if (m_points.size() == 1) {
        v = m_points.front();
        return;
    }
    if (!m_prepared) Prepare();
    const std::size_t last = m_points.size() - 1;
    const auto i = std::min(static_cast<std::size_t>(static_cast<double>(last) * t), last - 1);
    const std::size_t j = i + 1;
    const double h = 1 / static_cast<double>(last);
    const double a = t - static_cast<double>(i) * h;
    const double b = static_cast<double>(j) * h - t;
    const TGLArrayd3& di = m_derivs[i];
    const TGLArrayd3& dj = m_derivs[j];
    v = (di * b * b * b + dj * a * a * a) / 6 / h +
        ((m_points[i] - di * h * h / 6) * b + (m_points[j] - dj * h * h / 6) * a) / h;
}

} // namespace ZEP
