#pragma once

#include <QtGlobal>

namespace ZEP {

struct TF3DSChunk;
class TF3DSMaterials;
class TF3DSStream;
class TF3DSPlacement;
class TZEPMesh;

/// Reads the points and faces of meshes.
class TF3DSMeshes {
public:
    /// \param materials  null: the materials of faces are passed over
    /// \param placement  takes the frames of meshes; null: points stay as they are stored
    TF3DSMeshes(TF3DSStream& stream, TF3DSMaterials* materials, TF3DSPlacement* placement)
        : m_stream(stream), m_materials(materials), m_placement(placement) {}

    void ReadMeshChunk(const TF3DSChunk& chunk, TZEPMesh& mesh);
    /// Adds what pointed nowhere to the report.
    void ReportStrays();

private:
    void ReadPart(const TF3DSChunk& chunk, TZEPMesh& mesh);
    void ReadPoints(const TF3DSChunk& chunk, TZEPMesh& mesh);
    void ReadFaces(const TF3DSChunk& chunk, TZEPMesh& mesh);
    void ReadFaceGroup(const TF3DSChunk& chunk, TZEPMesh& mesh);
    void ReadMatrix(const TF3DSChunk& chunk, TZEPMesh& mesh);
    void ReadTexCoords(const TF3DSChunk& chunk, TZEPMesh& mesh);
    void CheckFaces(TZEPMesh& mesh);

    TF3DSStream& m_stream;
    TF3DSMaterials* m_materials;
    TF3DSPlacement* m_placement;
    qint64 m_bareFaces = 0, m_strayCorners = 0, m_strayFaces = 0, m_strayTexCoords = 0;
};

} // namespace ZEP
