#include <zep/stock/TileCells.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

/// In sides of a cell: what is lower is drawn as a slope.
constexpr float LowestWall = 0.7F;
/// Of the steps before and behind a wall.
constexpr float WallToSlope = 3;
/// In sides of what several cells are drawn as: a larger step within is a wall.
constexpr float WallInCell = 2;

struct TDepthRange {
    float Min = 1e30F, Max = -1e30F;

    void Add(float value) {
        Min = std::min(Min, value);
        Max = std::max(Max, value);
    }
};

} // namespace

TTileCells::TTileCells(const TStock& stock, int tileColumn, int tileRow, int level)
    : m_level(level), m_blockColumns(stock.Columns()), m_blockRows(stock.Rows()),
      m_cellWidth(static_cast<float>(stock.CellWidth())),
      m_cellDepth(static_cast<float>(stock.CellDepth())),
      m_width(m_cellWidth * static_cast<float>(1 << level)),
      m_depth(m_cellDepth * static_cast<float>(1 << level)),
      m_floor(static_cast<float>(stock.Min()[2] - stock.Max()[2])) {
    const int side = TStock::TileCells >> level;
    const auto count = [level](int cells) { return (cells + (1 << level) - 1) >> level; };
    m_firstColumn = tileColumn * side;
    m_firstRow = tileRow * side;
    m_columns = std::min(side, count(m_blockColumns) - m_firstColumn);
    m_rows = std::min(side, count(m_blockRows) - m_firstRow);
    for (int j = -Margin; j < m_rows + Margin; ++j)
        for (int i = -Margin; i < m_columns + Margin; ++i)
            m_cells[static_cast<std::size_t>((j + Margin) * Side + i + Margin)] =
                Read(stock, m_firstColumn + i, m_firstRow + j);
}

TTileCells::TCell TTileCells::Read(const TStock& stock, int column, int row) const {
    const int size = 1 << m_level;
    const int left = column * size, right = std::min(left + size, m_blockColumns);
    const int bottom = row * size, top = std::min(bottom + size, m_blockRows);
    if (left < 0 || bottom < 0 || left >= right || bottom >= top) return {};
    const auto forEach = [&](const auto& visit) {
        for (int j = bottom; j < top; ++j)
            for (int i = left; i < right; ++i)
                visit(static_cast<float>(stock.Height(i, j) - stock.Max()[2]), stock.Mark(i, j));
    };
    TDepthRange all;
    forEach([&](float depth, TStockMark) { all.Add(depth); });
    // Where a wall runs through, what more of the cells are: a height in between is nowhere.
    if (all.Max - all.Min > WallInCell * std::max(m_width, m_depth)) {
        const float middle = (all.Min + all.Max) / 2;
        int above = 0, below = 0;
        forEach([&](float depth, TStockMark) { ++(depth > middle ? above : below); });
        (above > below ? all.Min : all.Max) = middle;
    }
    float sum = 0;
    std::array<int, 3> marks{};
    forEach([&](float depth, TStockMark mark) {
        if (depth < all.Min || depth > all.Max) return;
        sum += depth;
        ++marks[static_cast<std::size_t>(mark)];
    });
    const int count = marks[0] + marks[1] + marks[2];
    TCell cell{.Depth = sum / static_cast<float>(count), .IsInside = true};
    cell.IsSolid = cell.Depth > m_floor;
    if (marks[2] > 0)
        cell.Mark = TStockMark::CutInRapid;
    else if (2 * marks[1] >= count)
        cell.Mark = TStockMark::Cut;
    return cell;
}

float TTileCells::X(int column) const {
    return m_cellWidth *
           static_cast<float>(std::min((m_firstColumn + column) << m_level, m_blockColumns));
}

float TTileCells::Y(int row) const {
    return m_cellDepth * static_cast<float>(std::min((m_firstRow + row) << m_level, m_blockRows));
}

bool TTileCells::Joins(int i, int j, int right, int up, float size) const {
    const TCell &cell = At(i, j), &next = At(i + right, j + up);
    if (!cell.IsSolid || !next.IsSolid) return false;
    const float step = next.Depth - cell.Depth;
    if (std::abs(step) <= LowestWall * size) return true;
    const TCell &before = At(i - right, j - up), &behind = At(i + 2 * right, j + 2 * up);
    const float sign = step < 0 ? -1.0F : 1.0F;
    const float to = before.IsSolid ? sign * (cell.Depth - before.Depth) : 0;
    const float on = behind.IsSolid ? sign * (behind.Depth - next.Depth) : 0;
    return WallToSlope * std::max(to, on) >= std::abs(step);
}

float TTileCells::Slope(int i, int j, int right, int up, float size) const {
    float rise = 0, run = 0;
    const auto add = [&](int x, int y) {
        if (!Joins(x, y, right, up, size)) return;
        rise += At(x + right, y + up).Depth - At(x, y).Depth;
        run += size;
    };
    add(i - right, j - up);
    add(i, j);
    return run > 0 ? rise / run : 0;
}

} // namespace ZEP
