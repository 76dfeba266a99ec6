#pragma once

#include "converters/Progress.h"
#include "converters/ThreeDSChunks.h"
#include "converters/ThreeDSTextures.h"
#include "framework/Color.h"
#include "scene/Object.h"

#include <QHash>
#include <QSet>

#include <cmath>
#include <functional>
#include <optional>

namespace ZEP {

class TReadReport;
class TZEPCamera;
class TZEPLight;
class TZEPMaterial;
class TZEPMaterialLibrary;
class TZEPMesh;
class TZEPTexture;

/// What a 3DS file is read into, and who is told.
struct TF3DSTarget {
    TZEPObject& Root;
    TZEPMaterialLibrary* Materials; ///< null: materials are passed over
    bool PaintBareFaces;            ///< those without a material get a grey one
    QString FileName;               ///< beside which pictures lie; empty: there are none
    TReadReport& Report;
    std::function<void(std::string_view)> Dump; ///< takes the trace; may be empty
    TProgress Progress;                         ///< may be empty
};

/// Reads one 3DS file: a method for each kind of chunk makes what it says. Faults raise
/// `Exception`; what was read before them stays.
class TF3DSReader {
public:
    /// What a file can make: far more than a model has, far less than a memory.
    static constexpr int MaxObjects = 1'000'000;
    static constexpr int MaxMaterials = 65'536;
    /// OpenGL shows eight.
    static constexpr int MaxLights = 256;

    /// \param source  what the messages begin with
    TF3DSReader(std::string_view bytes, const QString& source, TF3DSTarget target);

    /// Whether the bytes begin as a 3DS file does.
    [[nodiscard]] static bool IsF3DS(std::string_view bytes);
    /// False where the progress call has cancelled.
    bool ReadFile();

private:
    struct TCancelled {};
    /// What points nowhere.
    struct TStrays {
        qint64 Numbers = 0, Bare = 0, Corners = 0, Faces = 0, TexCoords = 0, Lights = 0;
    };

    void ReadMainChunk(const TF3DSChunk& chunk);
    void ReadEditChunk(const TF3DSChunk& chunk);
    void ReadKfrmChunk(const TF3DSChunk& chunk);
    void ReadVersionChunk(const TF3DSChunk& chunk);
    void ReadMasterScale(const TF3DSChunk& chunk);
    void ReadSceneBackgroundColor(const TF3DSChunk& chunk);
    void ReadSceneAmbientColor(const TF3DSChunk& chunk);
    void ReadObjectChunk(const TF3DSChunk& chunk);
    void ReadMeshChunk(const TF3DSChunk& chunk, const QString& name);
    void ReadLightChunk(const TF3DSChunk& chunk, const QString& name);
    void ReadCameraChunk(const TF3DSChunk& chunk, const QString& name);
    void ReadMaterialChunk(const TF3DSChunk& chunk);
    void ReadBitmapChunk(const TF3DSChunk& chunk, TZEPTexture& texture);

    /// \name Of a mesh
    /// @{
    void ReadMeshPart(const TF3DSChunk& chunk, TZEPMesh& mesh);
    void ReadPoints(const TF3DSChunk& chunk, TZEPMesh& mesh);
    void ReadFaces(const TF3DSChunk& chunk, TZEPMesh& mesh);
    void ReadFaceGroup(const TF3DSChunk& chunk, TZEPMesh& mesh);
    void ReadTexCoords(const TF3DSChunk& chunk, TZEPMesh& mesh);
    void CheckFaces(TZEPMesh& mesh);
    [[nodiscard]] int BareMaterial();
    /// @}

    /// \name Of a material
    /// @{
    void ReadMaterialPart(const TF3DSChunk& chunk, TZEPMaterial& material);
    /// \param index  a `TZEPFaceMaterial::ColorIndex`
    void ReadFaceColor(const TF3DSChunk& chunk, TZEPMaterial& material, int index);
    void ReadShininess(const TF3DSChunk& chunk, TZEPMaterial& material);
    void ReadTransparency(const TF3DSChunk& chunk, TZEPMaterial& material);
    void LoadTexture(const TF3DSChunk& chunk, TZEPTexture& texture);
    /// @}

    void ReadSpotlight(const TF3DSChunk& chunk, TZEPLight& light);
    void ReadCameraRanges(const TF3DSChunk& chunk, TZEPCamera& camera);

    /// \name Values
    /// @{
    /// The colour of the first child that is one.
    [[nodiscard]] std::optional<TColor> ReadMaterialColorChunk(const TF3DSChunk& chunk);
    [[nodiscard]] static bool IsColor(const TF3DSChunk& chunk);
    [[nodiscard]] TColor ReadColor(const TF3DSChunk& chunk);
    [[nodiscard]] TColor ReadColorFChunk(const TF3DSChunk& chunk);
    [[nodiscard]] TColor ReadColor24Chunk(const TF3DSChunk& chunk);
    /// The first child that is a percentage.
    [[nodiscard]] std::optional<float> ReadPercentageChunk(const TF3DSChunk& chunk);
    [[nodiscard]] QString ReadName(const TF3DSChunk& chunk);
    [[nodiscard]] float ReadFloat(const TF3DSChunk& chunk);
    [[nodiscard]] TGLArrayd3 ReadPoint(const TF3DSChunk& chunk);
    /// The same, with a line of the trace.
    [[nodiscard]] float ReadNumber(const TF3DSChunk& chunk, const char* format);
    [[nodiscard]] TGLArrayd3 ReadPoint(const TF3DSChunk& chunk, const char* format);
    /// A number that is none, or is endless, would spoil every box that it comes into: it counts as
    /// 0.
    [[nodiscard]] double Finite(float value) {
        if (std::isfinite(value)) return static_cast<double>(value);
        ++m_strays.Numbers;
        return 0;
    }
    /// @}

    /// \name Chunks
    /// @{
    [[nodiscard]] TF3DSChunk Entered(const TF3DSChunk& chunk);
    [[nodiscard]] TF3DSChunk ReadChunk(const TF3DSChunk& parent);
    /// Calls `read` with each child and goes behind it.
    template <class Read>
    void ReadChildren(const TF3DSChunk& parent, Read&& read);
    void SkipChunk(const TF3DSChunk& chunk, std::uint16_t parent);
    void Dump(std::string_view text);
    template <class... Values>
    void DumpValues(const char* format, Values... values);
    /// @}

    template <class T>
    T& AddObject(const TF3DSChunk& chunk, const QString& name);
    void CheckCount(int count, int most, const char* what, const TF3DSChunk& chunk) const;
    void TellProgress();
    void ReportTexture(const QString& name, TF3DSTextures::TOutcome outcome);
    void ReportStrays();

    TF3DSCursor m_cursor;
    TF3DSTarget m_target;
    TF3DSTextures m_textures;
    QHash<QString, int> m_materialIndexes; // the first of each name
    std::size_t m_toldPosition = 0;
    int m_objectCount = 0;
    int m_lightCount = 0;
    int m_bareMaterial = -1;
    QSet<QString> m_textureKinds;
    TStrays m_strays;
};

template <class Read>
void TF3DSReader::ReadChildren(const TF3DSChunk& parent, Read&& read) {
    while (m_cursor.IsWithin(parent)) {
        const TF3DSChunk child = ReadChunk(parent);
        read(child);
        m_cursor.Leave(child);
    }
}

template <class... Values>
void TF3DSReader::DumpValues(const char* format, Values... values) {
    if (m_target.Dump) Dump(QString::asprintf(format, values...).toStdString());
}

template <class T>
T& TF3DSReader::AddObject(const TF3DSChunk& chunk, const QString& name) {
    CheckCount(m_objectCount++, MaxObjects, "objects", chunk);
    auto* object = new T(&m_target.Root);
    object->SetIdent(name);
    object->SetParentComponent(&m_target.Root);
    return *object;
}

} // namespace ZEP
