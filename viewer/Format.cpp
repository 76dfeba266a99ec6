#include "viewer/Format.h"

#include "framework/Exception.h"
#include "framework/stream/StreamFile.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace ZEP {

namespace {

constexpr qint64 HeadSize = 4096;

const QStringList& ProgramSuffixes() {
    static const QStringList Suffixes{QStringLiteral("nc"), QStringLiteral("ngc"),
                                      QStringLiteral("tap"), QStringLiteral("gcode"),
                                      QStringLiteral("cnc")};
    return Suffixes;
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

} // namespace

QStringList ProgramPatterns() {
    QStringList patterns;
    for (const QString& suffix : ProgramSuffixes()) patterns << QStringLiteral("*.") + suffix;
    return patterns;
}

QStringList ScenePatterns() {
    return {QStringLiteral("*.zep"), QStringLiteral("*.zept")};
}

TFileFormat FormatOf(const QString& fileName, QByteArrayView head) {
    if (StreamFormOf({head.data(), static_cast<std::size_t>(head.size())}))
        return TFileFormat::Scene;
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    if (ProgramSuffixes().contains(suffix) || LooksLikeProgram(head)) return TFileFormat::RS274D;
    return TFileFormat::Unknown;
}

TFileFormat FormatOf(const QString& fileName) {
    QFile file(fileName);
    if (QFileInfo(fileName).isDir())
        throw Exception(QStringLiteral("%1 is a folder, not a file.").arg(fileName));
    if (!file.open(QIODevice::ReadOnly))
        throw Exception(QStringLiteral("%1 cannot be read: %2.").arg(fileName, file.errorString()));
    const TFileFormat format = FormatOf(fileName, file.read(HeadSize));
    if (format == TFileFormat::Unknown)
        throw Exception(QStringLiteral("%1 is of no format that can be opened: expected a program "
                                       "(%2) or a scene (%3).")
                            .arg(fileName, ProgramPatterns().join(QLatin1Char(' ')),
                                 ScenePatterns().join(QLatin1Char(' '))));
    return format;
}

QString FormatName(TFileFormat format) {
    switch (format) {
    case TFileFormat::RS274D:
        return QStringLiteral("RS-274D");
    case TFileFormat::Scene:
        return QStringLiteral("component stream");
    default:
        return QStringLiteral("unknown");
    }
}

} // namespace ZEP
