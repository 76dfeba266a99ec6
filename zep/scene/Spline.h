#pragma once

#include <zep/Export.h>
#include <zep/framework/Notify.h>
#include <zep/scene/Geom.h>

#include <vector>

namespace ZEP {

/// A natural cubic spline through points at uniform parameters: point i of n lies at
/// t = i / (n - 1). Starts empty. A spline that is cleared and filled again allocates nothing, as
/// long as it does not grow.
class ZEP_CORE_EXPORT TZEPSpline : public TObject {
public:
    [[nodiscard]] int Count() const { return static_cast<int>(m_points.size()); }
    [[nodiscard]] bool Closed() const { return m_closed; }

    /// Only remembered: a closed spline is evaluated as an open one, since users who close a curve
    /// repeat its first point.
    void SetClosed(bool closed);
    void Clear();
    void AddVertex(const TGLArrayd3& v);
    /// Computes the second derivatives; the first evaluation does it by itself.
    void Prepare();
    /// The curve at t in [0, 1]; (0, 0, 0) outside of it and for an empty spline. A spline of one
    /// point is that point everywhere.
    void GetVertex(double t, TGLArrayd3& v);

private:
    void SweepForward(double h);

    std::vector<TGLArrayd3> m_points;
    std::vector<TGLArrayd3> m_derivs;
    std::vector<double> m_sweep;
    bool m_prepared = false;
    bool m_closed = false;
};

} // namespace ZEP
