#pragma once

#include "viewer/drawing/PathBatch.h"

namespace ZEP {

class TZEPPolygon;

/// Triangles and quadrilaterals as arrays of vertexes with their normals. They are seen from both
/// sides.
class TFaceBatch {
public:
    /// Forgets everything. \param origin  is subtracted from all places
    void Start(const TGLArrayd3& origin);
    /// \param corners  three or four, in order
    void Add(const std::vector<TGLArrayd3>& corners, TColor color);
    void Close();
    [[nodiscard]] std::size_t VertexCount() const { return m_vertexes.Count(); }

    /// In the opaque pass. \param lit  by the lights that are on; else each in its own colour
    void Draw(const TDetail& detail, bool lit) const;

private:
    void AddTriangle(const TGLArrayd3& a, const TGLArrayd3& b, const TGLArrayd3& c,
                     const TVertexColor& color);

    TVertexArray m_vertexes;
    std::vector<TGLArrayf3> m_normals; ///< one for each vertex
    TGLArrayd3 m_origin{};
};

} // namespace ZEP
