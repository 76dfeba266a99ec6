#include <zep/converters/TextureFolder.h>

#include <zep/framework/FileText.h>

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace ZEP {

namespace {

constexpr qsizetype ShortBase = 8;
constexpr qsizetype ShortSuffix = 3;

/// "shape.tar", "jpg" of "shape.tar.jpg".
struct TSplitName {
    explicit TSplitName(const QString& file) {
        const qsizetype dot = file.lastIndexOf(u'.');
        Base = dot < 0 ? file : file.left(dot);
        Suffix = dot < 0 ? QString() : file.mid(dot + 1);
    }
    QString Base, Suffix;
};

/// The last part, whichever system the path is of; empty for what names no file.
QString LastPart(const QString& path) {
    static const QRegularExpression separator(QStringLiteral("[/\\\\:]"));
    const QString file = path.mid(path.lastIndexOf(separator) + 1);
    return file == QLatin1String(".") || file == QLatin1String("..") ? QString() : file;
}

bool BeginsWith(const QString& text, const QString& beginning) {
    return text.startsWith(beginning, Qt::CaseInsensitive);
}

/// Without what short names leave out.
QString Packed(QString base) {
    return base.remove(u' ').remove(u'.');
}

/// A name that may be the short form of others: the beginning of their bases, and which of them.
struct TShortName {
    explicit TShortName(const QString& file) : Parts(file) {
        static const QRegularExpression numbered(QStringLiteral("^(.{1,7})~([1-9])$"));
        const auto match = numbered.match(Parts.Base);
        IsNumbered = match.hasMatch();
        Beginning = IsNumbered ? match.captured(1) : Parts.Base;
        Number = IsNumbered ? match.captured(2).toInt() : 1;
    }
    [[nodiscard]] bool IsShort() const { return IsNumbered || Parts.Base.size() == ShortBase; }
    [[nodiscard]] bool Fits(const QString& file) const {
        const TSplitName other(file);
        if (other.Suffix.left(ShortSuffix).compare(Parts.Suffix, Qt::CaseInsensitive) != 0)
            return false;
        return IsNumbered ? BeginsWith(Packed(other.Base), Beginning)
                          : BeginsWith(other.Base, Beginning);
    }

    TSplitName Parts;
    QString Beginning;
    int Number = 1;
    bool IsNumbered = false;
};

} // namespace

TTextureFolder::TTextureFolder(const QString& modelFile) {
    if (modelFile.isEmpty()) return;
    const QString folder = modelFile.left(modelFile.lastIndexOf(u'/') + 1);
    m_folder = folder.isEmpty() ? QStringLiteral("./") : folder;
}

QString TTextureFolder::PathOf(const QString& name) const {
    return m_folder + LastPart(name);
}

QString TTextureFolder::Find(const QString& name) {
    const QString file = LastPart(name);
    if (m_folder.isEmpty() || file.isEmpty()) return {};
    const bool isThere = QFileInfo(m_folder + file).isFile();
    const QString path = m_folder + (isThere ? file : FindOther(file));
    return IsFileIn(m_folder, path) ? path : QString();
}

QString TTextureFolder::FindOther(const QString& file) {
    if (!m_listed) m_files = QDir(m_folder).entryList(QDir::Files, QDir::Name);
    m_listed = true;
    for (const QString& other : m_files)
        if (other.compare(file, Qt::CaseInsensitive) == 0) return other;
    const TShortName shortName(file);
    if (!shortName.IsShort()) return {};
    int number = 0;
    for (const QString& other : m_files)
        if (shortName.Fits(other) && ++number == shortName.Number) return other;
    return {};
}

} // namespace ZEP
