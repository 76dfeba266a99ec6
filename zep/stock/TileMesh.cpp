#include <zep/stock/TileMesh.h>

#include <zep/stock/TileCells.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr int TileSide = TStock::TileCells;
/// Cells along a side of what is drawn as one where nothing changes about it.
constexpr int MeshPatchSide = 8;
constexpr int MostPatches = TileSide / MeshPatchSide;
/// A wall's normal keeps so near to that of its own piece.
constexpr float LeastFacing = 0.3F;

using TVertex = TStockTileMesh::TVertex;
using TPlace = std::array<int, 2>;

/// Corners of a cell, and cells around a corner: counter-clockwise from the lower left.
constexpr TPlace Around[] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};

class TTileMesher {
public:
    TTileMesher(const TTileCells& cells, const TStockTileMesh::TColors& colors)
        : m_cells(cells), m_colors(colors) {
        m_corners.fill({});
    }

    TStockTileMesh Make() {
        for (int j = 0; j <= m_cells.Rows(); ++j)
            for (int i = 0; i <= m_cells.Columns(); ++i) FindSurfaces(i, j);
        FindPlainPatches();
        for (int j = 0; j < m_cells.Rows(); j += MeshPatchSide)
            for (int i = 0; i < m_cells.Columns(); i += MeshPatchSide) AddPatch(i, j);
        for (int j = 0; j < m_cells.Rows(); ++j)
            for (int i = 0; i < m_cells.Columns(); ++i) AddWalls(i, j);
        AddFloor();
        return std::move(m_mesh);
    }

private:
    /// A cell's own corner: surfaces end there at different heights.
    struct TCorner {
        float Depth;
        std::uint8_t Surface;
        std::uint16_t Vertex; ///< 1 more than its number; 0: none yet
    };

    /// \param corner  of the cell, 0 to 3; cells from -1 to one beyond the tile
    TCorner& CornerOf(int i, int j, std::size_t corner) {
        return m_corners[(static_cast<std::size_t>((j + 1) * (TileSide + 2) + i + 1)) * 4 + corner];
    }
    [[nodiscard]] float DepthOf(int i, int j, std::size_t corner) {
        return m_cells.IsSolid(i, j) ? CornerOf(i, j, corner).Depth : m_cells.Floor();
    }

    /// Which of the four cells around a corner meet there, and in which height.
    void FindSurfaces(int i, int j) {
        const bool joins[] = {m_cells.JoinsRight(i - 1, j - 1), m_cells.JoinsUp(i, j - 1),
                              m_cells.JoinsRight(i - 1, j), m_cells.JoinsUp(i - 1, j - 1)};
        std::array<std::uint8_t, 4> surfaces{0, 1, 2, 3};
        for (int round = 0; round < 2; ++round)
            for (std::size_t k = 0; k < 4; ++k)
                if (joins[k])
                    surfaces[k] = surfaces[(k + 1) % 4] =
                        std::min(surfaces[k], surfaces[(k + 1) % 4]);
        std::array<float, 4> sums{};
        std::array<int, 4> counts{};
        for (std::size_t k = 0; k < 4; ++k) {
            sums[surfaces[k]] += m_cells.Depth(i - 1 + Around[k][0], j - 1 + Around[k][1]);
            ++counts[surfaces[k]];
        }
        for (std::size_t k = 0; k < 4; ++k) {
            TCorner& corner = CornerOf(i - 1 + Around[k][0], j - 1 + Around[k][1], (k + 2) % 4);
            corner.Surface = surfaces[k];
            corner.Depth = sums[surfaces[k]] / static_cast<float>(counts[surfaces[k]]);
        }
    }

    // --- tops ------------------------------------------------------------------------------

    /// The vertex at a cell's corner, which cells of its surface share that have its colour.
    std::uint16_t VertexAt(int i, int j, std::size_t which) {
        TCorner& own = CornerOf(i, j, which);
        if (own.Vertex > 0) return static_cast<std::uint16_t>(own.Vertex - 1);
        const int x = i + Around[which][0], y = j + Around[which][1];
        float slopeX = 0, slopeY = 0, count = 0;
        for (std::size_t k = 0; k < 4; ++k) {
            const int column = x - 1 + Around[k][0], row = y - 1 + Around[k][1];
            TCorner& corner = CornerOf(column, row, (k + 2) % 4);
            if (corner.Surface != own.Surface || !m_cells.IsSolid(column, row)) continue;
            slopeX += m_cells.SlopeX(column, row);
            slopeY += m_cells.SlopeY(column, row);
            ++count;
            if (m_cells.Mark(column, row) == m_cells.Mark(i, j))
                corner.Vertex = static_cast<std::uint16_t>(m_mesh.Vertexes.size() + 1);
        }
        AddVertex({-slopeX / count, -slopeY / count, 1}, {m_cells.X(x), m_cells.Y(y), own.Depth},
                  m_cells.Mark(i, j));
        return static_cast<std::uint16_t>(own.Vertex - 1);
    }

    [[nodiscard]] bool IsPlain(int left, int bottom) const {
        const int right = std::min(left + MeshPatchSide, m_cells.Columns());
        const int top = std::min(bottom + MeshPatchSide, m_cells.Rows());
        if (!m_cells.IsSolid(left, bottom)) return false;
        for (int j = bottom - 1; j <= top; ++j)
            for (int i = left - 1; i <= right; ++i)
                if (m_cells.IsInside(i, j) && (m_cells.Depth(i, j) != m_cells.Depth(left, bottom) ||
                                               m_cells.Mark(i, j) != m_cells.Mark(left, bottom)))
                    return false;
        return true;
    }
    [[nodiscard]] bool& PlainAt(int i, int j) {
        return m_plain[static_cast<std::size_t>(j / MeshPatchSide * MostPatches +
                                                i / MeshPatchSide)];
    }
    void FindPlainPatches() {
        for (int j = 0; j < m_cells.Rows(); j += MeshPatchSide)
            for (int i = 0; i < m_cells.Columns(); i += MeshPatchSide)
                PlainAt(i, j) = IsPlain(i, j);
    }

    void AddPatch(int left, int bottom) {
        const int right = std::min(left + MeshPatchSide, m_cells.Columns());
        const int top = std::min(bottom + MeshPatchSide, m_cells.Rows());
        if (PlainAt(left, bottom)) return AddPlain(left, bottom, right, top);
        for (int j = bottom; j < top; ++j)
            for (int i = left; i < right; ++i) {
                if (!m_cells.IsSolid(i, j)) continue;
                const std::uint16_t a = VertexAt(i, j, 0), b = VertexAt(i, j, 1);
                const std::uint16_t c = VertexAt(i, j, 2), d = VertexAt(i, j, 3);
                AddTriangle(a, b, c);
                AddTriangle(a, c, d);
            }
    }

    /// A patch without cells in it, but for its rim where the neighbour has cells: their corners
    /// would not lie on its side, by rounding, and what is behind would show through.
    void AddPlain(int left, int bottom, int right, int top) {
        std::vector<std::uint16_t> rim;
        const auto add = [&](TPlace from, TPlace step, int count, std::size_t corner,
                             TPlace beyond) {
            const bool isCoarse = beyond[0] >= 0 && beyond[1] >= 0 &&
                                  beyond[0] < m_cells.Columns() && beyond[1] < m_cells.Rows() &&
                                  PlainAt(beyond[0], beyond[1]);
            for (int k = 0; k < (isCoarse ? 1 : count); ++k)
                rim.push_back(VertexAt(from[0] + k * step[0], from[1] + k * step[1], corner));
        };
        add({left, bottom}, {1, 0}, right - left, 0, {left, bottom - 1});
        add({right - 1, bottom}, {0, 1}, top - bottom, 1, {right, bottom});
        add({right - 1, top - 1}, {-1, 0}, right - left, 2, {left, top});
        add({left, top - 1}, {0, -1}, top - bottom, 3, {left - 1, bottom});
        if (rim.size() == 4) {
            AddTriangle(rim[0], rim[1], rim[2]);
            return AddTriangle(rim[0], rim[2], rim[3]);
        }
        const std::uint16_t middle =
            AddVertex({0, 0, 1},
                      {(m_cells.X(left) + m_cells.X(right)) / 2,
                       (m_cells.Y(bottom) + m_cells.Y(top)) / 2, m_cells.Depth(left, bottom)},
                      m_cells.Mark(left, bottom));
        for (std::size_t k = 0; k < rim.size(); ++k)
            AddTriangle(rim[k], rim[(k + 1) % rim.size()], middle);
    }

    // --- walls and the floor -----------------------------------------------------------------

    void AddWalls(int i, int j) {
        if (!m_cells.JoinsRight(i, j)) AddWall(i, j, 1, 0);
        if (!m_cells.JoinsUp(i, j)) AddWall(i, j, 0, 1);
        if (!m_cells.IsInside(i - 1, j)) AddWall(i - 1, j, 1, 0);
        if (!m_cells.IsInside(i, j - 1)) AddWall(i, j - 1, 0, 1);
    }

    /// Between a cell and the next one along x or y.
    void AddWall(int i, int j, int right, int up) {
        const int x = i + right, y = j + up;
        if (!m_cells.IsSolid(i, j) && !m_cells.IsSolid(x, y)) return;
        // Their common corners: the lower or left one first.
        const std::size_t own[] = {right ? 1U : 3U, 2}, others[] = {0, right ? 3U : 1U};
        std::array<float, 2> here{}, there{};
        for (std::size_t k = 0; k < 2; ++k) {
            here[k] = DepthOf(i, j, own[k]);
            there[k] = DepthOf(x, y, others[k]);
        }
        const bool falls = here[0] + here[1] > there[0] + there[1];
        const TPlace low = falls ? TPlace{x, y} : TPlace{i, j};
        TStockMark mark = TStockMark::Raw;
        if (m_cells.IsInside(low[0], low[1]))
            mark = std::max(m_cells.Mark(low[0], low[1]), TStockMark::Cut);
        const float sign = falls ? 1.0F : -1.0F;
        const TGLArrayf3 facing{sign * static_cast<float>(right), sign * static_cast<float>(up), 0};
        TPlace begin{x, y}, end{x + up, y + right};
        // Seen from where it faces, from left to right: up along x, down along y.
        const bool isTurned = falls == (up == 1);
        if (isTurned) {
            std::swap(begin, end);
            std::swap(here[0], here[1]);
            std::swap(there[0], there[1]);
        }
        AddQuad(begin, end, falls ? here : there, falls ? there : here, facing, mark);
    }

    void AddQuad(TPlace begin, TPlace end, const std::array<float, 2>& tops,
                 const std::array<float, 2>& bottoms, const TGLArrayf3& facing, TStockMark mark) {
        const bool isSide = mark == TStockMark::Raw;
        const auto add = [&](TPlace place, float depth) {
            return AddVertex(isSide ? facing : NormalAt(place[0], place[1], facing),
                             {m_cells.X(place[0]), m_cells.Y(place[1]), depth}, mark);
        };
        const std::uint16_t a = add(begin, bottoms[0]), b = add(end, bottoms[1]);
        const std::uint16_t c = add(end, tops[1]), d = add(begin, tops[0]);
        AddTriangle(a, b, c);
        AddTriangle(a, c, d);
        // Surfaces that cross: one half faces the other way.
        if ((tops[0] - bottoms[0]) * (tops[1] - bottoms[1]) >= 0) return;
        AddTriangle(a, c, b);
        AddTriangle(a, d, c);
    }

    /// Of a wall: level, the way that the cells about the corner fall, so that a round wall looks
    /// round though it is made of the cells' sides.
    [[nodiscard]] TGLArrayf3 NormalAt(int x, int y, const TGLArrayf3& facing) const {
        float fallX = 0, fallY = 0;
        for (int j = -2; j < 2; ++j)
            for (int i = -2; i < 2; ++i) {
                if (!m_cells.IsInside(x + i, y + j)) return facing;
                const bool isNear = (i == -1 || i == 0) && (j == -1 || j == 0);
                const float weight = (isNear ? 2.0F : 1.0F) * m_cells.Depth(x + i, y + j);
                fallX += i < 0 ? weight : -weight;
                fallY += j < 0 ? weight : -weight;
            }
        const float length = std::hypot(fallX, fallY);
        if (length <= 0) return facing;
        const TGLArrayf3 normal{fallX / length, fallY / length, 0};
        return normal[0] * facing[0] + normal[1] * facing[1] > LeastFacing ? normal : facing;
    }

    void AddFloor() {
        const auto add = [&](int left, int bottom, int right, int top) {
            const auto corner = [&](int x, int y) {
                return AddVertex({0, 0, -1}, {m_cells.X(x), m_cells.Y(y), m_cells.Floor()},
                                 TStockMark::Raw);
            };
            const std::uint16_t a = corner(left, bottom), b = corner(left, top);
            const std::uint16_t c = corner(right, top), d = corner(right, bottom);
            AddTriangle(a, b, c);
            AddTriangle(a, c, d);
        };
        bool isWhole = true;
        for (int j = 0; j < m_cells.Rows(); ++j)
            for (int i = 0; i < m_cells.Columns(); ++i) isWhole = isWhole && m_cells.IsSolid(i, j);
        if (isWhole) return add(0, 0, m_cells.Columns(), m_cells.Rows());
        for (int j = 0; j < m_cells.Rows(); ++j)
            for (int i = 0; i < m_cells.Columns(); ++i) {
                const int begin = i;
                while (i < m_cells.Columns() && m_cells.IsSolid(i, j)) ++i;
                if (i > begin) add(begin, j, i, j + 1);
            }
    }

    std::uint16_t AddVertex(const TGLArrayf3& normal, const TGLArrayf3& point, TStockMark mark) {
        m_mesh.Vertexes.push_back({normal, point, m_colors[static_cast<std::size_t>(mark)]});
        return static_cast<std::uint16_t>(m_mesh.Vertexes.size() - 1);
    }
    void AddTriangle(std::uint16_t a, std::uint16_t b, std::uint16_t c) {
        m_mesh.Corners.insert(m_mesh.Corners.end(), {a, b, c});
    }

    const TTileCells& m_cells;
    const TStockTileMesh::TColors& m_colors;
    TStockTileMesh m_mesh;
    std::array<TCorner, std::size_t{TileSide + 2} * (TileSide + 2) * 4> m_corners;
    std::array<bool, std::size_t{MostPatches} * MostPatches> m_plain{};
};

} // namespace

TStockTileMesh MakeTileMesh(const TStock& stock, int tileColumn, int tileRow, int level,
                            const TStockTileMesh::TColors& colors) {
    const TTileCells cells(stock, tileColumn, tileRow, level);
    return TTileMesher(cells, colors).Make();
}

} // namespace ZEP
