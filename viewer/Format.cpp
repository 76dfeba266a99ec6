#include "viewer/Format.h"

#include "framework/Exception.h"

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

TFileFormat FormatOf(const QString& fileName, QByteArrayView head) {
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
                                       "(%2).")
                            .arg(fileName, ProgramPatterns().join(QLatin1Char(' '))));
    return format;
}

QString FormatName(TFileFormat format) {
    return format == TFileFormat::RS274D ? QStringLiteral("RS-274D") : QStringLiteral("unknown");
}

} // namespace ZEP
