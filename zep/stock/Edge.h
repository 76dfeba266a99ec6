#pragma once

#include <zep/stock/Tool.h>

#include <array>
#include <cmath>
#include <numbers>

namespace ZEP {

/// \file
/// The lower edges of tools, as sweeps reckon with them along a path that climbs by a slope. `At`
/// is how far above the tip a tool cuts where the square of the distance from its axis is `square`,
/// which is no more than that of the radius (apart from rounding). `Best` is where the tool stands
/// when it cuts lowest at a place beside the path: so far ahead of that place, whose distance from
/// the path is the root of `square`; that of a bull nose is found from near it. Edges are convex:
/// where the path does not go as far, the place nearest to it is best.
///
/// Without branches: many places are reckoned at once.

/// As the library's, but by value.
[[nodiscard]] constexpr double Larger(double a, double b) {
    return a > b ? a : b;
}
[[nodiscard]] constexpr double Smaller(double a, double b) {
    return a < b ? a : b;
}

/// A way that is further than any tool reaches, to the end of the path that is lower.
[[nodiscard]] constexpr double FarDown(double slope) {
    return slope > 0 ? -2 * TStockTool::MaxDiameter : 2 * TStockTool::MaxDiameter;
}

struct TFlatEdge {
    double Ahead;

    explicit TFlatEdge(double slope) : Ahead(FarDown(slope)) {}
    [[nodiscard]] static double At(double) { return 0; }
    [[nodiscard]] double Best(double) const { return Ahead; }
};

struct TBallEdge {
    double Radius, Square, Ahead;

    TBallEdge(double radius, double slope)
        : Radius(radius), Square(radius * radius), Ahead(-slope / std::hypot(1, slope)) {}
    [[nodiscard]] double At(double square) const {
        return Radius - std::sqrt(Larger(Square - square, 0));
    }
    [[nodiscard]] double Best(double square) const {
        return Ahead * std::sqrt(Larger(Square - square, 0));
    }
};

struct TVEdge {
    double Side;            ///< by which its sides climb
    double Ahead, Base = 0; ///< for each unit of distance, and at none

    TVEdge(double degrees, double slope) : Side(1 / std::tan(degrees * std::numbers::pi / 360)) {
        const double steeper = Side * Side - slope * slope;
        Ahead = steeper > 0 ? -slope / std::sqrt(steeper) : 0;
        if (steeper <= 0) Base = FarDown(slope);
    }
    [[nodiscard]] double At(double square) const { return Side * std::sqrt(square); }
    [[nodiscard]] double Best(double square) const { return Base + Ahead * std::sqrt(square); }
};

struct TBullEdge {
    double Flat; ///< radius of what is flat
    TBallEdge Corner;
    double Climb, Sign;

    TBullEdge(double radius, double corner, double slope)
        : Flat(radius - corner), Corner(corner, 0), Climb(slope * slope), Sign(slope > 0   ? -1
                                                                               : slope < 0 ? 1
                                                                                           : 0) {}
    [[nodiscard]] double At(double square) const {
        const double beyond = Larger(std::sqrt(square) - Flat, 0);
        return Corner.At(beyond * beyond);
    }
    /// From a distance from the axis near the best one, see `TBullContacts`.
    [[nodiscard]] double Best(double square, double distance) const {
        const double better = Flat + Nearer(distance - Flat, square);
        return Sign * std::sqrt(Larger(better * better - square, 0));
    }
    /// The corner climbs by the slope at the distance Flat + q from the axis for which
    /// q^2 (1 - square / (Flat + q)^2) = slope^2 (corner^2 - q^2). The left side less the right one
    /// is convex and grows with q: Newton's steps from above end there. \return one step from q
    [[nodiscard]] double Nearer(double q, double square) const {
        const double inverse = 1 / (Flat + q);
        const double part = 1 - square * inverse * inverse;
        const double value = q * q * part - Climb * (Corner.Square - q * q);
        const double growth = 2 * q * (part + Climb + q * square * inverse * inverse * inverse);
        return q - value / Larger(growth, 1e-300);
    }
};

/// Where a bull nose stands when it cuts lowest, as distances from its axis for distances from the
/// path, between which they are taken as straight: one step from there the height is right to half
/// a thousandth of the corner's radius, and never too low.
class TBullContacts {
public:
    explicit TBullContacts(const TBullEdge& edge)
        : m_flat(edge.Flat), m_perFlat(edge.Flat > 0 ? Pieces / edge.Flat : 0),
          m_perCorner(Pieces / edge.Corner.Radius) {
        double q = edge.Corner.Radius;
        for (int i = 2 * Pieces; i >= 0; --i) { // they come nearer as the path does
            const double aside =
                i < Pieces ? edge.Flat * i / Pieces : edge.Flat + (i - Pieces) / m_perCorner;
            for (int step = 0; step < Steps; ++step) q = edge.Nearer(q, aside * aside);
            m_distances[static_cast<std::size_t>(i)] = edge.Flat + q;
        }
    }
    /// \param aside  up to the tool's radius; what is beyond counts as that
    [[nodiscard]] double At(double aside) const {
        const double inFlat = m_flat > 0 ? Smaller(aside, m_flat) * m_perFlat : Pieces;
        const double place = inFlat + Larger(aside - m_flat, 0) * m_perCorner;
        const auto piece = static_cast<std::size_t>(Smaller(place, 2 * Pieces - 1));
        const double part = Smaller(place - static_cast<double>(piece), 1);
        return m_distances[piece] + part * (m_distances[piece + 1] - m_distances[piece]);
    }

private:
    static constexpr int Pieces = 16; ///< below what is flat, and below the corner
    static constexpr int Steps = 2;

    double m_flat, m_perFlat, m_perCorner;
    std::array<double, 2 * Pieces + 1> m_distances{};
};

/// Calls `visit` with the edge of a tool.
template <class Visit>
auto WithEdge(const TStockTool& tool, double slope, const Visit& visit) {
    switch (tool.Shape) {
    case TStockShape::Ball:
        return visit(TBallEdge(tool.Radius(), slope));
    case TStockShape::Bull:
        return visit(TBullEdge(tool.Radius(), tool.CornerRadius, slope));
    case TStockShape::V:
        return visit(TVEdge(tool.Angle, slope));
    default:
        return visit(TFlatEdge(slope));
    }
}

} // namespace ZEP
