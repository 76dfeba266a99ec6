#include <zep/batch/MeshLooks.h>

#include <zep/objects/Mesh.h>
#include <zep/scene/SceneInterfaces.h>

#include <QHashFunctions>

namespace ZEP {

namespace {

constexpr TZEPPassSet ShownPasses = ObjectPasses | PassBit(dsShadows);

/// Of those passes, the ones that draw the object.
bool IsShown(const TZEPShadowedObject& object, const TZEPSceneContext& scene, TZEPDrawState state) {
    switch (state) {
    case dsNonShadowObjects:
        return scene.Shadows() && !object.ReceivesShadows();
    case dsShadowObjects:
        return scene.Shadows() && object.ReceivesShadows();
    case dsShadows:
        return object.ReceivesShadows();
    default:
        return true;
    }
}

/// It has no shading of its own.
bool IsSmoothed(const TZEPMesh& mesh) {
    return !mesh.Smooth() && mesh.AutoNormal() && mesh.DrawType() != dtLine &&
           mesh.GetItemsCount() == 0;
}

/// A class that inherits from the mesh may draw anything.
TZEPMesh* MeshOf(TZEPObject& object) {
    return typeid(object) == typeid(TZEPMesh) ? static_cast<TZEPMesh*>(&object) : nullptr;
}

} // namespace

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

void TMeshLooks::Prepare(TZEPObject& object, bool smooth, bool edges, TSteps& steps) {
    TZEPMesh* mesh = MeshOf(object);
    if (!mesh || !mesh->Visible()) return;
    const double half = mesh->Faces()->Count() / 2.0;
    if (smooth && IsSmoothed(*mesh)) static_cast<void>(m_smooth.Of(*mesh));
    steps.Take(half);
    if (edges && mesh->DrawType() != dtLine) static_cast<void>(m_edges.Of(*mesh));
    steps.Take(half);
}

bool TMeshLooks::DrawSmooth(TZEPObject& object, TZEPSceneContext& scene, TZEPDrawState state,
                            bool sorted) {
    TZEPMesh* mesh = (ShownPasses & PassBit(state)) != 0 ? MeshOf(object) : nullptr;
    if (!mesh || !IsSmoothed(*mesh)) return false;
    const TSmoothMesh& smooth = m_smooth.Of(*mesh);
    if (IsShown(*mesh, scene, state)) smooth.Draw(*mesh, scene, state, sorted);
    return true;
}

void TMeshLooks::DrawEdges(TZEPObject& object, TZEPSceneContext& scene, TZEPDrawState state,
                           const TGLArrayf3& color) {
    if (state == dsShadows || (ShownPasses & PassBit(state)) == 0) return;
    auto* shaded = qobject_cast<TZEPShadowedObject*>(&object);
    if (!shaded || object.DrawType() == dtLine || !IsShown(*shaded, scene, state)) return;
    TZEPMesh* mesh = MeshOf(object);
    const TMeshEdges* edges = mesh ? &m_edges.Of(*mesh) : m_solids.Of(object, scene);
    if (edges) edges->Draw(object, scene, color);
}

void TMeshLooks::Doubt(const TZEPObject& object) {
    m_smooth.Doubt(object);
    m_edges.Doubt(object);
    m_solids.Doubt(object);
}

void TMeshLooks::ForgetFreed() {
    m_smooth.ForgetFreed();
    m_edges.ForgetFreed();
    m_solids.ForgetFreed();
}

} // namespace ZEP
