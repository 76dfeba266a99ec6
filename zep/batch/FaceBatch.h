#pragma once

#include <zep/batch/PathBatch.h>

namespace ZEP {

class TZEPPolygon;

/// Polygons as arrays of vertexes with their normals. They are seen from both
/// sides.
class TFaceBatch {
public:
    /// \param origin  is subtracted from all places
    void Start(const TGLArrayd3& origin) { m_origin = origin; }
    /// As in `TVertexArray`.
    void StartBlock(std::size_t block) { m_vertexes.StartBlock(block); }
    /// \param corners  three or more, in order; of more than four what the tessellator fills
    void Add(const std::vector<TGLArrayd3>& corners, TColor color);
    void Close();
    void Replace(const TBlockEdits& edits, const TFaceBatch& by);
    [[nodiscard]] std::size_t VertexCount() const { return m_vertexes.Count(); }

    /// In the opaque pass.
    /// \param lit       by the lights that are on; else each in its own colour
    /// \param outlines  polygons are drawn as lines: without the diagonals of quadrilaterals
    /// \param plain     their ambient colour is that of a new material, and not their own
    void Draw(const TDetail& detail, bool lit, bool outlines, bool plain = false) const;
    /// Their outlines, over them. \param color  0 .. 1
    void DrawEdges(const TDetail& detail, const TGLArrayf3& color) const;

private:
    using TEdges = std::array<GLboolean, 3>; ///< of the outline, from a, b and c on

    void AddTessellated(const std::vector<TGLArrayd3>& corners, const TVertexColor& color);
    void AddTriangle(const TGLArrayd3& a, const TGLArrayd3& b, const TGLArrayd3& c,
                     const TVertexColor& color, const TEdges& edges);

    TVertexArray m_vertexes;
    std::vector<TGLArrayf3> m_normals; ///< one for each vertex
    std::vector<GLboolean> m_edges;    ///< likewise
    TGLArrayd3 m_origin{};
};

} // namespace ZEP
