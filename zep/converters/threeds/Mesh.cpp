#include <zep/converters/threeds/Mesh.h>

#include <zep/converters/ReadReport.h>
#include <zep/converters/threeds/Ids.h>
#include <zep/converters/threeds/Materials.h>
#include <zep/converters/threeds/Placement.h>
#include <zep/converters/threeds/Stream.h>
#include <zep/objects/Mesh.h>

#include <algorithm>

namespace ZEP {

namespace {

constexpr std::size_t WordsOfFace = 4; // the last are flags of its edges

/// Gathers what a collection would tell, also of what is set quietly after items have been added.
class TGathered {
public:
    explicit TGathered(TZEPCollection* collection) : m_collection(collection) {
        m_collection->BeginUpdate();
    }
    ~TGathered() { m_collection->EndUpdate(); }
    Q_DISABLE_COPY_MOVE(TGathered)

private:
    TZEPCollection* m_collection;
};

} // namespace

void TF3DSMeshes::ReadMeshChunk(const TF3DSChunk& chunk, TZEPMesh& mesh) {
    m_stream.Dump(" <MeshChunk> \r\n");
    const TGathered vertexes(mesh.Vertexes());
    const TGathered faces(mesh.Faces());
    TF3DSChunk faceList;
    while (m_stream.IsWithin(chunk)) {
        const bool isInFaceList = m_stream.Position() < faceList.End;
        const TF3DSChunk child = m_stream.ReadChunk(isInFaceList ? faceList : chunk);
        if (child.Id != idFaces) {
            ReadPart(child, mesh);
            m_stream.Leave(child);
            continue;
        }
        // What is said about the faces follows them in their chunk, in no level of its own: no
        // file can nest so deep that a stack would end.
        ReadFaces(child, mesh);
        faceList = child;
    }
    CheckFaces(mesh);
}

void TF3DSMeshes::ReadPart(const TF3DSChunk& chunk, TZEPMesh& mesh) {
    switch (chunk.Id) {
    case idPoints:
        return ReadPoints(chunk, mesh);
    case idFaceGroup:
        return ReadFaceGroup(chunk, mesh);
    case idTexCoords:
        return ReadTexCoords(chunk, mesh);
    case idSmoothing:
        return m_stream.Dump(" <SmoothChunk> \r\n"); // a mesh is smooth or flat as a whole
    case idMatrix:
        return ReadMatrix(chunk, mesh);
    case idHidden:
        m_stream.Dump(" <HiddenChunk> \r\n");
        return mesh.SetVisible(false);
    case idNoShadows:
        m_stream.Dump(" <NoShadowsChunk> \r\n");
        return mesh.SetShadows(0, false);
    case idNoReceiveShadows:
        m_stream.Dump(" <NotRcvShadowsChunk> \r\n");
        return mesh.SetShadows(1, false);
    default:
        return m_stream.SkipChunk(chunk, idMesh);
    }
}

void TF3DSMeshes::ReadPoints(const TF3DSChunk& chunk, TZEPMesh& mesh) {
    m_stream.Dump(" <PointArrayChunk> \r\n");
    const auto numbers = m_stream.ReadArray<float>(chunk, 3, "points");
    mesh.Vertexes()->AddEach(numbers.Count() / 3, [&](TZEPVertex3TexCI& vertex, std::size_t i) {
        const std::size_t first = 3 * i;
        vertex.SetPointQuietly({m_stream.Finite(numbers[first]),
                                m_stream.Finite(numbers[first + 1]),
                                m_stream.Finite(numbers[first + 2])});
    });
}

void TF3DSMeshes::ReadFaces(const TF3DSChunk& chunk, TZEPMesh& mesh) {
    m_stream.Dump(" <FaceArrayChunk> \r\n");
    const auto words = m_stream.ReadArray<std::uint16_t>(chunk, WordsOfFace, "faces");
    mesh.Faces()->AddEach(words.Count() / WordsOfFace, [&](TZEPFace3CI& face, std::size_t i) {
        const std::size_t first = WordsOfFace * i;
        face.SetCornersQuietly(words[first], words[first + 1], words[first + 2]);
    });
}

void TF3DSMeshes::ReadTexCoords(const TF3DSChunk& chunk, TZEPMesh& mesh) {
    m_stream.Dump(" <TexCoordArrayChunk> \r\n");
    const auto numbers = m_stream.ReadArray<float>(chunk, 2, "texture coordinates");
    const std::size_t count = numbers.Count() / 2;
    const std::size_t used = std::min(count, static_cast<std::size_t>(mesh.Vertexes()->Count()));
    for (std::size_t i = 0; i < used; ++i)
        (*mesh.Vertexes())[static_cast<int>(i)].SetTexCoordQuietly(
            m_stream.Finite(numbers[2 * i]), m_stream.Finite(numbers[2 * i + 1]));
    m_strayTexCoords += static_cast<qint64>(count - used);
}

// The mesh's own frame: points are stored in the whole's.
void TF3DSMeshes::ReadMatrix(const TF3DSChunk& chunk, TZEPMesh& mesh) {
    m_stream.Dump(" <MatrixChunk> \r\n");
    if (!m_placement) return;
    TGLMatrixd4 own = idd;
    for (auto& row : own)
        for (std::size_t i = 0; i < 3; ++i) row[i] = static_cast<double>(m_stream.ReadFloat(chunk));
    m_placement->Add(mesh, own);
}

void TF3DSMeshes::ReadFaceGroup(const TF3DSChunk& chunk, TZEPMesh& mesh) {
    if (!m_materials) return m_stream.SkipChunk(chunk, idMesh);
    m_stream.Dump(" <MaterialGroupChunk> \r\n");
    const int material = m_materials->FindMaterialIndex(m_stream.ReadName(chunk));
    const auto words = m_stream.ReadArray<std::uint16_t>(chunk, 1, "faces");
    const int faceCount = mesh.Faces()->Count();
    for (std::size_t i = 0; i < words.Count(); ++i) {
        if (words[i] < faceCount)
            (*mesh.Faces())[words[i]].SetMaterialIndexQuietly(material);
        else
            ++m_strayFaces;
    }
}

void TF3DSMeshes::CheckFaces(TZEPMesh& mesh) {
    const int count = mesh.Vertexes()->Count();
    for (int i = 0; i < mesh.Faces()->Count(); ++i) {
        const TZEPFace3CI& face = (*mesh.Faces())[i];
        if (std::max({face.A(), face.B(), face.C()}) >= count) ++m_strayCorners;
        if (m_materials && face.MaterialIndex() < 0) ++m_bareFaces;
    }
}

void TF3DSMeshes::ReportStrays() {
    const auto report = [this](const char* what, qint64 count) {
        if (count > 0) m_stream.Report().Add(QLatin1String(what), 0, count);
    };
    if (m_bareFaces > 0)
        m_stream.Report().AddMinor(QStringLiteral("faces without a material"), 0, m_bareFaces);
    report("faces with a corner that is no vertex", m_strayCorners);
    report("materials of faces that the mesh lacks", m_strayFaces);
    report("texture coordinates without a vertex", m_strayTexCoords);
}

} // namespace ZEP
