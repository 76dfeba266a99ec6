#include <zep/framework/MappedFile.h>

#include <zep/framework/Exception.h>

#include <QFileInfo>

namespace ZEP {

namespace {

[[noreturn]] void Refuse(const QString& fileName, const QString& method, const QString& reason) {
    throw Exception(QStringLiteral("Can't read \"%1\": %2.").arg(fileName, reason),
                    {.Method = method, .File = fileName});
}

} // namespace

TMappedFile::TMappedFile(const QString& fileName, const QString& method) : m_file(fileName) {
    const QFileInfo info(fileName);
    // Asked before opening: opening a pipe would wait for its writer.
    if (!info.exists()) Refuse(fileName, method, QStringLiteral("no such file"));
    if (!info.isFile()) Refuse(fileName, method, QStringLiteral("not a file"));
    if (!m_file.open(QIODevice::ReadOnly)) Refuse(fileName, method, m_file.errorString());
    const qint64 size = m_file.size();
    if (size == 0) return;
    if (const uchar* data = m_file.map(0, size)) {
        m_text = {reinterpret_cast<const char*>(data), static_cast<std::size_t>(size)};
        return;
    }
    m_bytes = m_file.readAll();
    if (m_bytes.size() != size) Refuse(fileName, method, m_file.errorString());
    m_text = {m_bytes.constData(), static_cast<std::size_t>(size)};
}

} // namespace ZEP
