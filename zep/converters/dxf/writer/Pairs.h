#pragma once

#include <zep/scene/Geom.h>

#include <QString>

#include <string>
#include <string_view>

class QIODevice;

namespace ZEP {

/// Writes the pairs of a drawing: a group code and a value, each on a line. Numbers have as many
/// digits as bring back the same number, in any locale; texts are ASCII.
class TDXFPairs {
public:
    /// \param device  null: nothing is written, but handles are given out as if it were
    explicit TDXFPairs(QIODevice* device) : m_device(device) {}
    Q_DISABLE_COPY_MOVE(TDXFPairs)

    void Text(int code, std::string_view value);
    /// Letters beyond ASCII as "\U+00C4", control characters as blanks.
    void Words(int code, const QString& value);
    void Integer(int code, qint64 value);
    void Number(int code, double value);
    void Handle(int code, quint64 handle);
    /// x, y and z: `code`, 10 and 20 above it.
    void Point(int code, const TGLArrayd3& point);
    void FlatPoint(int code, const TGLArrayd3& point);
    /// Pairs as they stand: "0 SECTION|2 CLASSES|".
    void Fixed(std::string_view pairs);

    /// The next entity's.
    [[nodiscard]] quint64 NextHandle() { return m_nextHandle++; }
    /// No handle from here on has been given out.
    [[nodiscard]] quint64 FreeHandle() const { return m_nextHandle; }
    /// Raises `Exception` with the device's reason.
    void Flush();

private:
    static constexpr std::size_t BufferSize = 65536;
    static constexpr quint64 FirstHandle = 0x100; ///< what is fixed has those below

    void Append(int code, std::string_view value);

    QIODevice* m_device;
    std::string m_buffer;
    quint64 m_nextHandle = FirstHandle;
};

} // namespace ZEP
