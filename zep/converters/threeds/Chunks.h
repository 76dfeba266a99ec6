#pragma once

#include <zep/framework/Exception.h>

#include <QtEndian>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ZEP {

/// A piece of a 3DS file: what its first six bytes say, and where they are.
struct TF3DSChunk {
    std::uint16_t Id = 0;
    std::size_t Offset = 0; ///< of its first byte
    std::size_t End = 0;    ///< behind its last byte, which a file that is cut off does not have
};

/// A run of numbers as it lies in the file: nothing is copied.
template <class T>
class TF3DSNumbers {
public:
    explicit TF3DSNumbers(std::string_view bytes) : m_bytes(bytes) {}
    [[nodiscard]] std::size_t Count() const { return m_bytes.size() / sizeof(T); }
    [[nodiscard]] T operator[](std::size_t index) const {
        return qFromLittleEndian<T>(m_bytes.data() + index * sizeof(T));
    }

private:
    std::string_view m_bytes;
};

using TF3DSFloats = TF3DSNumbers<float>;
using TF3DSWords = TF3DSNumbers<std::uint16_t>;

/// Goes through the bytes of a 3DS file. What is read must lie in its chunk and in the file, and a
/// chunk in its parent; else an `Exception` says so and names the offset. Nothing is allocated.
class TF3DSCursor {
public:
    static constexpr std::size_t HeaderSize = 6;

    /// \param source  of errors: who reads, and from which file
    TF3DSCursor(std::string_view bytes, const TErrorOrigin& source)
        : m_bytes(bytes), m_source(source) {}

    [[nodiscard]] std::size_t Position() const { return m_position; }
    [[nodiscard]] std::size_t Size() const { return m_bytes.size(); }
    /// Whether the position is still in the chunk. Raises where the file ends before it.
    [[nodiscard]] bool IsWithin(const TF3DSChunk& chunk) const;

    /// The identifier and the length of the main chunk, which may be longer than the file: what is
    /// there of it can be read.
    [[nodiscard]] TF3DSChunk EnterFile();
    /// The identifier and the length of a chunk.
    [[nodiscard]] TF3DSChunk Enter(const TF3DSChunk& parent);
    /// Goes behind the chunk.
    void Leave(const TF3DSChunk& chunk);
    /// To where it was before.
    void GoBack(std::size_t position) { m_position = position; }

    /// One number of the chunk.
    template <class T>
    [[nodiscard]] T Read(const TF3DSChunk& chunk) {
        return qFromLittleEndian<T>(Take(chunk, sizeof(T)).data());
    }
    /// A 16-bit count and that many records of `width` numbers each.
    /// \param what  the records, as a message names them
    template <class T>
    [[nodiscard]] TF3DSNumbers<T> ReadArray(const TF3DSChunk& chunk, std::size_t width,
                                            const char* what) {
        return TF3DSNumbers<T>(TakeCounted(chunk, width * sizeof(T), what));
    }
    /// The bytes up to a zero, without it.
    [[nodiscard]] std::string_view ReadText(const TF3DSChunk& chunk);

    /// Raises `Exception`: the source, the text and the offset.
    [[noreturn]] void Refuse(const QString& text, std::size_t offset) const;

private:
    [[nodiscard]] std::string_view Take(const TF3DSChunk& chunk, std::size_t count);
    [[nodiscard]] std::string_view TakeCounted(const TF3DSChunk& chunk, std::size_t recordSize,
                                               const char* what);
    [[nodiscard]] std::size_t Remaining(const TF3DSChunk& chunk) const;

    std::string_view m_bytes;
    std::size_t m_position = 0;
    TErrorOrigin m_source;
};

/// "0x4110".
[[nodiscard]] QString F3DSChunkName(std::uint16_t id);

} // namespace ZEP
