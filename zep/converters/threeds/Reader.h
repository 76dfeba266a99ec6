#pragma once

#include <zep/converters/Progress.h>
#include <zep/converters/threeds/Materials.h>
#include <zep/converters/threeds/Mesh.h>
#include <zep/converters/threeds/Nodes.h>
#include <zep/converters/threeds/Placement.h>
#include <zep/converters/threeds/Stream.h>
#include <zep/framework/ReadBudget.h>

#include <QPointer>

#include <optional>

namespace ZEP {

class TZEPMesh;
class TZEPObject;

/// What a 3DS file is read into, and who is told.
struct TF3DSTarget {
    TZEPObject& Root;
    QPointer<TZEPMaterialLibrary> Materials; ///< null: materials are passed over
    QString FileName;                        ///< beside which pictures lie; empty: there are none
    TReadReport& Report;
    bool Extended;
    TF3DSStream::TDump Dump; ///< may be empty
    TProgress Progress;      ///< may be empty
};

/// Reads one 3DS file: goes through its structure and makes an object for each mesh, light and
/// camera. Faults raise `Exception`; what was read before them stays.
class TF3DSReader {
public:
    /// Memory of an object beside that of its class: its name, its transform.
    static constexpr qint64 BytesBesideObject = 512;
    /// OpenGL shows eight, and each is numbered through all objects of the scene.
    static constexpr int MaxLights = 256;

    /// \param source  of errors: who reads, and from which file
    TF3DSReader(std::string_view bytes, const TErrorOrigin& source, TF3DSTarget target);

    /// Whether the bytes begin as a 3DS file does.
    [[nodiscard]] static bool IsF3DS(std::string_view bytes);
    /// Raises `TReadingEnd` where the progress call has cancelled.
    void ReadFile();

private:
    void ReadMainChunk(const TF3DSChunk& chunk);
    void ReadEditChunk(const TF3DSChunk& chunk);
    void ReadEditPart(const TF3DSChunk& chunk);
    void ReadMaterials(const TF3DSChunk& editor);
    void ReadKfrmChunk(const TF3DSChunk& chunk);
    void ReadNode(const TF3DSChunk& chunk);
    void ReadVersionChunk(const TF3DSChunk& chunk);
    void ReadMasterScale(const TF3DSChunk& chunk);
    void ReadSceneBackgroundColor(const TF3DSChunk& chunk);
    void ReadSceneAmbientColor(const TF3DSChunk& chunk);
    void ReadObjectChunk(const TF3DSChunk& chunk);
    TZEPMesh* AddMesh(const TF3DSChunk& chunk, const QString& name);
    void AddLight(const TF3DSChunk& chunk, const QString& name);
    void AddCamera(const TF3DSChunk& chunk, const QString& name);
    template <class T>
    T* AddObject(const TF3DSChunk& chunk, const QString& name);
    void TellProgress();
    void ReportStrays();

    TF3DSTarget m_target;
    TReadBudget m_budget;
    TF3DSStream m_stream;
    std::optional<TF3DSMaterials> m_materials;
    TF3DSPlacement m_placement;
    TF3DSMeshes m_meshes;
    TF3DSNodes m_nodes;
    std::size_t m_toldPosition = 0;
    qint64 m_lightCount = 0;
};

} // namespace ZEP
