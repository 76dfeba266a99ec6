#include <zep/batch/SmoothMesh.h>

#include <zep/appearance/materials/Material.h>
#include <zep/batch/DrawScopes.h>
#include <zep/gl/ClientArrays.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/SmoothNormals.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/ViewVolume.h>

#include <QHashFunctions>

#include <algorithm>
#include <numeric>

namespace ZEP {

namespace {

constexpr TZEPPassSet ShownPasses = ObjectPasses | PassBit(dsShadows);

/// Of those passes, the ones that draw the mesh.
bool IsShown(const TZEPMesh& mesh, const TZEPSceneContext& scene, TZEPDrawState state) {
    switch (state) {
    case dsNonShadowObjects:
        return scene.Shadows() && !mesh.ReceivesShadows();
    case dsShadowObjects:
        return scene.Shadows() && mesh.ReceivesShadows();
    case dsShadows:
        return mesh.ReceivesShadows();
    default:
        return true;
    }
}

/// A class that inherits from the mesh may draw anything.
TZEPMesh* MeshOf(TZEPObject& object) {
    return typeid(object) == typeid(TZEPMesh) ? static_cast<TZEPMesh*>(&object) : nullptr;
}

/// Of all that shapes and normals depend on.
std::size_t SignatureOf(TZEPMesh& mesh) {
    std::size_t sum = 0;
    const auto add = [&sum](const auto& values) {
        sum = qHashBits(values.data(), sizeof(values), sum);
    };
    for (int i = 0; i < mesh.Vertexes()->Count(); ++i) {
        const TZEPVertex3TexCI& vertex = (*mesh.Vertexes())[i];
        add(vertex.Data());
        add(std::array<double, 2>{vertex.TexX(), vertex.TexY()});
    }
    for (int i = 0; i < mesh.Faces()->Count(); ++i) {
        const TZEPFace3CI& face = (*mesh.Faces())[i];
        add(std::array<int, 4>{face.A(), face.B(), face.C(), face.MaterialIndex()});
    }
    return sum;
}

std::vector<int> FacesByMaterial(TZEPMesh& mesh) {
    const auto& faces = *mesh.Faces();
    std::vector<int> order(static_cast<std::size_t>(faces.Count()));
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, {}, [&](int i) { return faces[i].MaterialIndex(); });
    return order;
}

} // namespace

TSmoothMesh::TSmoothMesh(TZEPMesh& mesh) : m_signature(SignatureOf(mesh)) {
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

bool TSmoothMesh::IsOf(TZEPMesh& mesh) const {
    return m_signature == SignatureOf(mesh);
}

void TSmoothMesh::Draw(TZEPMesh& mesh, TZEPSceneContext& scene, TZEPDrawState state) const {
    if (!IsShown(mesh, scene, state)) return;
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
        DrawCorners(run, material->HasTexture());
    }
    draws.End();
}

void TSmoothMesh::DrawCorners(const TRun& run, bool textured) const {
    const TClientArraysScope arrays({GL_VERTEX_ARRAY, GL_NORMAL_ARRAY});
    glVertexPointer(3, GL_FLOAT, 0, m_points.front().data());
    glNormalPointer(GL_FLOAT, 0, m_normals.front().data());
    if (textured) {
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoordPointer(2, GL_FLOAT, 0, m_pictures.front().data());
    }
    glDrawArrays(GL_TRIANGLES, static_cast<GLint>(run.First), static_cast<GLsizei>(run.Count));
    // As after single calls, whatever a driver makes of arrays.
    glNormal3fv(m_normals[run.First + run.Count - 1].data());
    if (textured) glTexCoord2fv(m_pictures[run.First + run.Count - 1].data());
}

bool TSmoothMeshes::Draw(TZEPObject& object, TZEPSceneContext& scene, TZEPDrawState state) {
    TZEPMesh* mesh = (ShownPasses & PassBit(state)) != 0 ? MeshOf(object) : nullptr;
    if (!mesh || mesh->Smooth() || !mesh->AutoNormal() || mesh->DrawType() == dtLine ||
        mesh->GetItemsCount() > 0)
        return false;
    auto& kept = m_meshes[mesh];
    if (!kept.Of || (kept.IsDoubtful && !kept.Mesh->IsOf(*mesh)))
        kept.Mesh = std::make_unique<TSmoothMesh>(*mesh);
    kept.Of = mesh;
    kept.IsDoubtful = false;
    kept.Mesh->Draw(*mesh, scene, state);
    return true;
}

void TSmoothMeshes::Doubt(const TZEPObject& object) {
    if (const auto kept = m_meshes.find(&object); kept != m_meshes.end())
        kept->second.IsDoubtful = true;
}

void TSmoothMeshes::ForgetFreed() {
    std::erase_if(m_meshes, [](const auto& kept) { return !kept.second.Of; });
}

} // namespace ZEP
