#pragma once

#include <zep/scene/Geom.h>
#include <zep/stock/Stock.h>

#include <array>
#include <cstdint>
#include <vector>

namespace ZEP {

/// Triangles of a tile of stock, from the block's corner of the lowest x and y and the top z.
struct TStockTileMesh {
    struct TVertex {
        TGLArrayf3 Normal, Point;
        std::array<std::uint8_t, 4> Color;
    };
    /// Of each `TStockMark`.
    using TColors = std::array<std::array<std::uint8_t, 4>, 3>;

    std::vector<TVertex> Vertexes;
    std::vector<std::uint16_t> Corners; ///< three for each triangle

    [[nodiscard]] std::size_t Bytes() const {
        return Vertexes.size() * sizeof(TVertex) + Corners.size() * sizeof(std::uint16_t);
    }
};

/// \param level  so many times cells are drawn two by two as one, in their mean height; at most 5
[[nodiscard]] TStockTileMesh MakeTileMesh(const TStock& stock, int tileColumn, int tileRow,
                                          int level, const TStockTileMesh::TColors& colors);

} // namespace ZEP
