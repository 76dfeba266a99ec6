#include "converters/ThreeDSReader.h"

#include "converters/ReadReport.h"
#include "converters/ThreeDSIds.h"
#include "scene/Scene.h"

#include <QScopeGuard>
#include <QStringDecoder>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr std::size_t ProgressStep = 65536;

/// A kind of chunk that is passed over though one would see it.
struct TMissed {
    std::uint16_t Parent;
    std::uint16_t Id;
    const char* What;
};

constexpr TMissed Missed[] = {
    {idMain, idKeyframer, "animation"},
    {idEditor, 0x1100, "background picture"},
    {idEditor, 0x1300, "background gradient"},
    {idEditor, 0x2200, "fog"},
    {idEditor, 0x2300, "distance cue"},
    {idEditor, 0x2302, "layer fog"},
    {idObject, idHidden, "hidden object"},
    {idLight, 0x4620, "light that is off"},
    {idLight, 0x4625, "attenuation of a light"},
    {idMaterial, 0xA085, "wire frame"},
    {idMaterial, 0xA204, "specular map"},
    {idMaterial, 0xA210, "opacity map"},
    {idMaterial, 0xA220, "reflection map"},
    {idMaterial, 0xA230, "bump map"},
    {idMaterial, 0xA33A, "second texture"},
    {idMaterial, 0xA33C, "shininess map"},
    {idMaterial, 0xA33D, "self-illumination map"},
};

QString TextOf(std::string_view bytes) {
    const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(view);
    // Old files are in a code page; of those, this one keeps different names different.
    return decoder.hasError() ? QString::fromLatin1(view) : text;
}

TColor ColorOf(double red, double green, double blue) {
    const auto byte = [](double value) {
        return static_cast<std::uint32_t>(std::lround(std::clamp(value, 0.0, 255.0)));
    };
    return byte(red) | byte(green) << 8 | byte(blue) << 16;
}

TZEPScene* SceneOf(TZEPObject& root) {
    auto* scene = qobject_cast<TZEPScene*>(&root);
    return scene ? scene : root.Scene();
}

} // namespace

TF3DSReader::TF3DSReader(std::string_view bytes, const QString& source, TF3DSTarget target)
    : m_cursor(bytes, source), m_target(std::move(target)), m_textures(m_target.FileName) {}

bool TF3DSReader::IsF3DS(std::string_view bytes) {
    return bytes.size() >= 2 && qFromLittleEndian<std::uint16_t>(bytes.data()) == idMain;
}

bool TF3DSReader::ReadFile() {
    const auto report = qScopeGuard([this] { ReportStrays(); });
    try {
        ReadMainChunk(Entered(m_cursor.EnterFile()));
    } catch (const TCancelled&) {
        return false;
    }
    return true;
}

// --- structure ---------------------------------------------------------------------------------

void TF3DSReader::ReadMainChunk(const TF3DSChunk& chunk) {
    Dump(" <MainChunk> \r\n");
    ReadChildren(chunk, [this](const TF3DSChunk& child) {
        TellProgress();
        switch (child.Id) {
        case idVersion:
            return ReadVersionChunk(child);
        case idEditor:
            return ReadEditChunk(child);
        case idKeyframer:
            return ReadKfrmChunk(child);
        default:
            return SkipChunk(child, idMain);
        }
    });
}

void TF3DSReader::ReadEditChunk(const TF3DSChunk& chunk) {
    Dump(" <EditChunk> \r\n");
    ReadChildren(chunk, [this](const TF3DSChunk& child) {
        TellProgress();
        switch (child.Id) {
        case idMeshVersion:
            return ReadVersionChunk(child);
        case idMasterScale:
            return ReadMasterScale(child);
        case idBackgroundColor:
            return ReadSceneBackgroundColor(child);
        case idAmbientColor:
            return ReadSceneAmbientColor(child);
        case idObject:
            return ReadObjectChunk(child);
        case idMaterial:
            return ReadMaterialChunk(child);
        default:
            return SkipChunk(child, idEditor);
        }
    });
}

void TF3DSReader::ReadKfrmChunk(const TF3DSChunk& chunk) {
    Dump(" <KfrmChunk> \r\n");
    ReadChildren(chunk, [this](const TF3DSChunk& child) { SkipChunk(child, idKeyframer); });
    m_target.Report.Add(QStringLiteral("chunk 0xB000 (animation)"));
}

void TF3DSReader::ReadVersionChunk(const TF3DSChunk& chunk) {
    Dump(" <VersionChunk> \r\n");
    DumpValues("Ver: %u\r\n", m_cursor.Read<std::uint32_t>(chunk));
}

// The scale is of the program that wrote the file: who wants another size scales the root.
void TF3DSReader::ReadMasterScale(const TF3DSChunk& chunk) {
    Dump(" <ScaleChunk> \r\n");
    SkipChunk(chunk, idEditor);
}

void TF3DSReader::ReadSceneBackgroundColor(const TF3DSChunk& chunk) {
    Dump(" <BackgroundColorChunk> \r\n");
    const auto color = ReadMaterialColorChunk(chunk);
    TZEPScene* scene = SceneOf(m_target.Root);
    if (color && scene) scene->SetBackgroundColor(*color);
}

void TF3DSReader::ReadSceneAmbientColor(const TF3DSChunk& chunk) {
    Dump(" <AmbientColorChunk> \r\n");
    const auto color = ReadMaterialColorChunk(chunk);
    TZEPScene* scene = SceneOf(m_target.Root);
    if (color && scene) scene->SetSceneAmbientColor(*color);
}

void TF3DSReader::ReadObjectChunk(const TF3DSChunk& chunk) {
    Dump(" <ObjectChunk> \r\n");
    const QString name = ReadName(chunk);
    ReadChildren(chunk, [&](const TF3DSChunk& child) {
        switch (child.Id) {
        case idMesh:
            return ReadMeshChunk(child, name);
        case idLight:
            return ReadLightChunk(child, name);
        case idCamera:
            return ReadCameraChunk(child, name);
        default:
            return SkipChunk(child, idObject);
        }
    });
}

// --- values ------------------------------------------------------------------------------------

bool TF3DSReader::IsColor(const TF3DSChunk& chunk) {
    return chunk.Id == idColorF || chunk.Id == idColor24 || chunk.Id == idLinearColor24;
}

TColor TF3DSReader::ReadColor(const TF3DSChunk& chunk) {
    return chunk.Id == idColorF ? ReadColorFChunk(chunk) : ReadColor24Chunk(chunk);
}

TColor TF3DSReader::ReadColorFChunk(const TF3DSChunk& chunk) {
    Dump(" <ColorFChunk> \r\n");
    const TGLArrayd3 color = ReadPoint(chunk, "color=[%f,%f,%f]\r\n");
    return ColorOf(255 * color[0], 255 * color[1], 255 * color[2]);
}

TColor TF3DSReader::ReadColor24Chunk(const TF3DSChunk& chunk) {
    Dump(" <Color24Chunk> \r\n");
    std::array<double, 3> color{};
    for (double& value : color) value = m_cursor.Read<std::uint8_t>(chunk);
    DumpValues("color=[%f,%f,%f]\r\n", color[0], color[1], color[2]);
    return ColorOf(color[0], color[1], color[2]);
}

std::optional<TColor> TF3DSReader::ReadMaterialColorChunk(const TF3DSChunk& chunk) {
    std::optional<TColor> color;
    ReadChildren(chunk, [&](const TF3DSChunk& child) {
        if (color || !IsColor(child)) return SkipChunk(child, chunk.Id);
        color = ReadColor(child);
    });
    return color;
}

// The whole number counts in hundredths; the other form is taken as it stands, since some writers
// store shares in it. Files that store per cent there come out a hundred times as strong.
std::optional<float> TF3DSReader::ReadPercentageChunk(const TF3DSChunk& chunk) {
    std::optional<float> share;
    ReadChildren(chunk, [&](const TF3DSChunk& child) {
        const bool isInteger = child.Id == idPercentInteger;
        if (share || (!isInteger && child.Id != idPercentFloat)) return SkipChunk(child, chunk.Id);
        Dump(isInteger ? " <PercentIntegerChunk> \r\n" : " <PercentFloatChunk> \r\n");
        share = isInteger ? static_cast<float>(m_cursor.Read<std::int16_t>(child)) / 100
                          : ReadFloat(child);
        DumpValues("  value=%f\r\n", static_cast<double>(*share));
    });
    return share;
}

QString TF3DSReader::ReadName(const TF3DSChunk& chunk) {
    const std::string_view text = m_cursor.ReadText(chunk);
    return text.empty() ? QStringLiteral("DUMMY") : TextOf(text);
}

float TF3DSReader::ReadFloat(const TF3DSChunk& chunk) {
    return static_cast<float>(Finite(m_cursor.Read<float>(chunk)));
}

TGLArrayd3 TF3DSReader::ReadPoint(const TF3DSChunk& chunk) {
    TGLArrayd3 point{};
    for (double& value : point) value = static_cast<double>(ReadFloat(chunk));
    return point;
}

float TF3DSReader::ReadNumber(const TF3DSChunk& chunk, const char* format) {
    const float value = ReadFloat(chunk);
    DumpValues(format, static_cast<double>(value));
    return value;
}

TGLArrayd3 TF3DSReader::ReadPoint(const TF3DSChunk& chunk, const char* format) {
    const TGLArrayd3 point = ReadPoint(chunk);
    DumpValues(format, point[0], point[1], point[2]);
    return point;
}

// --- chunks ------------------------------------------------------------------------------------

TF3DSChunk TF3DSReader::Entered(const TF3DSChunk& chunk) {
    DumpValues("0x%04X", static_cast<unsigned>(chunk.Id));
    return chunk;
}

TF3DSChunk TF3DSReader::ReadChunk(const TF3DSChunk& parent) {
    return Entered(m_cursor.Enter(parent));
}

void TF3DSReader::SkipChunk(const TF3DSChunk& chunk, std::uint16_t parent) {
    const std::size_t count = chunk.End - m_cursor.Position();
    m_cursor.Leave(chunk);
    DumpValues(" %zu bytes skipped\r\n", count);
    for (const TMissed& missed : Missed)
        if (missed.Parent == parent && missed.Id == chunk.Id)
            m_target.Report.Add(QStringLiteral("chunk %1 (%2)")
                                    .arg(F3DSChunkName(chunk.Id), QLatin1String(missed.What)));
}

void TF3DSReader::Dump(std::string_view text) {
    if (m_target.Dump) m_target.Dump(text);
}

void TF3DSReader::CheckCount(int count, int most, const char* what, const TF3DSChunk& chunk) const {
    if (count < most) return;
    m_cursor.Refuse(QStringLiteral("more than %1 %2").arg(most).arg(QLatin1String(what)),
                    chunk.Offset);
}

void TF3DSReader::TellProgress() {
    if (!m_target.Progress || m_cursor.Position() - m_toldPosition < ProgressStep) return;
    m_toldPosition = m_cursor.Position();
    if (!m_target.Progress(static_cast<qint64>(m_toldPosition),
                           static_cast<qint64>(m_cursor.Size())))
        throw TCancelled();
}

void TF3DSReader::ReportStrays() {
    const auto report = [this](const char* what, qint64 count) {
        if (count > 0) m_target.Report.Add(QLatin1String(what), 0, count);
    };
    report("numbers that are none (taken as 0)", m_strays.Numbers);
    report("faces without a material", m_strays.Bare);
    report("faces with a corner that is no vertex", m_strays.Corners);
    report("materials of faces that the mesh lacks", m_strays.Faces);
    report("texture coordinates without a vertex", m_strays.TexCoords);
    report("lights after the first 256", m_strays.Lights);
}

} // namespace ZEP
