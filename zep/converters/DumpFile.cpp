#include <zep/converters/DumpFile.h>

#include <zep/framework/Exception.h>
#include <zep/framework/FileSaving.h>

namespace ZEP {

namespace {

QString DumpName(const QString& fileName) {
    const qsizetype dot = fileName.lastIndexOf(u'.');
    const bool hasExtension = dot > fileName.lastIndexOf(u'/');
    return (hasExtension ? fileName.left(dot) : fileName) + QStringLiteral(".dmp");
}

} // namespace

TDumpFile::TDumpFile(const QString& fileName, const QString& method)
    : m_file(DumpName(fileName)), m_method(method) {
    if (IsSameFile(m_file.fileName(), fileName)) Refuse(QStringLiteral("it is the file to read"));
    if (!m_file.open(QIODevice::WriteOnly)) Refuse(m_file.errorString());
}

void TDumpFile::Write(std::string_view line) {
    m_file.write(line.data(), static_cast<qint64>(line.size()));
    m_file.write("\r\n", 2);
}

void TDumpFile::Append(std::string_view text) {
    m_file.write(text.data(), static_cast<qint64>(text.size()));
    m_file.flush();
}

void TDumpFile::Finish() {
    if (m_file.flush() && m_file.error() == QFileDevice::NoError) return;
    m_file.flush(); // a write that was cut short does not know why, but the next one does
    Refuse(m_file.errorString());
}

void TDumpFile::Refuse(const QString& reason) const {
    throw Exception(QStringLiteral("Can't write \"%1\": %2.").arg(m_file.fileName(), reason),
                    {.Method = m_method, .File = m_file.fileName()});
}

} // namespace ZEP
