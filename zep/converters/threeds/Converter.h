#pragma once

#include <zep/Export.h>
#include <zep/converters/FileConverter.h>
#include <zep/converters/ReadReport.h>

#include <QPointer>

#include <memory>
#include <string_view>

namespace ZEP {

class TDumpFile;
class TZEPMaterialLibrary;
struct TErrorOrigin;

/// Reads a 3DS scene: triangle meshes become `TZEPMesh`, lights `TZEPLight`, cameras `TZEPCamera`,
/// all directly under `Root`, and materials go into `Materials`. The scene that `Root` is of gets
/// the file's ambient and background colours. What is read of a file, and how, is in docs/3ds.md.
///
/// Points and axes are as the file has them: millimetres or inches, z up, without the file's master
/// scale.
///
/// Pictures for textures are looked for in the folder of `FileName`.
///
/// Defaults: the plain reading, `ClearBeforRead` set, no dump.
class ZEP_CORE_EXPORT TF3DSConverter : public TFileConverter {
    Q_OBJECT
    Q_MOC_INCLUDE("zep/appearance/materials/MaterialLibrary.h")
    Q_MOC_INCLUDE("zep/scene/Object.h")
    Q_PROPERTY(bool DoDump READ DoDump WRITE SetDoDump)
    Q_CLASSINFO("DoDump", "false")
    Q_PROPERTY(ZEP::TZEPObject* Root READ Root WRITE SetRoot)
    Q_PROPERTY(ZEP::TZEPMaterialLibrary* Materials READ Materials WRITE SetMaterials)
    Q_PROPERTY(bool ClearBeforRead READ ClearBeforRead WRITE SetClearBeforRead)
    Q_CLASSINFO("ClearBeforRead", "true")
    Q_PROPERTY(QString FileName READ FileName WRITE SetFileName)
    Q_PROPERTY(bool Extended READ Extended WRITE SetExtended)
    Q_CLASSINFO("Extended", "false")
public:
    explicit TF3DSConverter(TComponent* owner = nullptr);
    ~TF3DSConverter() override;

    [[nodiscard]] bool DoDump() const { return m_doDump; }
    /// Writes beside the file, with the extension ".dmp", which chunks it has and what they say.
    void SetDoDump(bool doDump) { m_doDump = doDump; }
    [[nodiscard]] TZEPMaterialLibrary* Materials() const;
    /// Takes the materials. Without it, all faces of a mesh have the mesh's own material. Meshes
    /// show these materials where their scene has this library. Stays set until it is freed.
    void SetMaterials(TZEPMaterialLibrary* materials);

    [[nodiscard]] bool Extended() const { return m_extended; }
    /// Shows models as the programs do that they come from: meshes where the first key puts them,
    /// what is hidden hidden, materials wherever they stand in the file, highlights of the stated
    /// strength, pictures in their own colours.
    void SetExtended(bool extended) { m_extended = extended; }

    /// Reads the file into `Root`, and its materials in place of those in `Materials`. Raises
    /// `Exception` without `Root` or `FileName`, and for a file that cannot be read, is no 3DS
    /// file, or is faulty, with the offset; what was read before an error stays.
    void LoadFromFile();
    /// Always raises `Exception`: scenes are only read.
    void SaveToFile();
    /// Reads a file from memory into `Root`, below what is there; its materials come after those in
    /// `Materials`. Raises `Exception` as `LoadFromFile` does.
    void Read3DS(std::string_view bytes);

    /// What the last reading passed over.
    [[nodiscard]] const TReadReport& Report() const { return m_report; }

    /// The first material of the library with exactly that `Ident`; -1 without one.
    [[nodiscard]] int FindMaterialIndex(const QString& name) const;
    /// Adds text to the dump file, and flushes it; nothing while no dump is written.
    void Dump(std::string_view text);

private:
    void Read(std::string_view bytes, const TErrorOrigin& source);
    /// Ends the reading also where the library is freed or replaced.
    [[nodiscard]] TProgress ProgressOfBoth() const;

    QPointer<TZEPMaterialLibrary> m_materials;
    TReadReport m_report;
    std::unique_ptr<TDumpFile> m_dump;
    bool m_doDump = false;
    bool m_extended = false;
};

} // namespace ZEP
