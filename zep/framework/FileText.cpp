#include <zep/framework/FileText.h>

#include <zep/framework/Exception.h>

#include <QFile>
#include <QFileInfo>

namespace ZEP {

bool IsFileIn(const QString& folder, const QString& fileName) {
    const QFileInfo target(QFileInfo(fileName).canonicalFilePath());
    return target.isFile() && target.path() == QFileInfo(folder).canonicalFilePath();
}

TFileText::TFileText(const QString& fileName, const QString& method) {
    const auto refuse = [&](const QString& reason) {
        throw Exception(QStringLiteral("Can't read \"%1\": %2.").arg(fileName, reason),
                        {.Method = method, .File = fileName});
    };
    const QFileInfo info(fileName);
    // Asked before opening: opening a pipe would wait for its writer.
    if (!info.exists()) refuse(QStringLiteral("no such file"));
    if (!info.isFile()) refuse(QStringLiteral("not a file"));
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
