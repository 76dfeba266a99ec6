#include <zep/objects/Mesh.h>

#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/framework/Property.h>
#include <zep/objects/TriangleSender.h>
#include <zep/objects/VertexBounds.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/Vertex3.h>

#include <algorithm>

namespace ZEP {

namespace {

const TRegisterObject<TZEPMesh> RegisteredMesh;

/// Up to here immediate mode is as quick as arrays, which have to be set up.
constexpr int FewFaces = 64;

} // namespace

TZEPMesh::TZEPMesh(TComponent* owner) : TZEPShadowedObject(owner) {
    m_vertexes.RegisterObject(this);
    m_faces.RegisterObject(this);
}

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
    if (sender == this || sender == &m_vertexes || sender == &m_faces) {
        // Cleared, not freed: a mesh that moves is computed again for each frame.
        m_kept.Normals.clear();
        m_kept.Runs.clear();
        m_kept.HasBox = false;
    }
    TZEPShadowedObject::Invalidate(sender);
}

// What was computed must go, also where the scene is updated by hand.
bool TZEPMesh::WantsInvalidation() const {
    return m_kept.HasBox || !m_kept.Normals.empty() || !m_kept.Runs.empty() ||
           TZEPShadowedObject::WantsInvalidation();
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

// --- drawing -----------------------------------------------------------------------------------

void TZEPMesh::DrawSpecific(GLenum face, bool draft) {
    const int count = m_faces.Count();
    if (count == 0) return;
    if (UsesLibrary()) return DrawMaterials(face, draft);
    DrawFrame().Run.OpenSurface();
    SendFaces(0, count - 1, draft, DrawnMaterial().HasTexture());
}

void TZEPMesh::DrawMaterials(GLenum face, bool draft) {
    const std::vector<TRun>& runs = Runs();
    for (auto run = runs.begin(); run != runs.end();) {
        const int index = run->Material;
        const auto end = std::find_if(
            run, runs.end(), [index](const TRun& other) { return other.Material != index; });
        TZEPMaterial* material = SceneContext()->LibraryMaterial(index);
        if (!material || !Passes(*material)) {
            run = end;
            continue;
        }
        const TZEPDrawRun::MaterialScope applied(DrawFrame().Run, *material, face);
        DrawFrame().Run.OpenSurface();
        for (; run != end; ++run) SendFaces(run->First, run->Last, draft, material->HasTexture());
    }
}

bool TZEPMesh::HasCorners(const TZEPFace3CI& face) const {
    // Of a negative number an enormous one becomes.
    const auto count = static_cast<unsigned>(m_vertexes.Count());
    return static_cast<unsigned>(face.A()) < count && static_cast<unsigned>(face.B()) < count &&
           static_cast<unsigned>(face.C()) < count;
}

TGLArrayf3 TZEPMesh::FaceNormal(const TZEPFace3CI& face) const {
    TGLArrayd3 normal{};
    if (!m_autoNormal) return ToFloats(FirstPoint());
    if (HasCorners(face))
        CalcNormald(m_vertexes[face.A()].Data(), m_vertexes[face.B()].Data(),
                    m_vertexes[face.C()].Data(), normal);
    return ToFloats(normal);
}

void TZEPMesh::KeepNormals() const {
    const auto count = static_cast<std::size_t>(m_faces.Count());
    std::vector<TGLArrayf3>& normals = m_kept.Normals;
    if (normals.size() == count) return;
    normals.clear();
    normals.reserve(count);
    for (int i = 0; i < m_faces.Count(); ++i) normals.push_back(FaceNormal(m_faces[i]));
}

void TZEPMesh::SendFaces(int first, int last, bool draft, bool textured) {
    last = std::min(last, m_faces.Count() - 1); // some may be gone, with the news still held back
    if (!Smooth() && m_autoNormal) KeepNormals();
    if (draft) return SendOutlines(first, last, textured);
    if (last - first < FewFaces) {
        TImmediateSender sender;
        return SendTriangles(first, last, textured, sender);
    }
    TArraySender sender(textured);
    SendTriangles(first, last, textured, sender);
}

void TZEPMesh::SendOutlines(int first, int last, bool textured) {
    for (int i = first; i <= last; ++i) {
        if (!HasCorners(m_faces[i])) continue;
        TImmediateSender sender(GL_LINE_LOOP);
        SendTriangles(i, i, textured, sender);
    }
}

template <class TSender>
void TZEPMesh::SendTriangles(int first, int last, bool textured, TSender& sender) {
    if (Smooth()) return SendSmooth(first, last, textured, sender);
    const TGLArrayf3 common = ToFloats(FirstPoint());
    for (int i = first; i <= last; ++i) {
        const TZEPFace3CI& face = m_faces[i];
        if (!HasCorners(face)) continue;
        sender.Normal(m_autoNormal ? m_kept.Normals[static_cast<std::size_t>(i)] : common);
        for (const int corner : {face.A(), face.B(), face.C()}) {
            const TZEPVertex3TexCI& vertex = m_vertexes[corner];
            if (textured) sender.TexCoord(vertex.TexX(), vertex.TexY());
            sender.Vertex(vertex.Data());
        }
    }
}

template <class TSender>
void TZEPMesh::SendSmooth(int first, int last, bool textured, TSender& sender) {
    for (int i = first; i <= last; ++i) {
        const TZEPFace3CI& face = m_faces[i];
        if (!HasCorners(face)) continue;
        for (const int corner : {face.A(), face.B(), face.C()}) {
            TZEPVertex3TexCI& vertex = m_vertexes[corner];
            if (vertex.Normal() == TGLArrayf3{}) vertex.SetNormalQuietly(FaceNormal(face));
            if (textured) sender.TexCoord(vertex.TexX(), vertex.TexY());
            sender.Normal(vertex.Normal());
            sender.Vertex(vertex.Data());
        }
    }
}

} // namespace ZEP
