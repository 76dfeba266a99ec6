#pragma once

#include <zep/Export.h>
#include <zep/converters/FileConverter.h>
#include <zep/converters/ReadReport.h>
#include <zep/scene/Geom.h>

#include <span>
#include <string_view>

class QIODevice;

namespace ZEP {

class TDXFDrawing;

/// Reads an ASCII DXF drawing into the scene, and writes one: each layer becomes an object under
/// `Root`, each entity of a kind that is known an object under its layer. What a drawing may hold,
/// and what the two ways of reading do with it, is in docs/dxf.md.
///
/// Defaults: the plain reading, `ClearBeforRead` and `CreateLayersIfNotExists` set.
class ZEP_CORE_EXPORT TDXFConverter : public TFileConverter {
    Q_OBJECT
    Q_MOC_INCLUDE("zep/scene/Object.h")
    Q_PROPERTY(ZEP::TZEPObject* Root READ Root WRITE SetRoot)
    Q_PROPERTY(bool ClearBeforRead READ ClearBeforRead WRITE SetClearBeforRead)
    Q_CLASSINFO("ClearBeforRead", "true")
    Q_PROPERTY(
        bool CreateLayersIfNotExists READ CreateLayersIfNotExists WRITE SetCreateLayersIfNotExists)
    Q_CLASSINFO("CreateLayersIfNotExists", "true")
    Q_PROPERTY(bool WriteVPORTInfo READ WriteVPORTInfo WRITE SetWriteVPORTInfo)
    Q_CLASSINFO("WriteVPORTInfo", "false")
    Q_PROPERTY(QString FileName READ FileName WRITE SetFileName)
    Q_PROPERTY(bool Extended READ Extended WRITE SetExtended)
    Q_CLASSINFO("Extended", "false")
public:
    explicit TDXFConverter(TComponent* owner = nullptr);

    [[nodiscard]] bool CreateLayersIfNotExists() const { return m_createLayers; }
    /// Makes a layer where an entity names one that is not there: in the plain reading only for
    /// INSERT and POLYLINE, and without a name.
    void SetCreateLayersIfNotExists(bool create) { m_createLayers = create; }
    [[nodiscard]] bool WriteVPORTInfo() const { return m_writeVPORTInfo; }
    /// Writes a view of the whole beside what is drawn. Reading takes no notice of it.
    void SetWriteVPORTInfo(bool write) { m_writeVPORTInfo = write; }
    [[nodiscard]] bool Extended() const { return m_extended; }
    /// Reads what drawings of today hold, instead of the plain few kinds.
    void SetExtended(bool extended) { m_extended = extended; }

    /// Reads the file into `Root`. Raises `Exception` without `Root` or `FileName`, for a file that
    /// can not be read, for binary DXF and for what is no DXF. Of an entity
    /// that is cut off nothing is made.
    void LoadFromFile();
    /// Reads a drawing from memory into `Root`, below what is there.
    void ReadDXF(std::string_view text);

    /// Writes what stands below `Root`, in its coordinates, to `FileName`, an old file of which
    /// stands until the new one is whole. The progress call gets objects in place of bytes. Raises
    /// `Exception` without `Root` or `FileName`, and with the system's reason.
    void SaveToFile();
    /// Writes what stands below each of the objects as one drawing, in the coordinates of these.
    /// Raises `Exception` where the device does not take it. \return false when it was cancelled
    bool WriteDXF(QIODevice& device, std::span<TZEPObject* const> roots);

    /// What the last reading or writing passed over.
    [[nodiscard]] const TReadReport& Report() const { return m_report; }
    /// Where the header says that the drawing lies, with z 0; all zero where it says nothing.
    [[nodiscard]] const TGLArrayd3& get_min_extent() const { return m_minExtent; }
    [[nodiscard]] const TGLArrayd3& get_max_extent() const { return m_maxExtent; }

private:
    void Read(std::string_view text, const QString& fileName);
    void TakeResults(TDXFDrawing& drawing);

    TReadReport m_report;
    TGLArrayd3 m_minExtent{};
    TGLArrayd3 m_maxExtent{};
    bool m_createLayers = true;
    bool m_writeVPORTInfo = false;
    bool m_extended = false;
};

} // namespace ZEP
