#include <zep/framework/FileText.h>

#include <zep/framework/UserError.h>

#include <QFile>
#include <QFileInfo>

namespace ZEP {

namespace {

[[noreturn]] void Refuse(const QString& fileName, const QString& method, const QString& reason,
                         const QString& told) {
    throw TUserError(QStringLiteral("Can't read \"%1\": %2.").arg(fileName, reason), told,
                     {.Method = method, .File = fileName});
}

} // namespace

bool IsFileIn(const QString& folder, const QString& fileName) {
    const QFileInfo target(QFileInfo(fileName).canonicalFilePath());
    return target.isFile() && target.path() == QFileInfo(folder).canonicalFilePath();
}

void CheckIsFile(const QString& fileName, const QString& method) {
    const QFileInfo info(fileName);
    if (!info.exists())
        Refuse(fileName, method, QStringLiteral("no such file"),
               QStringLiteral("There is no such file: it may have been moved or renamed."));
    if (!info.isFile())
        Refuse(fileName, method, QStringLiteral("not a file"),
               info.isDir() ? QStringLiteral("It is a folder: open the files in it.")
                            : QStringLiteral("It is a pipe or a device: open an ordinary file."));
}

TFileText::TFileText(const QString& fileName, const QString& method) {
    const auto refuse = [&](const QString& reason) {
        Refuse(fileName, method, reason, QStringLiteral("It cannot be read: %1.").arg(reason));
    };
    CheckIsFile(fileName, method);
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) refuse(file.errorString());
    const qint64 size = file.size();
    if (size > MaxBytes)
        refuse(QStringLiteral("it has more than %1 gigabytes").arg(MaxBytes >> 30));
    Read(file, static_cast<std::size_t>(size));
    if (file.error() != QFileDevice::NoError) refuse(file.errorString());
}

void TFileText::Read(QFile& file, std::size_t size) {
    m_bytes = std::make_unique_for_overwrite<char[]>(size);
    while (m_size < size) {
        const qint64 count = file.read(m_bytes.get() + m_size, static_cast<qint64>(size - m_size));
        if (count <= 0) return;
        m_size += static_cast<std::size_t>(count);
    }
}

} // namespace ZEP
