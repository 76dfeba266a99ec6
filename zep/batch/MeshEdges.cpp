#include <zep/batch/MeshEdges.h>

#include <zep/batch/DrawScopes.h>
#include <zep/gl/ClientArrays.h>
#include <zep/objects/Mesh.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/Vectors.h>

#include <cmath>
#include <initializer_list>
#include <utility>

namespace ZEP {

namespace {

void DrawLines(const std::vector<TGLArrayf3>& points) {
    if (points.empty()) return;
    glVertexPointer(3, GL_FLOAT, 0, points.front().data());
    glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(points.size()));
}

TGLArrayd3 ColumnOf(const TGLMatrixd4& matrix, std::size_t index) {
    return {matrix[index][0], matrix[index][1], matrix[index][2]};
}

} // namespace

TMeshEdges::TMeshEdges(TZEPMesh& mesh) {
    TZEPFeatureEdges edges = FeatureEdges(mesh);
    const auto& vertexes = *mesh.Vertexes();
    const auto at = [&](int vertex) { return ToFloats(vertexes[vertex].Data()); };
    m_sharp.reserve(2 * edges.Sharp.size());
    for (const std::array<int, 2>& edge : edges.Sharp)
        for (const int vertex : edge) m_sharp.push_back(at(vertex));
    m_smooth = std::move(edges.Smooth);
    if (m_smooth.empty()) return;
    for (int i = 0; i < vertexes.Count(); ++i) m_vertexes.push_back(at(i));
    m_planes.resize(static_cast<std::size_t>(mesh.Faces()->Count()));
    for (const TZEPFeatureEdges::TSmooth& edge : m_smooth)
        for (const int index : edge.Faces) {
            const TZEPFace3CI& face = (*mesh.Faces())[index];
            const TGLArrayd3& a = vertexes[face.A()].Data();
            const TGLArrayd3 normal =
                Unit(Cross(vertexes[face.B()].Data() - a, vertexes[face.C()].Data() - a));
            m_planes[static_cast<std::size_t>(index)] = {ToFloats(normal),
                                                         static_cast<float>(Dotd(normal, a))};
        }
}

void TMeshEdges::Draw(TZEPObject& object, TZEPSceneContext& scene, const TGLArrayf3& color) const {
    if (m_sharp.empty() && m_smooth.empty()) return;
    const TMatrixScope place(scene.Frame(), object.GetMatrix());
    TGLArrayd3 min;
    TGLArrayd3 max;
    object.GetSize(min, max);
    if (TZEPViewVolume::OfContext(1).Shows(min, max) == TZEPSeen::Nothing) return;
    scene.Frame().Run.End();
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_LINE_BIT);
    for (const GLenum off : std::initializer_list<GLenum>{GL_LIGHTING, GL_TEXTURE_2D, GL_BLEND,
                                                          GL_LINE_STIPPLE, GL_ALPHA_TEST})
        glDisable(off);
    glLineWidth(scene.Frame().Run.Rules().Widths);
    glColor3fv(color.data());
    {
        const TClientArraysScope arrays({GL_VERTEX_ARRAY});
        DrawLines(m_sharp);
        if (const std::optional<TEye> eye = EyeOfContext()) DrawLines(OutlineFrom(*eye));
    }
    glPopAttrib();
}

// By Cramer's rule from where the modelview matrix puts it.
std::optional<TMeshEdges::TEye> TMeshEdges::EyeOfContext() {
    TGLMatrixd4 view;
    TGLMatrixd4 projection;
    glGetDoublev(GL_MODELVIEW_MATRIX, view[0].data());
    glGetDoublev(GL_PROJECTION_MATRIX, projection[0].data());
    const TGLArrayd3 x = ColumnOf(view, 0), y = ColumnOf(view, 1), z = ColumnOf(view, 2);
    const double size = Dotd(x, Cross(y, z));
    if (!(std::abs(size) > 0)) return {};
    const bool isFar = projection[3][3] != 0;
    const TGLArrayd3 seen = isFar ? TGLArrayd3{0, 0, 1} : -ColumnOf(view, 3);
    return TEye{
        TGLArrayd3{Dotd(seen, Cross(y, z)), Dotd(seen, Cross(z, x)), Dotd(seen, Cross(x, y))} /
            size,
        isFar};
}

/// Faces that show the eye the side from where their vertexes go round to the left.
std::vector<bool> TMeshEdges::FacesTo(const TEye& eye) const {
    const TGLArrayf3 at = ToFloats(eye.At);
    std::vector<bool> faces(m_planes.size());
    for (std::size_t i = 0; i < m_planes.size(); ++i) {
        const TGLArrayf3& normal = m_planes[i].Normal;
        const float along = normal[0] * at[0] + normal[1] * at[1] + normal[2] * at[2];
        faces[i] = along > (eye.IsFar ? 0 : m_planes[i].Distance);
    }
    return faces;
}

std::vector<TGLArrayf3> TMeshEdges::OutlineFrom(const TEye& eye) const {
    std::vector<TGLArrayf3> points;
    if (m_smooth.empty()) return points;
    const std::vector<bool> faces = FacesTo(eye);
    for (const TZEPFeatureEdges::TSmooth& edge : m_smooth) {
        const bool isInside = faces[static_cast<std::size_t>(edge.Faces[0])] ==
                              faces[static_cast<std::size_t>(edge.Faces[1])];
        if (isInside == edge.SameWay) continue;
        for (const int vertex : edge.Vertexes)
            points.push_back(m_vertexes[static_cast<std::size_t>(vertex)]);
    }
    return points;
}

} // namespace ZEP
