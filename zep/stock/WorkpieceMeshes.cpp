#include <zep/stock/WorkpieceMeshes.h>

#include <zep/batch/PixelScale.h>
#include <zep/gl/ClientArrays.h>
#include <zep/gl/Scopes.h>
#include <zep/scene/ViewVolume.h>

#include <algorithm>
#include <bit>
#include <utility>

namespace ZEP {

namespace {

/// What is smaller is not worth its triangles.
constexpr double PixelsOfCell = 2;
/// So many cells at most are drawn, and their meshes kept: some 60 megabytes.
constexpr std::size_t MostCells = 1'000'000;
constexpr int MostLevels = std::bit_width(static_cast<unsigned>(TStock::TileCells)) - 1;

} // namespace

void TWorkpieceMeshes::Draw(const TStock& stock, const TStockTileMesh::TColors& colors) {
    Follow(stock);
    const std::vector<std::size_t> seen = Seen(stock);
    const int level = m_level;
    SetLevel(stock, seen.size());
    const bool isOther = level != m_level || colors != m_colors;
    m_colors = colors;
    std::size_t kept = 0;
    for (TTile& tile : m_tiles) {
        if (isOther) tile.IsMade = false;
        if (!tile.IsMade) tile.Mesh = {};
        if (tile.IsMade) ++kept;
    }
    const std::size_t cells = std::size_t{TStock::TileCells} * TStock::TileCells >> (2 * m_level);
    if (kept * cells > 2 * MostCells)
        for (TTile& tile : m_tiles) tile = {.Stamp = tile.Stamp};
    const TZEPMatrixScope frame;
    glTranslated(stock.Min()[0], stock.Min()[1], stock.Max()[2]);
    const TClientArraysScope arrays{GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_COLOR_ARRAY};
    for (const std::size_t number : seen) {
        TTile& tile = m_tiles[number];
        const auto column = static_cast<int>(number) % m_columns;
        const auto row = static_cast<int>(number) / m_columns;
        if (!tile.IsMade) tile.Mesh = MakeTileMesh(stock, column, row, m_level, m_colors);
        tile.IsMade = true;
        Send(tile.Mesh);
    }
}

void TWorkpieceMeshes::Follow(const TStock& stock) {
    m_columns = stock.TileColumns();
    m_rows = stock.TileRows();
    m_tiles.resize(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows));
    for (int row = 0; row < m_rows; ++row)
        for (int column = 0; column < m_columns; ++column) {
            TTile& tile = m_tiles[static_cast<std::size_t>(row * m_columns + column)];
            const quint64 stamp = stock.Stamp(column, row);
            if (std::exchange(tile.Stamp, stamp) != stamp) Outdate(column, row);
        }
}

// Walls and normals at its rim belong to the neighbours, too.
void TWorkpieceMeshes::Outdate(int column, int row) {
    for (int y = std::max(row - 1, 0); y <= std::min(row + 1, m_rows - 1); ++y)
        for (int x = std::max(column - 1, 0); x <= std::min(column + 1, m_columns - 1); ++x)
            m_tiles[static_cast<std::size_t>(y * m_columns + x)].IsMade = false;
}

std::vector<std::size_t> TWorkpieceMeshes::Seen(const TStock& stock) const {
    std::vector<std::size_t> seen;
    const auto volume = TZEPViewVolume::OfSight();
    const double width = TStock::TileCells * stock.CellWidth();
    const double depth = TStock::TileCells * stock.CellDepth();
    for (std::size_t i = 0; i < m_tiles.size(); ++i) {
        const double x =
            stock.Min()[0] + static_cast<double>(i % static_cast<std::size_t>(m_columns)) * width;
        const double y =
            stock.Min()[1] + static_cast<double>(i / static_cast<std::size_t>(m_columns)) * depth;
        const TGLArrayd3 max{std::min(x + width, stock.Max()[0]),
                             std::min(y + depth, stock.Max()[1]), stock.Max()[2]};
        if (!volume || volume->Shows({x, y, stock.Min()[2]}, max) != TZEPSeen::Nothing)
            seen.push_back(i);
    }
    return seen;
}

void TWorkpieceMeshes::SetLevel(const TStock& stock, std::size_t tilesSeen) {
    double pixels = TPixelScale::OfContext().Most(stock.Min(), stock.Max()) *
                    std::max(stock.CellWidth(), stock.CellDepth());
    std::size_t cells = tilesSeen * TStock::TileCells * TStock::TileCells;
    m_level = 0;
    for (; m_level < MostLevels && (pixels < PixelsOfCell || cells > MostCells); ++m_level) {
        pixels *= 2;
        cells /= 4;
    }
}

void TWorkpieceMeshes::Send(const TStockTileMesh& mesh) {
    if (mesh.Corners.empty()) return;
    const auto& first = mesh.Vertexes.front();
    glVertexPointer(3, GL_FLOAT, sizeof first, first.Point.data());
    glNormalPointer(GL_FLOAT, sizeof first, first.Normal.data());
    glColorPointer(4, GL_UNSIGNED_BYTE, sizeof first, first.Color.data());
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(mesh.Corners.size()), GL_UNSIGNED_SHORT,
                   mesh.Corners.data());
}

} // namespace ZEP
