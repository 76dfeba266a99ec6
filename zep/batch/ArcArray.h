#pragma once

#include <zep/batch/VertexArray.h>

namespace ZEP {

/// An arc of a circle that a matrix made an ellipse.
struct TArc {
    TGLArrayd3 Middle, X, Y; ///< and from there to where the angles 0 and 90 degrees are
    double Start, Turn;      ///< radians
    int Segments;            ///< it is drawn with; 0: as round as it is
};

/// How many arcs, and vertexes of the lines that are stored for them.
struct TArcCount {
    std::size_t Arcs = 0, Vertexes = 0;
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
    [[nodiscard]] TArcCount Count() const { return {m_arcs.size(), m_vertexes.Count()}; }
    /// In the blocks before that one.
    [[nodiscard]] TArcCount CountBefore(std::size_t block) const;
    void Replace(const TBlockEdits& edits, const TArcArray& by);

    /// As `TVertexArray::Draw`, from one arc on, before another one.
    /// \param colored  in the colours of the arcs
    void Draw(const TDetail& detail, bool colored, const TArcCount& from,
              const TArcCount& to) const;
    /// Points on the arcs.
    void DrawPoints() const { m_vertexes.Draw(GL_POINTS, TDetail{}); }

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
    void DrawFine(const TPlaces& arcs, const TDetail& detail, bool colored) const;

    TVertexArray m_vertexes;
    std::vector<TStored> m_arcs;
    std::vector<TGroup> m_groups;
    std::size_t m_block = 0;
};

} // namespace ZEP
