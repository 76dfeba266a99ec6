#include "viewer/drawing/SmoothMesh.h"

#include "viewer/drawing/DrawScopes.h"
#include <zep/appearance/materials/Material.h>
#include <zep/framework/Property.h>
#include <zep/objects/Mesh.h>
#include <zep/scene/DrawRun.h>
#include <zep/scene/Scene.h>
#include <zep/scene/ViewVolume.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>

namespace ZEP {

namespace {

constexpr double SharpestCosine = 0.75;     // about 41 degrees between faces
constexpr std::size_t MostNeighbours = 200; // around a corner; each would look at all others

TGLArrayf3 ToFloats(const TGLArrayd3& v) {
    return {static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])};
}

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

TGLArrayd3 Difference(const TGLArrayd3& a, const TGLArrayd3& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

} // namespace

/// Faces around each place, and what their normals add up to.
class TSmoothMesh::TBuilder {
public:
    explicit TBuilder(TZEPMesh& mesh) : m_mesh(mesh) {
        JoinPlaces();
        ListFaces();
        ListNeighbours();
    }

    [[nodiscard]] std::size_t Count() const { return m_faces.size(); }
    [[nodiscard]] int Index(std::size_t i) const { return m_faces[i].Index; }
    [[nodiscard]] const TZEPFace3CI& Face(std::size_t i) const {
        return (*m_mesh.Faces())[Index(i)];
    }

    /// \param place  one of the face's corners
    [[nodiscard]] TGLArrayd3 NormalAt(std::size_t face, int vertex) const {
        const TGLArrayd3 own = m_faces[face].Unit;
        const auto place = static_cast<std::size_t>(m_places[static_cast<std::size_t>(vertex)]);
        const std::size_t first = m_first[place];
        const std::size_t end = m_first[place + 1];
        if (end - first > MostNeighbours) return own;
        TGLArrayd3 sum{};
        for (std::size_t i = first; i < end; ++i) {
            const TSide& other = m_faces[m_around[i]];
            if (Dotd(own, other.Unit) < SharpestCosine) continue;
            for (std::size_t k = 0; k < 3; ++k) sum[k] += other.Area[k];
        }
        const double length = std::sqrt(Dotd(sum, sum));
        if (!(length > 0)) return own;
        return {sum[0] / length, sum[1] / length, sum[2] / length};
    }

private:
    struct TSide {
        int Index;             // of the face
        TGLArrayd3 Unit, Area; // its normal, and the same as long as the face is large
    };

    [[nodiscard]] std::array<int, 3> Corners(const TZEPFace3CI& face) const {
        return {face.A(), face.B(), face.C()};
    }

    /// Numbers vertexes so that those at the same place have the same number.
    void JoinPlaces() {
        const auto& vertexes = *m_mesh.Vertexes();
        std::vector<int> order(static_cast<std::size_t>(vertexes.Count()));
        std::iota(order.begin(), order.end(), 0);
        const auto at = [&](int i) -> const TGLArrayd3& { return vertexes[i].Data(); };
        // What is no number would have no order.
        std::erase_if(order, [&](int i) { return at(i) != at(i); });
        std::sort(order.begin(), order.end(), [&](int a, int b) { return at(a) < at(b); });
        m_places.assign(static_cast<std::size_t>(vertexes.Count()), 0);
        for (std::size_t i = 0; i < order.size(); ++i) {
            if (i > 0 && at(order[i]) != at(order[i - 1])) ++m_lastPlace;
            m_places[static_cast<std::size_t>(order[i])] = m_lastPlace;
        }
    }

    void ListFaces() {
        const auto& faces = *m_mesh.Faces();
        const auto& vertexes = *m_mesh.Vertexes();
        const auto count = static_cast<unsigned>(vertexes.Count());
        m_faces.reserve(static_cast<std::size_t>(faces.Count()));
        for (int i = 0; i < faces.Count(); ++i) {
            const std::array<int, 3> corners = Corners(faces[i]);
            if (std::ranges::any_of(corners,
                                    [&](int c) { return static_cast<unsigned>(c) >= count; }))
                continue;
            const TGLArrayd3& a = vertexes[corners[0]].Data();
            TSide side{i, {}, {}};
            CrossProdd(Difference(vertexes[corners[1]].Data(), a),
                       Difference(vertexes[corners[2]].Data(), a), side.Area);
            side.Unit = side.Area;
            Normalized(side.Unit);
            m_faces.push_back(side);
        }
        std::ranges::stable_sort(
            m_faces, {}, [&](const TSide& side) { return faces[side.Index].MaterialIndex(); });
    }

    void ListNeighbours() {
        m_first.assign(static_cast<std::size_t>(m_lastPlace) + 2, 0);
        ForEachCorner([&](std::size_t, std::size_t place) { ++m_first[place + 1]; });
        std::partial_sum(m_first.begin(), m_first.end(), m_first.begin());
        m_around.resize(m_first.back());
        std::vector<std::size_t> next(m_first.begin(), m_first.end() - 1);
        ForEachCorner([&](std::size_t face, std::size_t place) { m_around[next[place]++] = face; });
    }

    template <class Visit>
    void ForEachCorner(Visit&& visit) const {
        for (std::size_t i = 0; i < m_faces.size(); ++i)
            for (const int corner : Corners(Face(i)))
                visit(i, static_cast<std::size_t>(m_places[static_cast<std::size_t>(corner)]));
    }

    TZEPMesh& m_mesh;
    std::vector<int> m_places; // of the vertexes
    int m_lastPlace = 0;
    std::vector<TSide> m_faces;        // that can be drawn, by material
    std::vector<std::size_t> m_first;  // of a place, in `m_around`
    std::vector<std::size_t> m_around; // faces
};

TSmoothMesh::TSmoothMesh(TZEPMesh& mesh) {
    const TBuilder builder(mesh);
    const auto& vertexes = *mesh.Vertexes();
    m_points.reserve(3 * builder.Count());
    m_normals.reserve(3 * builder.Count());
    m_pictures.reserve(3 * builder.Count());
    int material = 0;
    for (std::size_t i = 0; i < builder.Count(); ++i) {
        const TZEPFace3CI& face = builder.Face(i);
        if (Change(material, face.MaterialIndex()) || m_runs.empty())
            m_runs.push_back({builder.Index(i), m_points.size(), 0});
        for (const int corner : {face.A(), face.B(), face.C()}) {
            const TZEPVertex3TexCI& vertex = vertexes[corner];
            m_points.push_back(ToFloats(vertex.Data()));
            m_normals.push_back(ToFloats(builder.NormalAt(i, corner)));
            m_pictures.push_back(
                {static_cast<float>(vertex.TexX()), static_cast<float>(vertex.TexY())});
        }
        m_runs.back().Count += 3;
    }
}

void TSmoothMesh::Draw(TZEPMesh& mesh, TZEPSceneContext& scene, TZEPDrawState state) const {
    if (!IsShown(mesh, scene, state)) return;
    const TMatrixScope place(mesh.GetMatrix());
    TGLArrayd3 min;
    TGLArrayd3 max;
    mesh.GetSize(min, max);
    if (TZEPViewVolume::OfContext(1).Shows(min, max) == TZEPSeen::Nothing) return;
    const bool library = mesh.ColorFaces() && mesh.Scene() && mesh.Scene()->MaterialLibrary();
    TZEPDrawRun::Current().Enter(true);
    for (const TRun& run : m_runs) {
        TZEPMaterial* material =
            library ? scene.LibraryMaterial((*mesh.Faces())[run.Face].MaterialIndex())
                    : mesh.GetMaterial();
        if (material && material->IsTransparent() == (state == dsTransparent))
            DrawRun(run, *material);
    }
    TZEPDrawRun::Current().End();
    if (mesh.Selected() && state != dsTransparent && state != dsShadows) mesh.DrawSelection();
}

void TSmoothMesh::DrawRun(const TRun& run, TZEPMaterial& material) const {
    TZEPDrawRun::Current().OpenMaterial(material);
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, m_points.front().data());
    glNormalPointer(GL_FLOAT, 0, m_normals.front().data());
    if (material.HasTexture()) {
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoordPointer(2, GL_FLOAT, 0, m_pictures.front().data());
    }
    glDrawArrays(GL_TRIANGLES, static_cast<GLint>(run.First), static_cast<GLsizei>(run.Count));
    glPopClientAttrib();
    TZEPDrawRun::Current().CloseMaterial(true);
}

bool TSmoothMeshes::Draw(TZEPObject& object, TZEPSceneContext& scene, TZEPDrawState state) {
    auto* mesh = (ShownPasses & PassBit(state)) != 0 ? qobject_cast<TZEPMesh*>(&object) : nullptr;
    if (!mesh || mesh->Smooth() || !mesh->AutoNormal() || mesh->DrawType() == dtLine ||
        mesh->GetItemsCount() > 0)
        return false;
    auto& kept = m_meshes[mesh];
    if (!kept.Mesh) kept = {std::make_unique<TSmoothMesh>(*mesh), mesh->Visible()};
    kept.Mesh->Draw(*mesh, scene, state);
    return true;
}

void TSmoothMeshes::NoteChange(TZEPObject& object) {
    const auto kept = m_meshes.find(&object);
    if (kept == m_meshes.end()) return;
    if (!Change(kept->second.WasVisible, object.Visible())) m_meshes.erase(kept);
}

void TSmoothMeshes::Forget(const TZEPObject* gone) {
    std::erase_if(m_meshes, [gone](const auto& kept) {
        const TZEPObject* object = kept.first;
        while (object && object != gone) object = object->Parent();
        return object;
    });
}

} // namespace ZEP
