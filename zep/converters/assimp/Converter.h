#pragma once

#include <zep/Export.h>
#include <zep/converters/FileConverter.h>
#include <zep/converters/ReadReport.h>

#include <QPointer>
#include <QStringList>

namespace ZEP {

class TZEPMaterialLibrary;

/// Reads models of many formats (STL, OBJ, PLY, glTF, FBX, COLLADA, 3MF, ...) by the library
/// Assimp: triangles become `TZEPMesh`, lines `TZEPLine`, points `TZEPPoint`, cameras and lights
/// those of here, below a `TZEPObject` for each node of the file that holds several, and materials
/// go into `Materials`. Points are in the frame of the whole, in the units of the file. What is
/// read of a file, and how, is in docs/models.md.
///
/// Assimp is loaded when it is first asked for; where the system has none, reading raises an
/// `Exception` that says so. It was not made for hostile files: what comes from strangers is better
/// read in a process of its own.
///
/// Pictures, and other files that a model consists of, are looked for in the folder of `FileName`
/// only.
///
/// Defaults: `ClearBeforRead` set, up as the format has it.
class ZEP_CORE_EXPORT TAssimpConverter : public TFileConverter {
    Q_OBJECT
    Q_MOC_INCLUDE("zep/appearance/materials/MaterialLibrary.h")
    Q_MOC_INCLUDE("zep/scene/Object.h")
    Q_PROPERTY(ZEP::TZEPObject* Root READ Root WRITE SetRoot)
    Q_PROPERTY(ZEP::TZEPMaterialLibrary* Materials READ Materials WRITE SetMaterials)
    Q_PROPERTY(bool ClearBeforRead READ ClearBeforRead WRITE SetClearBeforRead)
    Q_CLASSINFO("ClearBeforRead", "true")
    Q_PROPERTY(QString FileName READ FileName WRITE SetFileName)
    Q_PROPERTY(TUpAxis UpAxis READ UpAxis WRITE SetUpAxis)
    Q_CLASSINFO("UpAxis", "uaOfFormat")
public:
    /// Which way is up in a file; here it is z.
    enum TUpAxis : unsigned char {
        uaOfFormat, ///< y in formats that say so, and in OBJ, which mostly means it
        uaY,
        uaZ
    };
    Q_ENUM(TUpAxis)

    explicit TAssimpConverter(TComponent* owner = nullptr);

    /// Whether the system has an Assimp that this can read with.
    [[nodiscard]] static bool IsAvailable();
    /// Of the files that are read, without a point; formats that the library reads by itself are
    /// not among them.
    [[nodiscard]] static const QStringList& Suffixes();

    [[nodiscard]] TZEPMaterialLibrary* Materials() const;
    /// Takes the materials. Without it, all faces of a mesh have the mesh's own material. Meshes
    /// show these materials where their scene has this library. Stays set until it is freed.
    void SetMaterials(TZEPMaterialLibrary* materials);
    [[nodiscard]] TUpAxis UpAxis() const { return m_upAxis; }
    void SetUpAxis(TUpAxis axis) { m_upAxis = axis; }

    /// Reads the file into `Root`, and its materials behind those in `Materials`. Raises
    /// `Exception` without `Root` or `FileName`, without Assimp, and for a file that cannot be
    /// read, that Assimp refuses, or that needs more memory than `TReadBudget` allows; what was
    /// read before an error stays.
    void LoadFromFile();

    /// What the last reading passed over.
    [[nodiscard]] const TReadReport& Report() const { return m_report; }

private:
    void Read();
    [[nodiscard]] bool IsTurned() const;

    QPointer<TZEPMaterialLibrary> m_materials;
    TReadReport m_report;
    TUpAxis m_upAxis = uaOfFormat;
};

} // namespace ZEP
