#include "appearance/MaterialLibrary.h"
#include "converters/ThreeDSIds.h"
#include "converters/ThreeDSReader.h"
#include "objects/Mesh.h"

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

void TF3DSReader::ReadMeshChunk(const TF3DSChunk& chunk, const QString& name) {
    Dump(" <MeshChunk> \r\n");
    auto& mesh = AddObject<TZEPMesh>(chunk, name);
    const TGathered vertexes(mesh.Vertexes());
    const TGathered faces(mesh.Faces());
    TF3DSChunk faceList;
    while (m_cursor.IsWithin(chunk)) {
        const bool isInFaceList = m_cursor.Position() < faceList.End;
        const TF3DSChunk child = ReadChunk(isInFaceList ? faceList : chunk);
        if (child.Id != idFaces) {
            ReadMeshPart(child, mesh);
            m_cursor.Leave(child);
            continue;
        }
        // What is said about the faces follows them in their chunk, in no level of its own: no
        // file can nest so deep that a stack would end.
        ReadFaces(child, mesh);
        faceList = child;
    }
    CheckFaces(mesh);
}

void TF3DSReader::ReadMeshPart(const TF3DSChunk& chunk, TZEPMesh& mesh) {
    switch (chunk.Id) {
    case idPoints:
        return ReadPoints(chunk, mesh);
    case idFaceGroup:
        return ReadFaceGroup(chunk, mesh);
    case idTexCoords:
        return ReadTexCoords(chunk, mesh);
    case idSmoothing:
        return Dump(" <SmoothChunk> \r\n"); // a mesh is smooth or flat as a whole
    case idMatrix:
        return Dump(" <MatrixChunk> \r\n"); // where the pivot is: points are in the whole's frame
    case idHidden:
        Dump(" <HiddenChunk> \r\n");
        return mesh.SetVisible(false);
    case idNoShadows:
        Dump(" <NoShadowsChunk> \r\n");
        return mesh.SetShadows(0, false);
    case idNoReceiveShadows:
        Dump(" <NotRcvShadowsChunk> \r\n");
        return mesh.SetShadows(1, false);
    default:
        return SkipChunk(chunk, idMesh);
    }
}

void TF3DSReader::ReadPoints(const TF3DSChunk& chunk, TZEPMesh& mesh) {
    Dump(" <PointArrayChunk> \r\n");
    const auto numbers = m_cursor.ReadArray<float>(chunk, 3, "points");
    mesh.Vertexes()->AddEach(numbers.Count() / 3, [&](TZEPVertex3TexCI& vertex, std::size_t i) {
        const std::size_t first = 3 * i;
        vertex.SetPointQuietly(
            {Finite(numbers[first]), Finite(numbers[first + 1]), Finite(numbers[first + 2])});
    });
}

void TF3DSReader::ReadFaces(const TF3DSChunk& chunk, TZEPMesh& mesh) {
    Dump(" <FaceArrayChunk> \r\n");
    const auto words = m_cursor.ReadArray<std::uint16_t>(chunk, WordsOfFace, "faces");
    mesh.Faces()->AddEach(words.Count() / WordsOfFace, [&](TZEPFace3CI& face, std::size_t i) {
        const std::size_t first = WordsOfFace * i;
        face.SetCornersQuietly(words[first], words[first + 1], words[first + 2]);
    });
}

void TF3DSReader::ReadTexCoords(const TF3DSChunk& chunk, TZEPMesh& mesh) {
    Dump(" <TexCoordArrayChunk> \r\n");
    const auto numbers = m_cursor.ReadArray<float>(chunk, 2, "texture coordinates");
    const std::size_t count = numbers.Count() / 2;
    const std::size_t used = std::min(count, static_cast<std::size_t>(mesh.Vertexes()->Count()));
    for (std::size_t i = 0; i < used; ++i)
        (*mesh.Vertexes())[static_cast<int>(i)].SetTexCoordQuietly(Finite(numbers[2 * i]),
                                                                   Finite(numbers[2 * i + 1]));
    m_strays.TexCoords += static_cast<qint64>(count - used);
}

void TF3DSReader::ReadFaceGroup(const TF3DSChunk& chunk, TZEPMesh& mesh) {
    if (!m_target.Materials) return SkipChunk(chunk, idMesh);
    Dump(" <MaterialGroupChunk> \r\n");
    const int material = m_materialIndexes.value(ReadName(chunk), -1);
    const auto words = m_cursor.ReadArray<std::uint16_t>(chunk, 1, "faces");
    const int faceCount = mesh.Faces()->Count();
    for (std::size_t i = 0; i < words.Count(); ++i) {
        if (words[i] < faceCount)
            (*mesh.Faces())[words[i]].SetMaterialIndexQuietly(material);
        else
            ++m_strays.Faces;
    }
}

void TF3DSReader::CheckFaces(TZEPMesh& mesh) {
    const int count = mesh.Vertexes()->Count();
    for (int i = 0; i < mesh.Faces()->Count(); ++i) {
        TZEPFace3CI& face = (*mesh.Faces())[i];
        if (std::max({face.A(), face.B(), face.C()}) >= count) ++m_strays.Corners;
        if (m_target.Materials && face.MaterialIndex() < 0) {
            ++m_strays.Bare;
            if (m_target.PaintBareFaces) face.SetMaterialIndexQuietly(BareMaterial());
        }
    }
}

int TF3DSReader::BareMaterial() {
    auto* items = m_target.Materials->Materials();
    if (m_bareMaterial < 0) {
        m_bareMaterial = items->Count();
        items->Add();
    }
    return m_bareMaterial;
}

} // namespace ZEP
