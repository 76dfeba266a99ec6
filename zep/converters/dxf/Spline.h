#pragma once

#include <zep/converters/dxf/Curves.h>

#include <vector>

namespace ZEP {

/// A rational B-spline, or a curve through points.
struct TDXFSpline {
    static constexpr int MaxDegree = 25;

    int Degree = 3; ///< limited to 1 .. MaxDegree, and to what the control points allow
    bool Closed = false;
    /// As many as control points + degree + 1, never falling; else they are taken as even, and
    /// those of a closed spline as periodic.
    std::vector<double> Knots = {};
    std::vector<double> Weights = {}; ///< a positive one for each control point; else all are 1
    std::vector<TGLArrayd3> ControlPoints = {};
    std::vector<TGLArrayd3> FitPoints = {}; ///< used where there are fewer than two control points
    /// Directions at the ends of an open curve through points; zero where none is known.
    TGLArrayd3 StartTangent{}, EndTangent{};
};

/// The tangent at each of the fit points is that of the parabola through it and its neighbours.
/// \param mostPoints  where the curve asks for more, a few more are made and no further ones
[[nodiscard]] TDXFChain SplineChain(const TDXFSpline& spline,
                                    std::size_t mostPoints = std::size_t(-1));

} // namespace ZEP
