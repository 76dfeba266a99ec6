#include <zep/batch/FaceBatch.h>

#include <zep/appearance/materials/FaceMaterial.h>
#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/SharedMaterials.h>
#include <zep/gl/ClientArrays.h>
#include <zep/objects/Tessellation.h>
#include <zep/scene/Vectors.h>

namespace ZEP {

namespace {

TGLArrayd3 NormalOf(const TGLArrayd3& a, const TGLArrayd3& b, const TGLArrayd3& c) {
    TGLArrayd3 normal;
    CalcNormald(a, b, c, normal);
    return normal;
}

void SetColorMaterial(bool plain) {
    constexpr std::array<float, 4> Black{0, 0, 0, 1};
    for (const GLenum none : std::array<GLenum, 2>{GL_SPECULAR, GL_EMISSION})
        glMaterialfv(GL_FRONT_AND_BACK, none, Black.data());
    glColorMaterial(GL_FRONT_AND_BACK, plain ? GL_DIFFUSE : GL_AMBIENT_AND_DIFFUSE);
    if (plain) {
        const TZEPFaceMaterial& first = *SharedMaterial(nullptr, false).FrontFace();
        const TGLColor ambient = ToGLColor(first.Ambient(), 1);
        glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, ambient.data());
    }
    glEnable(GL_COLOR_MATERIAL);
}

} // namespace

void TFaceBatch::Close() {
    m_vertexes.Close();
    m_normals.shrink_to_fit();
    m_edges.shrink_to_fit();
}

void TFaceBatch::Replace(const TBlockEdits& edits, const TFaceBatch& by) {
    const std::vector<TReplaced> vertexes = m_vertexes.Replace(edits, by.m_vertexes);
    ZEP::Replace(m_normals, vertexes, by.m_normals);
    ZEP::Replace(m_edges, vertexes, by.m_edges);
}

void TFaceBatch::Add(const std::vector<TGLArrayd3>& corners, TColor color) {
    const TVertexColor bytes = ToVertexColor(color);
    if (corners.size() > 4) return AddTessellated(corners, bytes);
    if (corners.size() == 3 || corners[3] == corners[2])
        return AddTriangle(corners[0], corners[1], corners[2], bytes, {GL_TRUE, GL_TRUE, GL_TRUE});
    // A dent is at one end of the diagonal that divides it well.
    const TGLArrayd3 first = NormalOf(corners[0], corners[1], corners[2]);
    const TGLArrayd3 second = NormalOf(corners[0], corners[2], corners[3]);
    const std::size_t from = Dotd(first, second) < 0 ? 1 : 0;
    const auto corner = [&](std::size_t i) { return corners[(from + i) % 4]; };
    AddTriangle(corner(0), corner(1), corner(2), bytes, {GL_TRUE, GL_TRUE, GL_FALSE});
    AddTriangle(corner(0), corner(2), corner(3), bytes, {GL_FALSE, GL_TRUE, GL_TRUE});
}

void TFaceBatch::AddTessellated(const std::vector<TGLArrayd3>& corners, const TVertexColor& color) {
    const TTriangles triangles = TrianglesOf(corners);
    for (std::size_t i = 0; i + 2 < triangles.Points.size(); i += 3) {
        const auto point = [&](std::size_t k) -> const TGLArrayd3& {
            return triangles.Points[i + k];
        };
        AddTriangle(point(0), point(1), point(2), color,
                    {triangles.Edges[i], triangles.Edges[i + 1], triangles.Edges[i + 2]});
    }
}

void TFaceBatch::AddTriangle(const TGLArrayd3& a, const TGLArrayd3& b, const TGLArrayd3& c,
                             const TVertexColor& color, const TEdges& edges) {
    const TGLArrayd3 normal = NormalOf(a, b, c);
    if (normal == zero3d) return;
    for (const TGLArrayd3* corner : {&a, &b, &c}) {
        m_vertexes.Add(*corner - m_origin, color);
        m_normals.push_back(ToFloats(normal));
    }
    m_edges.insert(m_edges.end(), edges.begin(), edges.end());
}

void TFaceBatch::Draw(const TDetail& detail, bool lit, bool outlines, bool plain) const {
    if (VertexCount() == 0) return;
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_LIGHTING_BIT);
    const TClientArraysScope arrays({GL_COLOR_ARRAY, GL_NORMAL_ARRAY});
    glDisable(GL_CULL_FACE);
    if (!lit) glDisable(GL_LIGHTING);
    SetColorMaterial(plain);
    glNormalPointer(GL_FLOAT, 0, m_normals.front().data());
    if (outlines) {
        glEnableClientState(GL_EDGE_FLAG_ARRAY);
        glEdgeFlagPointer(0, m_edges.data());
    }
    m_vertexes.Draw(GL_TRIANGLES, detail);
    glPopAttrib();
}

void TFaceBatch::DrawEdges(const TDetail& detail, const TGLArrayf3& color) const {
    if (VertexCount() == 0) return;
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_POLYGON_BIT);
    {
        const TClientArraysScope arrays({GL_EDGE_FLAG_ARRAY});
        for (const GLenum off : std::array<GLenum, 3>{GL_CULL_FACE, GL_LIGHTING, GL_TEXTURE_2D})
            glDisable(off);
        glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
        glEdgeFlagPointer(0, m_edges.data());
        glColor3fv(color.data());
        m_vertexes.Draw(GL_TRIANGLES, detail);
    }
    glPopAttrib();
}

} // namespace ZEP
