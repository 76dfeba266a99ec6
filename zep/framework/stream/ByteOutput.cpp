#include <zep/framework/stream/ByteOutput.h>

#include <zep/framework/Exception.h>

#include <QIODevice>

namespace ZEP {

TByteOutput::TByteOutput(QIODevice& device) : m_device(device) {
    m_bytes.reserve(PieceSize + PieceSize / 4);
}

void TByteOutput::Flush() {
    const auto size = static_cast<qint64>(m_bytes.size());
    if (m_device.write(m_bytes.data(), size) != size) throw Exception(m_device.errorString());
    m_bytes.clear();
}

} // namespace ZEP
