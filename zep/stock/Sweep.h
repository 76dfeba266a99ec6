#pragma once

#include <zep/scene/Geom.h>
#include <zep/stock/Edge.h>
#include <zep/stock/Tool.h>

#include <cmath>
#include <optional>
#include <span>

namespace ZEP {

/// A rectangle in x and y.
struct TStockArea {
    double MinX, MinY, MaxX, MaxY;
};

/// Places in a row along x.
struct TStockRow {
    double X, Y; ///< the first one
    double Step; ///< from each to the next
};

/// What a tool cuts on its way: how low its edge comes at any place of a plan, exactly, by formulas
/// for the whole way.
class TStockSweep {
public:
    explicit TStockSweep(const TStockTool& tool);
    virtual ~TStockSweep() = default;

    /// All that it reaches.
    [[nodiscard]] TStockArea Area() const;
    /// What it reaches of the row of that y: x from `MinX` to `MaxX`, empty where these are
    /// exchanged. More may be told than is reached.
    [[nodiscard]] virtual TStockArea AreaAt(double y) const;
    /// Nothing is cut deeper within a circle; infinite where nothing is cut there.
    [[nodiscard]] double LeastAround(double x, double y, double radius) const;
    /// The lowest height of the tool's edge above each place; infinite where it does not come.
    virtual void Heights(const TStockRow& row, std::span<double> heights) const = 0;

protected:
    /// Of where its tip goes.
    [[nodiscard]] virtual TStockArea AreaOfTip() const = 0;
    /// From where its tip goes, in plan.
    [[nodiscard]] virtual double DistanceTo(double x, double y) const = 0;
    /// The lowest that its tip comes as near as that.
    [[nodiscard]] virtual double LowestTip(double x, double y, double distance) const = 0;

    TStockTool m_tool;
    double m_reach;       ///< the radius of the tool
    double m_reachSquare; ///< and a little, so that rounding leaves no holes at its rim
};

/// Along a straight line, also up, down, or on the spot.
class TLineSweep final : public TStockSweep {
public:
    TLineSweep(const TStockTool& tool, const TGLArrayd3& from, const TGLArrayd3& to);

    [[nodiscard]] TStockArea AreaAt(double y) const override;
    void Heights(const TStockRow& row, std::span<double> heights) const override;

private:
    [[nodiscard]] TStockArea AreaOfTip() const override;
    [[nodiscard]] double DistanceTo(double x, double y) const override;
    [[nodiscard]] double LowestTip(double x, double y, double distance) const override;
    template <class Edge, class Best>
    void HeightsOf(Edge edge, Best best, const TStockRow& row, std::span<double> heights) const;
    void HeightsOfBull(const TStockRow& row, std::span<double> heights) const;
    /// How far along the line, and aside.
    [[nodiscard]] double Along(double x, double y) const {
        return (x - m_from[0]) * m_x + (y - m_from[1]) * m_y;
    }
    [[nodiscard]] double Aside(double x, double y) const {
        return (y - m_from[1]) * m_x - (x - m_from[0]) * m_y;
    }

    TGLArrayd3 m_from, m_to;
    double m_length;         ///< in plan
    double m_x = 1, m_y = 0; ///< its direction there
    double m_slope = 0;      ///< by which it climbs
    std::optional<TBullContacts> m_contacts;
};

/// Along an arc in a plane of one z.
class TArcSweep final : public TStockSweep {
public:
    /// \param start, sweep  radians, counter-clockwise; `sweep` is above 0 and at most half a turn
    TArcSweep(const TStockTool& tool, const TGLArrayd3& center, double radius, double start,
              double sweep);

    void Heights(const TStockRow& row, std::span<double> heights) const override;

private:
    [[nodiscard]] TStockArea AreaOfTip() const override;
    [[nodiscard]] double DistanceTo(double x, double y) const override;
    [[nodiscard]] double LowestTip(double, double, double) const override { return m_center[2]; }
    /// The arc, from its centre.
    struct TEnds {
        double Radius, StartX, StartY, EndX, EndY;

        /// Of the distance to the arc.
        [[nodiscard]] double SquareTo(double x, double y) const {
            const double away = std::sqrt(x * x + y * y) - Radius;
            const double start = (x - StartX) * (x - StartX) + (y - StartY) * (y - StartY);
            const double end = (x - EndX) * (x - EndX) + (y - EndY) * (y - EndY);
            const double nearer = start < end ? start : end;
            const bool isPastStart = StartX * y >= StartY * x;
            const bool isBeforeEnd = x * EndY >= y * EndX;
            return (isPastStart & isBeforeEnd) ? away * away : nearer;
        }
    };

    TGLArrayd3 m_center;
    TEnds m_ends;
    TStockArea m_area;
};

} // namespace ZEP
