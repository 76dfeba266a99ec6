#include <zep/stock/Stock.h>

#include <zep/framework/Exception.h>
#include <zep/scene/Vectors.h>
#include <zep/stock/Sweep.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

constexpr int Side = TStock::TileCells;
constexpr std::size_t TileArea = std::size_t{Side} * Side;

/// Cells along a side of a patch, of which a tile has several: a tool that goes over what it has
/// cut cuts little of what is below it.
constexpr int PatchSide = 8;
constexpr int PatchesAlong = Side / PatchSide;

std::size_t CellAt(int column, int row) {
    return static_cast<std::size_t>(row % Side * Side + column % Side);
}

/// \param column, row  of any of its cells
std::size_t PatchAt(int column, int row) {
    return static_cast<std::size_t>(row % Side / PatchSide * PatchesAlong +
                                    column % Side / PatchSide);
}

void CheckSides(const TStockBlock& block) {
    for (std::size_t k = 0; k < 3; ++k) {
        const double side = block.Max[k] - block.Min[k];
        if (!std::isfinite(block.Min[k]) || !std::isfinite(block.Max[k]) || !(side > 0))
            throw Exception(QStringLiteral("A block of stock has a size above 0 along %1, not %2.")
                                .arg(QLatin1Char("xyz"[k]))
                                .arg(side));
    }
    if (!(block.Cell > 0) || !std::isfinite(block.Cell))
        throw Exception(
            QStringLiteral("A cell of stock has a size above 0, not %1.").arg(block.Cell));
}

/// Of cells along each side.
std::array<int, 2> CountsOf(const TStockBlock& block) {
    CheckSides(block);
    std::array<double, 2> counts{};
    for (std::size_t k = 0; k < 2; ++k)
        counts[k] = std::max(1.0, std::ceil((block.Max[k] - block.Min[k]) / block.Cell - 1e-9));
    if (std::max(counts[0], counts[1]) > TStock::MaxSide ||
        counts[0] * counts[1] > static_cast<double>(TStock::MaxCells))
        throw Exception(
            QStringLiteral("A block of stock has at most %1 cells, and %2 along a side, not %3 by "
                           "%4: its cells must be larger.")
                .arg(TStock::MaxCells)
                .arg(TStock::MaxSide)
                .arg(counts[0], 0, 'f', 0)
                .arg(counts[1], 0, 'f', 0));
    return {static_cast<int>(counts[0]), static_cast<int>(counts[1])};
}

/// Of a cell: no cell at the rim of what a tool reaches is missed.
constexpr double Rounding = 1e-6;

/// Of an arc, in radians.
constexpr double LongestPiece = std::numbers::pi / 4;

void CheckCut(const TStockTool& tool, bool isFinite) {
    if (const QString fault = tool.Fault(); !fault.isEmpty()) throw Exception(fault);
    if (!isFinite) throw Exception(QStringLiteral("A tool cannot go to what is no number."));
}

int TilesOf(int cells) {
    return (cells + Side - 1) / Side;
}

/// The first of `count` cells whose middle is not below a place that is told in cells.
int FirstCell(double place, int count) {
    // Of what is no number the first: a cast of it would be anything.
    return static_cast<int>(std::fmin(std::fmax(std::ceil(place - 0.5), 0), count));
}

} // namespace

class TStock::TTile {
public:
    std::array<float, TileArea> Depths{};
    std::array<TStockMark, TileArea> Marks{};
    std::array<float, std::size_t{PatchesAlong} * PatchesAlong> HighestOfPatch{};
    float Highest = 0;
    quint64 Stamp = 0;
};

struct TStock::TCut {
    /// Cells of a row.
    struct TRange {
        int First, End;
    };

    const TStockSweep& Sweep;
    TStockMark Mark;
    TRange Columns, Rows;
    std::array<TRange, Side> Reached{}; ///< in the rows of a tile
    double Depth = 0;
};

TStock::TStock(const TStockBlock& block) : m_min(block.Min), m_max(block.Max) {
    const auto [columns, rows] = CountsOf(block);
    m_columns = columns;
    m_rows = rows;
    m_tileColumns = TilesOf(columns);
    m_tileRows = TilesOf(rows);
    m_floor = static_cast<float>(m_min[2] - m_max[2]);
    Reset();
}

TStock::~TStock() = default;

// One tile stands for all that nothing has cut.
void TStock::Reset() {
    const auto raw = std::make_shared<TTile>();
    raw->Stamp = ++m_stamp;
    m_tiles.assign(static_cast<std::size_t>(m_tileColumns) * static_cast<std::size_t>(m_tileRows),
                   raw);
}

void TStock::SetState(const TState& state) {
    if (state.size() == m_tiles.size()) m_tiles = state;
}

qint64 TStock::BytesBeside(const TState& state, const TState& other) {
    qint64 bytes = static_cast<qint64>(state.size() * sizeof(TState::value_type));
    for (std::size_t i = 0; i < state.size(); ++i)
        if (i >= other.size() || state[i] != other[i]) bytes += static_cast<qint64>(sizeof(TTile));
    return bytes;
}

// --- cells and tiles ---------------------------------------------------------------------------

const TStock::TTile& TStock::TileOf(int column, int row) const {
    return *m_tiles[static_cast<std::size_t>(row / Side * m_tileColumns + column / Side)];
}

double TStock::Height(int column, int row) const {
    return m_max[2] + static_cast<double>(TileOf(column, row).Depths[CellAt(column, row)]);
}

bool TStock::IsThrough(int column, int row) const {
    return TileOf(column, row).Depths[CellAt(column, row)] <= m_floor;
}

TStockMark TStock::Mark(int column, int row) const {
    return TileOf(column, row).Marks[CellAt(column, row)];
}

quint64 TStock::Stamp(int tileColumn, int tileRow) const {
    return TileOf(tileColumn * Side, tileRow * Side).Stamp;
}

const float* TStock::Depths(int tileColumn, int tileRow) const {
    return TileOf(tileColumn * Side, tileRow * Side).Depths.data();
}

const TStockMark* TStock::Marks(int tileColumn, int tileRow) const {
    return TileOf(tileColumn * Side, tileRow * Side).Marks.data();
}

double TStock::CenterX(int column) const {
    return m_min[0] + (column + 0.5) * CellWidth();
}

double TStock::CenterY(int row) const {
    return m_min[1] + (row + 0.5) * CellDepth();
}

// Not of what lies beyond the block's rim.
float TStock::HighestOfPatch(const TTile& tile, int column, int row) const {
    const int columnsEnd = std::min(column + PatchSide, m_columns);
    const int rowsEnd = std::min(row + PatchSide, m_rows);
    float highest = m_floor;
    for (int y = row; y < rowsEnd; ++y)
        for (int x = column; x < columnsEnd; ++x)
            highest = std::max(highest, tile.Depths[CellAt(x, y)]);
    return highest;
}

float TStock::Highest(const TTile& tile, int tileColumn, int tileRow) const {
    const int columnsEnd = std::min((tileColumn + 1) * Side, m_columns);
    const int rowsEnd = std::min((tileRow + 1) * Side, m_rows);
    float highest = m_floor;
    for (int row = tileRow * Side; row < rowsEnd; row += PatchSide)
        for (int column = tileColumn * Side; column < columnsEnd; column += PatchSide)
            highest = std::max(highest, tile.HighestOfPatch[PatchAt(column, row)]);
    return highest;
}

// --- cutting -----------------------------------------------------------------------------------

double TStock::CutLine(const TStockTool& tool, const TGLArrayd3& from, const TGLArrayd3& to,
                       TStockMark as) {
    CheckCut(tool, IsFinite(from) && IsFinite(to));
    return Cut(TLineSweep(tool, from, to), as);
}

// In pieces, of which the tiles that they may reach are few.
double TStock::CutArc(const TStockTool& tool, const TGLArrayd3& center, double radius, double start,
                      double sweep, TStockMark as) {
    CheckCut(tool, IsFinite(center) && std::isfinite(radius) && std::isfinite(start) &&
                       std::isfinite(sweep));
    sweep = std::clamp(sweep, 0.0, 2 * std::numbers::pi);
    const int pieces = std::max(1, static_cast<int>(std::ceil(sweep / LongestPiece)));
    double deepest = 0;
    for (int i = 0; i < pieces; ++i)
        deepest = std::max(deepest, Cut(TArcSweep(tool, center, std::abs(radius),
                                                  start + i * sweep / pieces, sweep / pieces),
                                        as));
    return deepest;
}

double TStock::Cut(const TStockSweep& sweep, TStockMark as) {
    const double perX = 1 / CellWidth(), perY = 1 / CellDepth();
    const auto columns = [&](const TStockArea& area) {
        return TCut::TRange{FirstCell((area.MinX - m_min[0]) * perX - Rounding, m_columns),
                            FirstCell((area.MaxX - m_min[0]) * perX + Rounding, m_columns)};
    };
    const TStockArea area = sweep.Area();
    TCut cut{sweep,
             as,
             columns(area),
             {FirstCell((area.MinY - m_min[1]) * perY - Rounding, m_rows),
              FirstCell((area.MaxY - m_min[1]) * perY + Rounding, m_rows)}};
    if (cut.Columns.First >= cut.Columns.End) return 0;
    for (int row = cut.Rows.First; row < cut.Rows.End;) {
        const int y = row / Side, end = std::min(cut.Rows.End, (y + 1) * Side);
        for (; row < end; ++row)
            cut.Reached[static_cast<std::size_t>(row % Side)] = columns(sweep.AreaAt(CenterY(row)));
        for (int x = cut.Columns.First / Side; x <= (cut.Columns.End - 1) / Side; ++x)
            CutTile(cut, x, y);
    }
    return cut.Depth;
}

/// \param column, row, side  of a square of cells
bool TStock::MayReach(const TCut& cut, int column, int row, int side, float highest) const {
    const double width = side * CellWidth() / 2, depth = side * CellDepth() / 2;
    const double lowest = cut.Sweep.LeastAround(m_min[0] + column * CellWidth() + width,
                                                m_min[1] + row * CellDepth() + depth,
                                                std::sqrt(width * width + depth * depth));
    return lowest < m_max[2] + static_cast<double>(highest);
}

void TStock::CutTile(TCut& cut, int tileColumn, int tileRow) {
    std::shared_ptr<TTile>& tile =
        m_tiles[static_cast<std::size_t>(tileRow * m_tileColumns + tileColumn)];
    const int left = tileColumn * Side, bottom = tileRow * Side;
    if (!MayReach(cut, left, bottom, Side, tile->Highest)) return;
    bool isCut = false;
    for (int row = bottom; row < bottom + Side; row += PatchSide)
        if (CutPatches(cut, tile, left, row)) isCut = true;
    if (!isCut) return;
    tile->Stamp = ++m_stamp;
    tile->Highest = Highest(*tile, tileColumn, tileRow);
}

/// A row of them, from the first to the last that may be reached.
bool TStock::CutPatches(TCut& cut, std::shared_ptr<TTile>& tile, int left, int row) {
    const int begin = std::max(cut.Rows.First, row);
    const int end = std::min(cut.Rows.End, row + PatchSide);
    TCut::TRange reached{left + Side, left};
    if (begin >= end) return false;
    for (int column = left; column < left + Side; column += PatchSide) {
        if (column >= cut.Columns.End || column + PatchSide <= cut.Columns.First) continue;
        if (!MayReach(cut, column, row, PatchSide, tile->HighestOfPatch[PatchAt(column, row)]))
            continue;
        reached = {std::min(reached.First, column), column + PatchSide};
    }
    bool isCut = false;
    for (int y = begin; y < end; ++y) {
        const auto [first, last] = cut.Reached[static_cast<std::size_t>(y % Side)];
        const int from = std::max({reached.First, first, cut.Columns.First});
        const int to = std::min({reached.End, last, cut.Columns.End});
        if (from < to && CutRow(cut, tile, from, to, y)) isCut = true;
    }
    for (int column = reached.First; isCut && column < reached.End; column += PatchSide)
        tile->HighestOfPatch[PatchAt(column, row)] = HighestOfPatch(*tile, column, row);
    return isCut;
}

/// \return whether anything was cut; the tile is one of its own then
bool TStock::CutRow(TCut& cut, std::shared_ptr<TTile>& tile, int first, int last, int row) {
    std::array<double, Side> heights;
    std::array<float, Side> depths;
    const auto count = static_cast<std::size_t>(last - first);
    cut.Sweep.Heights({CenterX(first), CenterY(row), CellWidth()}, {heights.data(), count});
    m_work += last - first;
    const std::size_t cell = CellAt(first, row);
    const float* const present = tile->Depths.data() + cell;
    const double top = m_max[2];
    const float floor = m_floor;
    float deepest = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto tool = static_cast<float>(heights[i] - top);
        const float inBlock = tool > floor ? tool : floor;
        depths[i] = inBlock < present[i] ? inBlock : present[i];
        const float taken = present[i] - depths[i];
        deepest = taken > deepest ? taken : deepest;
    }
    if (deepest <= 0) return false;
    if (tile.use_count() > 1) tile = std::make_shared<TTile>(*tile);
    for (std::size_t i = 0; i < count; ++i) {
        if (!(depths[i] < tile->Depths[cell + i])) continue;
        tile->Depths[cell + i] = depths[i];
        tile->Marks[cell + i] = std::max(tile->Marks[cell + i], cut.Mark);
    }
    cut.Depth = std::max(cut.Depth, static_cast<double>(deepest));
    return true;
}

} // namespace ZEP
