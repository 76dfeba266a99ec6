#include <zep/objects/Mesh.h>

#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/framework/Property.h>
#include <zep/objects/MeshGroups.h>
#include <zep/objects/VertexBounds.h>
#include <zep/scene/Scene.h>

#include <algorithm>

namespace ZEP {

namespace {

const TRegisterObject<TZEPMesh> RegisteredMesh;

} // namespace

TZEPMesh::TZEPMesh(TComponent* owner) : TZEPShadowedObject(owner) {
    m_vertexes.RegisterObject(this);
    m_faces.RegisterObject(this);
}

TZEPMesh::~TZEPMesh() = default;

void TZEPMesh::SetColorFaces(bool colorFaces) {
    if (Change(m_colorFaces, colorFaces)) Invalidate(this);
}

void TZEPMesh::SetAutoNormal(bool autoNormal) {
    if (Change(m_autoNormal, autoNormal)) Invalidate(this);
}

TGLArrayd3 TZEPMesh::GetCenter() const {
    return VertexCenter(m_vertexes);
}

double TZEPMesh::GetRadius() const {
    return BoxRadius(GetMin(), GetMax());
}

void TZEPMesh::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    if (!m_kept.HasBox) GetVertexBounds(m_vertexes, m_kept.Min, m_kept.Max);
    m_kept.HasBox = true;
    min = m_kept.Min;
    max = m_kept.Max;
}

void TZEPMesh::Invalidate(TObject* sender) {
    const bool itself = sender == this && !IsOfLookAlone();
    if (itself || sender == &m_vertexes || sender == &m_faces) {
        // Cleared, not freed: a mesh that moves is computed again for each frame.
        m_kept.Normals.clear();
        m_kept.Runs.clear();
        m_kept.HasBox = false;
        m_kept.IsClosed.reset();
        m_kept.Blocks.reset();
        if (m_groups) m_groups->GiveBack();
    }
    TZEPShadowedObject::Invalidate(sender);
}

// What was computed must go, also where the scene is updated by hand.
bool TZEPMesh::WantsInvalidation() const {
    return m_kept.HasBox || m_kept.IsClosed || m_kept.Blocks || !m_kept.Normals.empty() ||
           !m_kept.Runs.empty() || m_groups || TZEPShadowedObject::WantsInvalidation();
}

// --- materials ---------------------------------------------------------------------------------

bool TZEPMesh::UsesLibrary() const {
    return m_colorFaces && Scene() && Scene()->MaterialLibrary();
}

const std::vector<TZEPMesh::TRun>& TZEPMesh::Runs() const {
    std::vector<TRun>& runs = m_kept.Runs;
    if (!runs.empty()) return runs;
    for (int i = 0; i < m_faces.Count(); ++i) {
        const int material = m_faces[i].MaterialIndex();
        if (runs.empty() || runs.back().Material != material)
            runs.push_back({material, i, i});
        else
            runs.back().Last = i;
    }
    std::ranges::stable_sort(runs, {}, &TRun::Material);
    return runs;
}

bool TZEPMesh::Passes(const TZEPMaterial& material) const {
    return m_filter == TFilter::All ||
           (m_filter == TFilter::Transparent) == material.IsTransparent();
}

bool TZEPMesh::DrawsTransparent() const {
    if (!UsesLibrary()) return TZEPShadowedObject::DrawsTransparent();
    return std::ranges::any_of(Runs(), [this](const TRun& run) {
        const TZEPMaterial* material = SceneContext()->LibraryMaterial(run.Material);
        return material && material->IsTransparent();
    });
}

void TZEPMesh::DrawMain(bool draft) {
    if (!UsesLibrary()) return TZEPShadowedObject::DrawMain(draft);
    DrawFiltered(TFilter::Opaque, draft);
}

void TZEPMesh::DrawTransparent(bool draft) {
    if (!UsesLibrary()) return TZEPShadowedObject::DrawTransparent(draft);
    DrawFiltered(TFilter::Transparent, draft);
}

void TZEPMesh::DrawShadows(bool draft) {
    if (!UsesLibrary()) return TZEPShadowedObject::DrawShadows(draft);
    if (ReceivesShadows()) DrawFiltered(TFilter::Opaque, draft);
}

std::uint64_t TZEPMesh::ShadowLook() const {
    if (!UsesLibrary()) return 0;
    return 1 + static_cast<std::uint64_t>(Scene()->MaterialLibrary()->Materials()->Count());
}

void TZEPMesh::DrawFiltered(TFilter filter, bool draft) {
    m_filter = filter;
    DrawSpecific(GL_FRONT_AND_BACK, draft);
    m_filter = TFilter::All;
}

} // namespace ZEP
