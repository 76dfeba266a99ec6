#include <zep/batch/SmoothMesh.h>

#include <zep/appearance/materials/Material.h>
#include <zep/batch/DrawScopes.h>
#include <zep/gl/ClientArrays.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/SmoothNormals.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Scene.h>
#include <zep/scene/SectionCaps.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/ViewVolume.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace ZEP {

namespace {

std::vector<int> FacesByMaterial(TZEPMesh& mesh) {
    const auto& faces = *mesh.Faces();
    std::vector<int> order(static_cast<std::size_t>(faces.Count()));
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, {}, [&](int i) { return faces[i].MaterialIndex(); });
    return order;
}

} // namespace

TSmoothMesh::TSmoothMesh(TZEPMesh& mesh) {
    const std::vector<TGLArrayf3> normals = SmoothNormals(mesh);
    m_points.reserve(normals.size());
    m_normals.reserve(normals.size());
    m_pictures.reserve(normals.size());
    const auto& vertexes = *mesh.Vertexes();
    const auto exists = [&](int i) { return i >= 0 && i < vertexes.Count(); };
    for (const int i : FacesByMaterial(mesh)) {
        const TZEPFace3CI& face = (*mesh.Faces())[i];
        if (exists(face.A()) && exists(face.B()) && exists(face.C()))
            AddFace(mesh, i, &normals[3 * static_cast<std::size_t>(i)]);
    }
}

void TSmoothMesh::AddFace(TZEPMesh& mesh, int index, const TGLArrayf3* normals) {
    const auto& faces = *mesh.Faces();
    const TZEPFace3CI& face = faces[index];
    if (m_runs.empty() || faces[m_runs.back().Face].MaterialIndex() != face.MaterialIndex())
        m_runs.push_back({index, m_points.size(), 0});
    for (const int corner : {face.A(), face.B(), face.C()}) {
        const TZEPVertex3TexCI& vertex = (*mesh.Vertexes())[corner];
        m_points.push_back(ToFloats(vertex.Data()));
        m_pictures.push_back(
            {static_cast<float>(vertex.TexX()), static_cast<float>(vertex.TexY())});
    }
    m_normals.insert(m_normals.end(), normals, normals + 3);
    m_runs.back().Count += 3;
}

void TSmoothMesh::Draw(TZEPMesh& mesh, TZEPSceneContext& scene, TZEPDrawState state,
                       bool sorted) const {
    const TMatrixScope place(scene.Frame(), mesh.GetMatrix());
    TGLArrayd3 min;
    TGLArrayd3 max;
    mesh.GetSize(min, max);
    if (TZEPViewVolume::OfContext(1).Shows(min, max) == TZEPSeen::Nothing) return;
    const bool library = mesh.ColorFaces() && mesh.Scene() && mesh.Scene()->MaterialLibrary();
    TZEPDrawRun& draws = scene.Frame().Run;
    const TZEPDrawRun::Turn turn(draws, true);
    for (const TRun& run : m_runs) {
        TZEPMaterial* material =
            library ? scene.LibraryMaterial((*mesh.Faces())[run.Face].MaterialIndex())
                    : mesh.GetMaterial();
        if (!material || material->IsTransparent() != (state == dsTransparent)) continue;
        const TZEPDrawRun::MaterialScope applied(draws, *material);
        draws.OpenSurface();
        DrawCorners(run, material->HasTexture(), sorted && state == dsTransparent);
    }
    draws.End();
    DrawCaps(mesh, scene, state);
}

void TSmoothMesh::DrawCorners(const TRun& run, bool textured, bool sorted) const {
    const TClientArraysScope arrays({GL_VERTEX_ARRAY, GL_NORMAL_ARRAY});
    glVertexPointer(3, GL_FLOAT, 0, m_points.front().data());
    glNormalPointer(GL_FLOAT, 0, m_normals.front().data());
    if (textured) {
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoordPointer(2, GL_FLOAT, 0, m_pictures.front().data());
    }
    if (sorted)
        glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(run.Count), GL_UNSIGNED_INT,
                       CornersByDepth(run).data());
    else
        glDrawArrays(GL_TRIANGLES, static_cast<GLint>(run.First), static_cast<GLsizei>(run.Count));
    // As after single calls, whatever a driver makes of arrays.
    glNormal3fv(m_normals[run.First + run.Count - 1].data());
    if (textured) glTexCoord2fv(m_pictures[run.First + run.Count - 1].data());
}

/// The present matrices tell what is far.
std::vector<GLuint> TSmoothMesh::CornersByDepth(const TRun& run) const {
    TGLMatrixd4 view;
    glGetDoublev(GL_MODELVIEW_MATRIX, view[0].data());
    std::vector<std::pair<float, GLuint>> triangles; // depth and first corner
    triangles.reserve(run.Count / 3);
    for (std::size_t i = run.First; i < run.First + run.Count; i += 3) {
        double depth = 0;
        for (std::size_t k = 0; k < 3; ++k)
            depth += view[k][2] * (m_points[i][k] + m_points[i + 1][k] + m_points[i + 2][k]);
        // What is no number would have no order.
        const float key = std::isfinite(depth) ? static_cast<float>(depth) : 0;
        triangles.emplace_back(key, static_cast<GLuint>(i));
    }
    std::ranges::sort(triangles);
    std::vector<GLuint> corners;
    corners.reserve(run.Count);
    for (const auto& [depth, first] : triangles)
        corners.insert(corners.end(), {first, first + 1, first + 2});
    return corners;
}

} // namespace ZEP
