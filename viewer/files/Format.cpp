#include "viewer/files/Format.h"

#include <zep/converters/LineSource.h>
#include <zep/converters/assimp/Converter.h>
#include <zep/framework/Exception.h>
#include <zep/framework/FileText.h>
#include <zep/framework/stream/StreamFile.h>

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QtEndian>

#include <algorithm>
#include <array>

namespace ZEP {

namespace {

constexpr qint64 HeadSize = 4096;
constexpr qsizetype ChunkHead = 6; // bytes: a number of 16 bits and a length of 32

struct TFormatEntry {
    TFileFormat Format;
    QString Name;
    QString Plural;
    QStringList Suffixes;
};

const std::array<TFormatEntry, 5>& Formats() {
    static const std::array<TFormatEntry, 5> Entries{{
        {TFileFormat::RS274D,
         QStringLiteral("RS-274D"),
         QStringLiteral("Programs"),
         {QStringLiteral("nc"), QStringLiteral("ngc"), QStringLiteral("tap"),
          QStringLiteral("gcode"), QStringLiteral("cnc")}},
        {TFileFormat::DXF,
         QStringLiteral("DXF"),
         QStringLiteral("Drawings"),
         {QStringLiteral("dxf")}},
        {TFileFormat::F3DS,
         QStringLiteral("3DS"),
         QStringLiteral("3DS models"),
         {QStringLiteral("3ds")}},
        {TFileFormat::Model, QStringLiteral("model"), QStringLiteral("Models"),
         TAssimpConverter::Suffixes()},
        {TFileFormat::Scene,
         QStringLiteral("component stream"),
         QStringLiteral("Scenes"),
         {QStringLiteral("zep"), QStringLiteral("zept")}},
    }};
    return Entries;
}

const TFormatEntry* Find(TFileFormat format) {
    for (const TFormatEntry& entry : Formats())
        if (entry.Format == format) return &entry;
    return nullptr;
}

std::string_view View(QByteArrayView head) {
    return {head.data(), static_cast<std::size_t>(head.size())};
}

bool LooksLikeModel(QByteArrayView head) {
    if (!head.startsWith("MM") || head.size() < ChunkHead) return false;
    const auto length = qFromLittleEndian<quint32>(head.data() + 2);
    // Text that begins with these letters has no zeros.
    return length >= ChunkHead && head.first(std::min<qsizetype>(head.size(), 16)).contains('\0');
}

bool LooksLikeDrawing(QByteArrayView head) {
    if (head.startsWith("AutoCAD Binary DXF")) return true;
    TLineSource lines(View(head));
    std::string_view code, value;
    const auto next = [&] { return lines.Next(code) && lines.Next(value); };
    const auto trimmed = [](std::string_view line) {
        return QByteArrayView(line.data(), static_cast<qsizetype>(line.size())).trimmed();
    };
    while (next() && trimmed(code) == "999") {
    }
    return trimmed(code) == "0" && trimmed(value) == "SECTION";
}

bool LooksLikeProgram(QByteArrayView head) {
    if (head.contains('\0')) return false;
    static const QRegularExpression Word(QStringLiteral("^/?\\s*(%|[A-Z]\\s*[-+]?\\.?[0-9])"),
                                         QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression Comment(QStringLiteral("\\([^)]*\\)|;.*$"));
    const QString text = QString::fromUtf8(head);
    for (QString line : text.split(QRegularExpression(QStringLiteral("[\r\n]+")))) {
        line = line.remove(Comment).trimmed();
        if (!line.isEmpty()) return Word.match(line).hasMatch();
    }
    return false;
}

/// "Drawings (*.dxf)", or a few of that form with another text between them.
QString FormatsAs(const QString& form, const QString& between) {
    QStringList texts;
    for (const TFormatEntry& entry : Formats())
        texts << form.arg(entry.Plural, PatternsOf(entry.Format).join(QLatin1Char(' ')));
    return texts.join(between);
}

} // namespace

std::vector<TFileFormat> KnownFormats() {
    std::vector<TFileFormat> formats;
    for (const TFormatEntry& entry : Formats()) formats.push_back(entry.Format);
    return formats;
}

QStringList PatternsOf(TFileFormat format) {
    QStringList patterns;
    const TFormatEntry* entry = Find(format);
    if (!entry) return patterns;
    for (const QString& suffix : entry->Suffixes) patterns << QStringLiteral("*.") + suffix;
    return patterns;
}

QString OpenFilters() {
    QStringList all;
    for (const TFormatEntry& entry : Formats()) all << PatternsOf(entry.Format);
    return QStringLiteral("All of these (%1);;%2;;All files (*)")
        .arg(all.join(QLatin1Char(' ')),
             FormatsAs(QStringLiteral("%1 (%2)"), QStringLiteral(";;")));
}

TFileFormat FormatOf(const QString& fileName, QByteArrayView head) {
    if (StreamFormOf(View(head))) return TFileFormat::Scene;
    if (LooksLikeModel(head)) return TFileFormat::F3DS;
    if (LooksLikeDrawing(head)) return TFileFormat::DXF;
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    for (const TFormatEntry& entry : Formats())
        if (entry.Format != TFileFormat::Scene && entry.Suffixes.contains(suffix))
            return entry.Format;
    return LooksLikeProgram(head) ? TFileFormat::RS274D : TFileFormat::Unknown;
}

TFileFormat FormatOf(const QString& fileName) {
    CheckIsFile(fileName);
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw Exception(QStringLiteral("It cannot be read: %1.").arg(file.errorString()),
                        {.File = fileName});
    const TFileFormat format = FormatOf(fileName, file.read(HeadSize));
    if (format == TFileFormat::Unknown)
        throw Exception(QStringLiteral("It is of no format that can be opened. These can: %1.")
                            .arg(FormatsAs(QStringLiteral("%1 (%2)"), QStringLiteral(", "))),
                        {.File = fileName});
    return format;
}

QString FormatName(TFileFormat format) {
    const TFormatEntry* entry = Find(format);
    return entry ? entry->Name : QStringLiteral("unknown");
}

} // namespace ZEP
