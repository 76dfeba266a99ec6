#pragma once

#include <zep/stock/Stock.h>

#include <array>

namespace ZEP {

/// The cells of a tile and three more to all sides, as a mesh shows them: which of them are one
/// surface with their neighbours, and where a wall stands between them. Columns and rows count from
/// the tile's first cell, so that those of the margin are below 0 or beyond the last.
class TTileCells {
public:
    static constexpr int Margin = 3;

    /// \param level  so many times cells are taken two by two as one
    TTileCells(const TStock& stock, int tileColumn, int tileRow, int level);

    /// Along a side of the tile: less at the block's rim.
    [[nodiscard]] int Columns() const { return m_columns; }
    [[nodiscard]] int Rows() const { return m_rows; }
    /// Where a column or row begins, from the block's corner.
    [[nodiscard]] float X(int column) const;
    [[nodiscard]] float Y(int row) const;
    [[nodiscard]] float Floor() const { return m_floor; }

    [[nodiscard]] bool IsInside(int i, int j) const { return At(i, j).IsInside; }
    /// In the block, and not cut through.
    [[nodiscard]] bool IsSolid(int i, int j) const { return At(i, j).IsSolid; }
    [[nodiscard]] float Depth(int i, int j) const { return At(i, j).Depth; }
    [[nodiscard]] TStockMark Mark(int i, int j) const { return At(i, j).Mark; }
    /// One surface with the next cell along x, along y. A wall stands where the step is much larger
    /// than what leads to it and on from it: the side of a bowl is none, however steep.
    [[nodiscard]] bool JoinsRight(int i, int j) const { return Joins(i, j, 1, 0, m_width); }
    [[nodiscard]] bool JoinsUp(int i, int j) const { return Joins(i, j, 0, 1, m_depth); }
    /// Of its surface.
    [[nodiscard]] float SlopeX(int i, int j) const { return Slope(i, j, 1, 0, m_width); }
    [[nodiscard]] float SlopeY(int i, int j) const { return Slope(i, j, 0, 1, m_depth); }

private:
    static constexpr int Side = TStock::TileCells + 2 * Margin;

    struct TCell {
        float Depth = 0;
        TStockMark Mark = TStockMark::Raw;
        bool IsInside = false, IsSolid = false;
    };

    [[nodiscard]] const TCell& At(int i, int j) const {
        return m_cells[static_cast<std::size_t>((j + Margin) * Side + i + Margin)];
    }
    [[nodiscard]] TCell Read(const TStock& stock, int column, int row) const;
    [[nodiscard]] bool Joins(int i, int j, int right, int up, float size) const;
    [[nodiscard]] float Slope(int i, int j, int right, int up, float size) const;

    int m_level;
    int m_firstColumn, m_firstRow; ///< of the tile, in its own cells
    int m_columns, m_rows;
    int m_blockColumns, m_blockRows; ///< in the stock's cells
    float m_cellWidth, m_cellDepth;  ///< of these
    float m_width, m_depth;          ///< of its own cells
    float m_floor;
    std::array<TCell, std::size_t{Side} * Side> m_cells;
};

} // namespace ZEP
