#include <zep/converters/threeds/Chunks.h>

#include <zep/framework/UserError.h>

#include <algorithm>
#include <limits>

namespace ZEP {

QString F3DSChunkName(std::uint16_t id) {
    return QString::asprintf("0x%04X", static_cast<unsigned>(id));
}

void TF3DSCursor::Refuse(const QString& text, std::size_t offset) const {
    const QString located =
        QStringLiteral("%1 at offset 0x%2.").arg(text, QString::number(offset, 16).toUpper());
    const QString named = QStringLiteral("Can't read \"%1\": %2").arg(m_source.File, located);
    throw TUserError(m_source.File.isEmpty() ? located : named, text,
                     {.Method = m_source.Method,
                      .File = m_source.File,
                      .Place = {.Offset = static_cast<qint64>(offset)}});
}

bool TF3DSCursor::IsWithin(const TF3DSChunk& chunk) const {
    if (m_position >= chunk.End) return false;
    if (m_position >= m_bytes.size())
        Refuse(QStringLiteral("the file ends in chunk %1").arg(F3DSChunkName(chunk.Id)),
               m_bytes.size());
    return true;
}

std::size_t TF3DSCursor::Remaining(const TF3DSChunk& chunk) const {
    const std::size_t end = std::min(chunk.End, m_bytes.size());
    return end > m_position ? end - m_position : 0;
}

std::string_view TF3DSCursor::Take(const TF3DSChunk& chunk, std::size_t count) {
    const std::size_t remaining = Remaining(chunk);
    if (remaining < count)
        Refuse(QStringLiteral("chunk %1 needs %2 more bytes where %3 remain")
                   .arg(F3DSChunkName(chunk.Id))
                   .arg(count)
                   .arg(remaining),
               m_position);
    const std::string_view bytes = m_bytes.substr(m_position, count);
    m_position += count;
    return bytes;
}

std::string_view TF3DSCursor::TakeCounted(const TF3DSChunk& chunk, std::size_t recordSize,
                                          const char* what) {
    const std::size_t offset = m_position;
    const std::size_t count = Read<std::uint16_t>(chunk);
    if (Remaining(chunk) < count * recordSize)
        Refuse(QStringLiteral("chunk %1 counts %2 %3 of %4 bytes where %5 bytes remain")
                   .arg(F3DSChunkName(chunk.Id))
                   .arg(count)
                   .arg(QLatin1String(what))
                   .arg(recordSize)
                   .arg(Remaining(chunk)),
               offset);
    return Take(chunk, count * recordSize);
}

std::string_view TF3DSCursor::ReadText(const TF3DSChunk& chunk) {
    const std::string_view rest = m_bytes.substr(m_position, Remaining(chunk));
    const std::size_t length = rest.find('\0');
    if (length == std::string_view::npos)
        Refuse(QStringLiteral("chunk %1 holds a name without an end").arg(F3DSChunkName(chunk.Id)),
               m_position);
    m_position += length + 1;
    return rest.substr(0, length);
}

TF3DSChunk TF3DSCursor::EnterFile() {
    return Enter({0, 0, std::numeric_limits<std::size_t>::max()});
}

TF3DSChunk TF3DSCursor::Enter(const TF3DSChunk& parent) {
    const std::size_t offset = m_position;
    if (Remaining(parent) < HeaderSize)
        Refuse(QStringLiteral("a chunk begins where %1 bytes remain").arg(Remaining(parent)),
               offset);
    const auto id = Read<std::uint16_t>(parent);
    const std::size_t length = Read<std::uint32_t>(parent);
    if (length < HeaderSize)
        Refuse(QStringLiteral("chunk %1 has the length %2, but its header has %3 bytes")
                   .arg(F3DSChunkName(id))
                   .arg(length)
                   .arg(HeaderSize),
               offset);
    if (length > parent.End - offset)
        Refuse(QStringLiteral("chunk %1 has the length %2 where its parent has %3 bytes left")
                   .arg(F3DSChunkName(id))
                   .arg(length)
                   .arg(parent.End - offset),
               offset);
    return {id, offset, offset + length};
}

void TF3DSCursor::Leave(const TF3DSChunk& chunk) {
    m_position = std::min(chunk.End, m_bytes.size());
    if (m_position < chunk.End)
        Refuse(QStringLiteral("the file ends in chunk %1").arg(F3DSChunkName(chunk.Id)),
               m_position);
}

} // namespace ZEP
