#pragma once

#include <QtGlobal>

#include <charconv>
#include <string>
#include <string_view>

class QIODevice;

namespace ZEP {

/// Bytes on their way to a device, gathered into large pieces. `Flush` ends it; what a sink leaves
/// unflushed is lost, as where an error ends the writing.
class TByteOutput {
public:
    explicit TByteOutput(QIODevice& device);
    Q_DISABLE_COPY_MOVE(TByteOutput)

    void Append(char byte) { m_bytes.push_back(byte); }
    void Append(std::string_view bytes) {
        m_bytes.append(bytes);
        if (m_bytes.size() >= PieceSize) Flush();
    }
    /// A number in decimal.
    template <class Number>
    void AppendNumber(Number number) {
        char digits[64];
        const auto result = std::to_chars(digits, digits + sizeof digits, number);
        Append({digits, static_cast<std::size_t>(result.ptr - digits)});
    }
    /// Raises `Exception` in the device's own words where it does not take it all.
    void Flush();

private:
    static constexpr std::size_t PieceSize = 65536;

    QIODevice& m_device;
    std::string m_bytes;
};

} // namespace ZEP
