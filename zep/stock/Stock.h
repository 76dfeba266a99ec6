#pragma once

#include <zep/Export.h>
#include <zep/scene/Geom.h>
#include <zep/stock/Tool.h>

#include <QtGlobal>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace ZEP {

class TStockSweep;

/// A block before anything is cut, in millimetres, and how finely it is kept.
struct TStockBlock {
    TGLArrayd3 Min{0, 0, -10}, Max{100, 100, 0};
    double Cell = 0.5; ///< the longest side of a cell
    bool operator==(const TStockBlock&) const = default;
};

/// How a cell's surface came to be.
enum class TStockMark : std::uint8_t {
    Raw,
    Cut,
    CutInRapid ///< at least once: it stays so
};

/// A block of material that tools cut from above. It is kept as a height for each cell, that of the
/// material in the middle of the cell: exact there for whatever is cut, as exact as floats are
/// below the block's top. What is cut below its floor is cut through, no more.
///
/// Heights stand in square tiles. A state that was taken shares with what comes after it the tiles
/// that did not change since.
class ZEP_CORE_EXPORT TStock {
public:
    /// Cells in all, and along a side. A cell takes 5 bytes once its tile is cut.
    static constexpr qint64 MaxCells = 16'777'216;
    static constexpr int MaxSide = 8192;
    static constexpr int TileCells = 32; ///< along a side of a tile

    /// Raises `Exception` for sizes that are 0 or no numbers, and for too many cells.
    explicit TStock(const TStockBlock& block);
    ~TStock();
    TStock(const TStock&) = delete;
    TStock& operator=(const TStock&) = delete;

    [[nodiscard]] const TGLArrayd3& Min() const { return m_min; }
    [[nodiscard]] const TGLArrayd3& Max() const { return m_max; }
    [[nodiscard]] int Columns() const { return m_columns; }
    [[nodiscard]] int Rows() const { return m_rows; }
    /// Sides of a cell, in x and in y.
    [[nodiscard]] double CellWidth() const { return (m_max[0] - m_min[0]) / m_columns; }
    [[nodiscard]] double CellDepth() const { return (m_max[1] - m_min[1]) / m_rows; }

    /// \name A cell
    /// Columns count from the lowest x, rows from the lowest y.
    /// @{
    /// z of the material, at the least that of the floor.
    [[nodiscard]] double Height(int column, int row) const;
    [[nodiscard]] bool IsThrough(int column, int row) const;
    [[nodiscard]] TStockMark Mark(int column, int row) const;
    /// @}

    /// \name Cutting
    /// Answer how deep was cut, in millimetres: 0 where the tool met nothing. Raise `Exception`
    /// where the tool cannot cut or a coordinate is no number; nothing is cut then.
    /// @{
    /// Along a straight line, also straight up or down, or on the spot.
    double CutLine(const TStockTool& tool, const TGLArrayd3& from, const TGLArrayd3& to,
                   TStockMark as = TStockMark::Cut);
    /// Along an arc in a plane of one z.
    /// \param start, sweep  radians, counter-clockwise; `sweep` from 0 to a whole turn
    double CutArc(const TStockTool& tool, const TGLArrayd3& center, double radius, double start,
                  double sweep, TStockMark as = TStockMark::Cut);
    /// @}

    /// \name What was before
    /// @{
    class TTile;
    using TState = std::vector<std::shared_ptr<TTile>>;
    /// Keeps what is now; see `BytesBeside`.
    [[nodiscard]] TState State() const { return m_tiles; }
    void SetState(const TState& state);
    /// Makes it raw again.
    void Reset();
    /// What a state takes beside another one, in bytes.
    [[nodiscard]] static qint64 BytesBeside(const TState& state, const TState& other);
    /// Cells that were looked at for all cuts until now: their cost, 2 to 10 ns each.
    [[nodiscard]] qint64 Work() const { return m_work; }
    /// @}

    /// \name Tiles, for the one who shows them
    /// @{
    [[nodiscard]] int TileColumns() const { return m_tileColumns; }
    [[nodiscard]] int TileRows() const { return m_tileRows; }
    /// Another number for each content that the tile has had.
    [[nodiscard]] quint64 Stamp(int tileColumn, int tileRow) const;
    /// Below the block's top, 0 or less, and marks: `TileCells` times `TileCells`, row by row.
    [[nodiscard]] const float* Depths(int tileColumn, int tileRow) const;
    [[nodiscard]] const TStockMark* Marks(int tileColumn, int tileRow) const;
    /// @}

private:
    struct TCut;

    double Cut(const TStockSweep& sweep, TStockMark as);
    [[nodiscard]] const TTile& TileOf(int column, int row) const;
    [[nodiscard]] float HighestOfPatch(const TTile& tile, int column, int row) const;
    [[nodiscard]] float Highest(const TTile& tile, int tileColumn, int tileRow) const;
    [[nodiscard]] double CenterX(int column) const;
    [[nodiscard]] double CenterY(int row) const;
    void CutTile(TCut& cut, int tileColumn, int tileRow);
    bool CutPatches(TCut& cut, std::shared_ptr<TTile>& tile, int left, int row);
    bool CutRow(TCut& cut, std::shared_ptr<TTile>& tile, int first, int last, int row);
    [[nodiscard]] bool MayReach(const TCut& cut, int column, int row, int side,
                                float highest) const;

    TGLArrayd3 m_min, m_max;
    int m_columns, m_rows;
    int m_tileColumns, m_tileRows;
    float m_floor; ///< below the top
    TState m_tiles;
    quint64 m_stamp = 0;
    qint64 m_work = 0;
};

} // namespace ZEP
