#pragma once

#include <zep/stock/TileMesh.h>

#include <optional>
#include <vector>

namespace ZEP {

class TStock;
class TZEPViewVolume;

/// What a workpiece sends: the meshes of its tiles, made when they are first seen, and anew when
/// they or their neighbours have changed.
class TWorkpieceMeshes {
public:
    /// Draws in the frame of the stock.
    void Draw(const TStock& stock, const TStockTileMesh::TColors& colors);
    /// Another stock is shown.
    void Forget() { m_tiles.clear(); }

private:
    struct TTile {
        quint64 Stamp = 0; ///< of the content that is known
        bool IsMade = false;
        TStockTileMesh Mesh{};
    };

    void Follow(const TStock& stock);
    void Outdate(int column, int row);
    [[nodiscard]] std::vector<std::size_t> Seen(const TStock& stock) const;
    void SetLevel(const TStock& stock, std::size_t tilesSeen);
    static void Send(const TStockTileMesh& mesh);

    std::vector<TTile> m_tiles;
    int m_columns = 0, m_rows = 0;
    int m_level = 0;
    TStockTileMesh::TColors m_colors{};
};

} // namespace ZEP
