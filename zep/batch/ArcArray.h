#pragma once

#include <zep/batch/VertexArray.h>

namespace ZEP {

/// An arc of a circle that a matrix made an ellipse.
struct TArc {
    TGLArrayd3 Middle, X, Y; ///< and from there to where the angles 0 and 90 degrees are
    double Start, Turn;      ///< radians
    int Segments;            ///< it is drawn with; 0: as round as it is
};

/// Arcs as lines: with as many as a view of the whole needs, and where one comes nearer, with as
/// many as are seen there, or as the arc is to have.
class TArcArray {
public:
    /// As in `TVertexArray`.
    void StartBlock(std::size_t block) { m_vertexes.StartBlock(m_block = block); }
    /// \param error  that lines may stray from the arc in a view of the whole
    void Add(const TArc& arc, const TVertexColor& color, double error);
    void Close();
    [[nodiscard]] std::size_t VertexCount() const { return m_vertexes.Count(); }
    void Replace(const TBlockEdits& edits, const TArcArray& by);

    /// As `TVertexArray::Draw`. \param colored  in the colours of the arcs
    void Draw(const TDetail& detail, bool colored) const;
    /// Points on the arcs.
    void DrawPoints() const { m_vertexes.Draw(GL_POINTS, {}); }

private:
    struct TStored {
        TArc Arc;
        TVertexColor Color;
    };
    /// Neighbours of one block.
    struct TGroup {
        std::size_t Block, Arcs, Vertexes;
        TGLArrayd3 Min, Max;
        double Error = 0; ///< of the lines, at most
    };

    [[nodiscard]] TGroup& Group();
    void DrawFine(std::size_t first, std::size_t end, const TDetail& detail, bool colored) const;

    TVertexArray m_vertexes;
    std::vector<TStored> m_arcs;
    std::vector<TGroup> m_groups;
    std::size_t m_block = 0;
};

} // namespace ZEP
