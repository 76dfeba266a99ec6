#include <zep/stock/Sweep.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <type_traits>

namespace ZEP {

namespace {

constexpr double Nowhere = std::numeric_limits<double>::infinity();
/// Of the square of a tool's radius.
constexpr double RimRounding = 1e-9;
/// In plan: what is shorter goes straight up or down.
constexpr double ShortestLine = 1e-9;

struct TRange {
    double Min, Max;
};

/// Where a + b x lies within the range.
TRange Within(double a, double b, TRange range) {
    if (b == 0) return a >= range.Min && a <= range.Max ? TRange{-Nowhere, Nowhere} : TRange{1, 0};
    const double first = (range.Min - a) / b, last = (range.Max - a) / b;
    return {std::min(first, last), std::max(first, last)};
}

} // namespace

TStockSweep::TStockSweep(const TStockTool& tool)
    : m_tool(tool), m_reach(tool.Radius()), m_reachSquare(m_reach * m_reach * (1 + RimRounding)) {}

TStockArea TStockSweep::Area() const {
    const TStockArea tip = AreaOfTip();
    return {tip.MinX - m_reach, tip.MinY - m_reach, tip.MaxX + m_reach, tip.MaxY + m_reach};
}

TStockArea TStockSweep::AreaAt(double) const {
    return Area();
}

double TStockSweep::LeastAround(double x, double y, double radius) const {
    const double nearest = DistanceTo(x, y) - radius;
    if (nearest * std::abs(nearest) > m_reachSquare) return Nowhere;
    return LowestTip(x, y, radius + m_reach) +
           m_tool.EdgeAt(std::clamp(nearest, 0.0, m_tool.Radius()));
}

// --- a line ------------------------------------------------------------------------------------

TLineSweep::TLineSweep(const TStockTool& tool, const TGLArrayd3& from, const TGLArrayd3& to)
    : TStockSweep(tool), m_from(from), m_to(to),
      m_length(std::hypot(to[0] - from[0], to[1] - from[1])) {
    const double slope = (to[2] - from[2]) / m_length;
    if (m_length >= ShortestLine) {
        m_x = (to[0] - from[0]) / m_length;
        m_y = (to[1] - from[1]) / m_length;
        m_slope = slope;
    } else { // straight down or up: the lower end cuts all
        m_length = 0;
        m_from[2] = m_to[2] = std::min(from[2], to[2]);
    }
    if (tool.Shape == TStockShape::Bull)
        m_contacts.emplace(TBullEdge(tool.Radius(), tool.CornerRadius, m_slope));
}

TStockArea TLineSweep::AreaOfTip() const {
    return {std::min(m_from[0], m_to[0]), std::min(m_from[1], m_to[1]),
            std::max(m_from[0], m_to[0]), std::max(m_from[1], m_to[1])};
}

// That of the tool at each end, and of the strip between.
TStockArea TLineSweep::AreaAt(double y) const {
    TStockArea area{Nowhere, y, -Nowhere, y};
    const auto add = [&area](double min, double max) {
        area.MinX = std::min(area.MinX, min);
        area.MaxX = std::max(area.MaxX, max);
    };
    for (const TGLArrayd3& end : {m_from, m_to}) {
        const double square = m_reachSquare - (y - end[1]) * (y - end[1]);
        if (square >= 0) add(end[0] - std::sqrt(square), end[0] + std::sqrt(square));
    }
    const TRange along = Within(Along(0, y), m_x, {0, m_length});
    const TRange aside = Within(Aside(0, y), -m_y, {-m_reach, m_reach});
    const TRange strip{std::max(along.Min, aside.Min), std::min(along.Max, aside.Max)};
    if (strip.Min <= strip.Max) add(strip.Min, strip.Max);
    return area;
}

double TLineSweep::DistanceTo(double x, double y) const {
    const double along = Along(x, y);
    return std::hypot(along - std::clamp(along, 0.0, m_length), Aside(x, y));
}

double TLineSweep::LowestTip(double x, double y, double distance) const {
    const double along = Along(x, y) + (m_slope > 0 ? -distance : distance);
    return m_from[2] + m_slope * std::clamp(along, 0.0, m_length);
}

// Copies of all that is read: what is written could be any of it, for all that the compiler knows,
// and it would take the places one by one.
template <class Edge, class Best>
void TLineSweep::HeightsOf(const Edge edge, const Best best, const TStockRow& row,
                           std::span<double> heights) const {
    const double firstAlong = Along(row.X, row.Y), stepAlong = row.Step * m_x;
    const double firstAside = Aside(row.X, row.Y), stepAside = -row.Step * m_y;
    const double length = m_length, slope = m_slope, z = m_from[2];
    const double most = m_reachSquare;
    double* const height = heights.data();
    const int count = static_cast<int>(heights.size());
    for (int i = 0; i < count; ++i) {
        const double along = firstAlong + i * stepAlong;
        const double aside = firstAside + i * stepAside;
        const double square = aside * aside;
        const double reach = std::sqrt(Larger(most - square, 0.0));
        // How far ahead of this place the tool stands.
        const double first = Larger(-along, -reach);
        const double last = Smaller(length - along, reach);
        const double ahead = Larger(Smaller(best(square, height[i]), last), first);
        const double lowest = z + slope * (along + ahead) + edge.At(square + ahead * ahead);
        const double in = Smaller(most - square, last - first);
        height[i] = in >= 0 ? lowest : Nowhere;
    }
}

void TLineSweep::Heights(const TStockRow& row, std::span<double> heights) const {
    if (m_contacts) return HeightsOfBull(row, heights);
    WithEdge(m_tool, m_slope, [&]<class Edge>(const Edge& edge) {
        if constexpr (!std::is_same_v<Edge, TBullEdge>)
            HeightsOf(
                edge, [edge](double square, double) { return edge.Best(square); }, row, heights);
    });
}

// First where the tool stands, place by place: the rest takes many at once.
void TLineSweep::HeightsOfBull(const TStockRow& row, std::span<double> heights) const {
    const TBullEdge edge(m_tool.Radius(), m_tool.CornerRadius, m_slope);
    const double aside = Aside(row.X, row.Y), step = -row.Step * m_y;
    for (std::size_t i = 0; i < heights.size(); ++i)
        heights[i] = m_contacts->At(std::abs(aside + static_cast<double>(i) * step));
    HeightsOf(
        edge, [edge](double square, double distance) { return edge.Best(square, distance); }, row,
        heights);
}

// --- an arc ------------------------------------------------------------------------------------

TArcSweep::TArcSweep(const TStockTool& tool, const TGLArrayd3& center, double radius, double start,
                     double sweep)
    : TStockSweep(tool),
      m_center(center), m_ends{radius, radius * std::cos(start), radius * std::sin(start),
                               radius * std::cos(start + sweep), radius * std::sin(start + sweep)},
      m_area{Nowhere, Nowhere, -Nowhere, -Nowhere} {
    const auto add = [this](double x, double y) {
        m_area.MinX = std::min(m_area.MinX, x);
        m_area.MinY = std::min(m_area.MinY, y);
        m_area.MaxX = std::max(m_area.MaxX, x);
        m_area.MaxY = std::max(m_area.MaxY, y);
    };
    add(m_ends.StartX, m_ends.StartY);
    add(m_ends.EndX, m_ends.EndY);
    constexpr double Quarter = std::numbers::pi / 2;
    for (double angle = std::ceil(start / Quarter) * Quarter; angle < start + sweep;
         angle += Quarter)
        add(radius * std::cos(angle), radius * std::sin(angle));
}

TStockArea TArcSweep::AreaOfTip() const {
    return {m_center[0] + m_area.MinX, m_center[1] + m_area.MinY, m_center[0] + m_area.MaxX,
            m_center[1] + m_area.MaxY};
}

double TArcSweep::DistanceTo(double x, double y) const {
    return std::sqrt(m_ends.SquareTo(x - m_center[0], y - m_center[1]));
}

void TArcSweep::Heights(const TStockRow& row, std::span<double> heights) const {
    WithEdge(m_tool, 0, [&](const auto edge) {
        const TEnds ends = m_ends; // a copy, as for lines
        const double firstX = row.X - m_center[0], y = row.Y - m_center[1], step = row.Step;
        const double z = m_center[2], most = m_reachSquare;
        double* const height = heights.data();
        const int count = static_cast<int>(heights.size());
        for (int i = 0; i < count; ++i) {
            const double square = ends.SquareTo(firstX + i * step, y);
            const double lowest = z + edge.At(square);
            height[i] = square <= most ? lowest : Nowhere;
        }
    });
}

} // namespace ZEP
