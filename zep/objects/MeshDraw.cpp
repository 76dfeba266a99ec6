#include <zep/appearance/materials/Material.h>
#include <zep/gl/Scopes.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/MeshGroups.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>

#include <algorithm>

namespace ZEP {

namespace {

/// A mesh of so many is sent call by call, which is as quick as arrays.
constexpr int FewFaces = 64;

constexpr std::uint32_t Unnumbered = ~std::uint32_t{0};

std::array<int, 3> CornersOf(const TZEPFace3CI& face) {
    return {face.A(), face.B(), face.C()};
}

std::size_t FaceCount(const auto& runs) {
    std::size_t count = 0;
    for (const auto& run : runs) count += static_cast<std::size_t>(run.Last - run.First + 1);
    return count;
}

TMeshArrays::TTexCoord TexCoordOf(const TZEPVertex3TexCI& vertex) {
    return {static_cast<float>(vertex.TexX()), static_cast<float>(vertex.TexY())};
}

} // namespace

void TZEPMesh::DrawSpecific(GLenum face, bool draft) {
    const int count = m_faces.Count();
    if (count == 0) return;
    if (UsesLibrary()) return DrawMaterials(face, draft);
    DrawFrame().Run.OpenSurface();
    const TRun all{-1, 0, count - 1};
    TNumbers numbers;
    SendFaces({&all, 1}, draft, DrawnMaterial().HasTexture(), numbers);
}

void TZEPMesh::DrawMaterials(GLenum face, bool draft) {
    const std::vector<TRun>& runs = Runs();
    TNumbers numbers;
    for (auto run = runs.begin(); run != runs.end();) {
        const auto begin = run;
        run = std::find_if(run, runs.end(), [begin](const TRun& other) {
            return other.Material != begin->Material;
        });
        TZEPMaterial* material = SceneContext()->LibraryMaterial(begin->Material);
        if (!material || !Passes(*material)) continue;
        const TZEPDrawRun::MaterialScope applied(DrawFrame().Run, *material, face);
        DrawFrame().Run.OpenSurface();
        SendFaces({begin, run}, draft, material->HasTexture(), numbers);
    }
}

// --- faces and corners -------------------------------------------------------------------------

bool TZEPMesh::HasCorners(const TZEPFace3CI& face) const {
    // Of a negative number an enormous one becomes.
    const auto count = static_cast<unsigned>(m_vertexes.Count());
    return static_cast<unsigned>(face.A()) < count && static_cast<unsigned>(face.B()) < count &&
           static_cast<unsigned>(face.C()) < count;
}

TGLArrayf3 TZEPMesh::FaceNormal(const TZEPFace3CI& face) const {
    if (!m_autoNormal) return ToFloats(FirstPoint());
    TGLArrayd3 normal{};
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

const TGLArrayf3& TZEPMesh::SmoothNormal(const TZEPFace3CI& face, TZEPVertex3TexCI& vertex) const {
    if (vertex.Normal() == TGLArrayf3{}) vertex.SetNormalQuietly(FaceNormal(face));
    return vertex.Normal();
}

template <class Visit>
void TZEPMesh::ForEachFace(const TRun& run, Visit&& visit) const {
    // Some may be gone, with the news still held back.
    const int last = std::min(run.Last, m_faces.Count() - 1);
    for (int i = run.First; i <= last; ++i)
        if (HasCorners(m_faces[i])) visit(i);
}

// --- sending -----------------------------------------------------------------------------------

void TZEPMesh::SendFaces(TRuns runs, bool draft, bool textured, TNumbers& numbers) {
    if (!draft && m_faces.Count() > FewFaces) return SendArrays(runs, textured, numbers);
    if (!Smooth() && m_autoNormal) KeepNormals();
    for (const TRun& run : runs)
        if (draft)
            SendOutlines(run, textured);
        else
            SendTriangles(run, textured);
}

void TZEPMesh::SendTriangles(const TRun& run, bool textured) {
    const TPrimitiveScope triangles(GL_TRIANGLES);
    ForEachFace(run, [&](int face) { SendCorners(face, textured); });
}

void TZEPMesh::SendOutlines(const TRun& run, bool textured) {
    ForEachFace(run, [&](int face) {
        const TPrimitiveScope outline(GL_LINE_LOOP);
        SendCorners(face, textured);
    });
}

void TZEPMesh::SendCorners(int number, bool textured) {
    const TZEPFace3CI& face = m_faces[number];
    if (!Smooth())
        glNormal3fv(m_autoNormal ? m_kept.Normals[static_cast<std::size_t>(number)].data()
                                 : FaceNormal(face).data());
    for (const int corner : CornersOf(face)) {
        TZEPVertex3TexCI& vertex = m_vertexes[corner];
        if (textured) glTexCoord2d(vertex.TexX(), vertex.TexY());
        if (Smooth()) glNormal3fv(SmoothNormal(face, vertex).data());
        glVertex3dv(vertex.Data().data());
    }
}

void TZEPMesh::SendArrays(TRuns runs, bool textured, TNumbers& numbers) {
    if (!m_groups) m_groups = std::make_unique<TMeshGroups>();
    DrawFrame().Kept.Use(*m_groups);
    m_groups->SetLook({UsesLibrary(), Smooth(), m_autoNormal, ToFloats(FirstPoint())});
    const int material = runs.front().Material;
    if (const TMeshArrays* made = m_groups->Find(material, textured)) return made->Draw();
    TMeshArrays arrays(textured);
    if (Smooth())
        FillShared(arrays, runs, numbers);
    else
        Fill(arrays, runs);
    arrays.Finish();
    m_groups->Keep(material, std::move(arrays)).Draw();
}

void TZEPMesh::Fill(TMeshArrays& arrays, TRuns runs) const {
    arrays.Reserve(3 * FaceCount(runs), 0);
    for (const TRun& run : runs)
        ForEachFace(run, [&](int number) {
            const TZEPFace3CI& face = m_faces[number];
            const TGLArrayf3 normal = FaceNormal(face);
            for (const int corner : CornersOf(face)) {
                const TZEPVertex3TexCI& vertex = m_vertexes[corner];
                arrays.AddVertex({normal, ToFloats(vertex.Data())}, TexCoordOf(vertex));
            }
        });
}

// A face without extent has no normal to give: the next one does.
void TZEPMesh::CompleteNormals(TRuns runs) {
    for (const TRun& run : runs)
        ForEachFace(run, [&](int number) {
            const TZEPFace3CI& face = m_faces[number];
            for (const int corner : CornersOf(face)) SmoothNormal(face, m_vertexes[corner]);
        });
}

void TZEPMesh::FillShared(TMeshArrays& arrays, TRuns runs, TNumbers& numbers) {
    const auto vertexCount = static_cast<std::size_t>(m_vertexes.Count());
    const std::size_t cornerCount = 3 * FaceCount(runs);
    arrays.Reserve(std::min(vertexCount, cornerCount), cornerCount);
    numbers.resize(vertexCount, Unnumbered);
    CompleteNormals(runs);
    std::vector<int> numbered;
    const auto numberOf = [&](int corner) {
        std::uint32_t& number = numbers[static_cast<std::size_t>(corner)];
        if (number != Unnumbered) return number;
        const TZEPVertex3TexCI& vertex = m_vertexes[corner];
        number = arrays.VertexCount();
        numbered.push_back(corner);
        arrays.AddVertex({vertex.Normal(), ToFloats(vertex.Data())}, TexCoordOf(vertex));
        return number;
    };
    for (const TRun& run : runs)
        ForEachFace(run, [&](int number) {
            for (const int corner : CornersOf(m_faces[number])) arrays.AddCorner(numberOf(corner));
        });
    for (const int vertex : numbered) numbers[static_cast<std::size_t>(vertex)] = Unnumbered;
}

} // namespace ZEP
