#include <zep/converters/threeds/Stream.h>

#include <zep/converters/ReadReport.h>
#include <zep/converters/threeds/Ids.h>

#include <QStringDecoder>

#include <algorithm>

namespace ZEP {

namespace {

/// A kind of chunk that is passed over though one would see it.
struct TMissed {
    std::uint16_t Parent;
    std::uint16_t Id;
    const char* What;
    bool IsMinor = false; ///< the model stands and looks as it does
};

constexpr TMissed Missed[] = {
    {idMain, idKeyframer, "animation", true},
    {idEditor, 0x1100, "background picture"},
    {idEditor, 0x1300, "background gradient"},
    {idEditor, 0x2200, "fog"},
    {idEditor, 0x2300, "distance cue"},
    {idEditor, 0x2302, "layer fog"},
    {idObject, idHidden, "hidden object"},
    {idLight, 0x4620, "light that is off", true},
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

} // namespace

// --- chunks ------------------------------------------------------------------------------------

TF3DSChunk TF3DSStream::Entered(const TF3DSChunk& chunk) {
    DumpValues("0x%04X", static_cast<unsigned>(chunk.Id));
    return chunk;
}

void TF3DSStream::SkipChunk(const TF3DSChunk& chunk, std::uint16_t parent) {
    const std::size_t count = chunk.End - Position();
    Leave(chunk);
    DumpValues(" %zu bytes skipped\r\n", count);
    ReportMissed(chunk, parent);
}

void TF3DSStream::ReportMissed(const TF3DSChunk& chunk, std::uint16_t parent) {
    for (const TMissed& missed : Missed)
        if (missed.Parent == parent && missed.Id == chunk.Id) {
            const QString kind = QStringLiteral("chunk %1 (%2)")
                                     .arg(F3DSChunkName(chunk.Id), QLatin1String(missed.What));
            missed.IsMinor ? m_report.AddMinor(kind) : m_report.Add(kind);
        }
}

// --- values ------------------------------------------------------------------------------------

bool TF3DSStream::IsColor(const TF3DSChunk& chunk) {
    return chunk.Id == idColorF || chunk.Id == idColor24 || chunk.Id == idLinearColor24;
}

TColor TF3DSStream::ReadColor(const TF3DSChunk& chunk) {
    return chunk.Id == idColorF ? ReadColorFChunk(chunk) : ReadColor24Chunk(chunk);
}

TColor TF3DSStream::ReadColorFChunk(const TF3DSChunk& chunk) {
    Dump(" <ColorFChunk> \r\n");
    const TGLArrayd3 color = ReadPoint(chunk, "color=[%f,%f,%f]\r\n");
    return ColorOf(255 * color[0], 255 * color[1], 255 * color[2]);
}

TColor TF3DSStream::ReadColor24Chunk(const TF3DSChunk& chunk) {
    Dump(" <Color24Chunk> \r\n");
    std::array<double, 3> color{};
    for (double& value : color) value = Read<std::uint8_t>(chunk);
    DumpValues("color=[%f,%f,%f]\r\n", color[0], color[1], color[2]);
    return ColorOf(color[0], color[1], color[2]);
}

std::optional<TColor> TF3DSStream::ReadMaterialColorChunk(const TF3DSChunk& chunk) {
    std::optional<TColor> color;
    ReadChildren(chunk, [&](const TF3DSChunk& child) {
        if (color || !IsColor(child)) return SkipChunk(child, chunk.Id);
        color = ReadColor(child);
    });
    return color;
}

// The whole number counts in hundredths; the other form is taken as it stands, since some writers
// store shares in it. Files that store per cent there come out a hundred times as strong.
std::optional<float> TF3DSStream::ReadPercentageChunk(const TF3DSChunk& chunk) {
    std::optional<float> share;
    ReadChildren(chunk, [&](const TF3DSChunk& child) {
        const bool isInteger = child.Id == idPercentInteger;
        if (share || (!isInteger && child.Id != idPercentFloat)) return SkipChunk(child, chunk.Id);
        Dump(isInteger ? " <PercentIntegerChunk> \r\n" : " <PercentFloatChunk> \r\n");
        share = isInteger ? static_cast<float>(Read<std::int16_t>(child)) / 100 : ReadFloat(child);
        DumpValues("  value=%f\r\n", static_cast<double>(*share));
    });
    return share;
}

QString TF3DSStream::ReadName(const TF3DSChunk& chunk) {
    const std::string_view text = ReadText(chunk);
    return text.empty() ? QStringLiteral("DUMMY") : TextOf(text);
}

float TF3DSStream::ReadFloat(const TF3DSChunk& chunk) {
    return static_cast<float>(Finite(Read<float>(chunk)));
}

float TF3DSStream::ReadNumber(const TF3DSChunk& chunk, const char* format) {
    const float value = ReadFloat(chunk);
    DumpValues(format, static_cast<double>(value));
    return value;
}

TGLArrayd3 TF3DSStream::ReadPoint(const TF3DSChunk& chunk, const char* format) {
    TGLArrayd3 point{};
    for (double& value : point) value = static_cast<double>(ReadFloat(chunk));
    DumpValues(format, point[0], point[1], point[2]);
    return point;
}

} // namespace ZEP
