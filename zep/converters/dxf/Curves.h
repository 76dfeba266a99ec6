#pragma once

#include <zep/scene/Geom.h>

#include <numbers>
#include <span>
#include <vector>

namespace ZEP {

/// \file
/// Curves of drawings as chains of points, close enough for the size of the curve. Each piece makes
/// at most some dozen points, so that no file makes more than its length allows. What is not
/// finite, or has too little data to be a curve, gives an empty chain.

/// Points along a curve; a closed one does not repeat its first point.
struct TDXFChain {
    std::vector<TGLArrayd3> Points;
    bool Closed = false;
};

/// The most degrees of an arc that one chord spans.
inline constexpr double DXFArcStep = 5;

/// A corner of a polyline, and how the piece that starts there bulges: the tangent of a quarter of
/// the arc's angle, positive for counter-clockwise, 0 for a straight line.
struct TDXFBulgeVertex {
    TGLArrayd3 Point{};
    double Bulge = 0;
    double StartWidth = 0, EndWidth = 0; ///< of that piece
};

/// The polyline with its bulges as arcs in the plane z = 0 of its frame; z runs linearly. A bulge
/// that is not finite, or whose centre is not, is a straight line.
/// \param mostPoints  once there are more, no further arcs are made
[[nodiscard]] TDXFChain BulgedChain(std::span<const TDXFBulgeVertex> vertexes, bool closed,
                                    std::size_t mostPoints = std::size_t(-1));

/// Center + cos(t) · MajorAxis + sin(t) · minor axis, for t from `Start` to `End` in radians. The
/// minor axis is `Ratio` times as long as the major one and lies counter-clockwise from it, seen
/// from the tip of `Normal`. An end that is not above the start lies one turn further on.
struct TDXFEllipse {
    TGLArrayd3 Center{};
    TGLArrayd3 MajorAxis{1, 0, 0};
    TGLArrayd3 Normal{0, 0, 1};
    double Ratio = 1;
    double Start = 0, End = 2 * std::numbers::pi;
};

[[nodiscard]] TDXFChain EllipseChain(const TDXFEllipse& ellipse);

/// The chain as a scene can take it: empty where it has fewer than two points or one that is not
/// finite; a closed one without a last point that repeats the first.
[[nodiscard]] TDXFChain CheckedChain(TDXFChain chain);

} // namespace ZEP
