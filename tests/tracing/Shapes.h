#pragma once

#include "tests/tracing/Vector.h"

#include <array>
#include <functional>
#include <vector>

namespace ZEP::Tracing {

/// Where a ray goes through a surface.
struct TCrossing {
    double At = 0; ///< along the ray
    TVector Normal{};
    int Facet = 0; ///< each is shaded apart; of a flat piece 0 above and 1 below
    bool Enters = true;
    int Piece = -1;
};
using TCrossings = std::vector<TCrossing>;

/// Adds all crossings, also those behind the start of the ray: a point is within a closed shape
/// where more of them enter before it than leave.
using TShape = std::function<void(const TRay& ray, TCrossings& crossings)>;

using TCorners = std::vector<TVector>;
using TTriangles = std::vector<std::array<int, 3>>;

/// Diameter 1, about the origin.
TShape Ball();
/// Sides of 1, about the origin.
TShape Box();
/// What of the plane z = 0 is held, seen from both sides or from above only.
TShape Flat(std::function<bool(double x, double y)> holds, bool isOneSided = false);
/// Of a closed outline in the plane z = 0.
TShape Flat(const TCorners& outline);
/// Corners run counter-clockwise seen from outside.
TShape Triangles(const TCorners& corners, const TTriangles& triangles);

} // namespace ZEP::Tracing
