#pragma once

#include <zep/converters/threeds/Chunks.h>
#include <zep/framework/Color.h>
#include <zep/scene/Geom.h>

#include <cmath>
#include <functional>
#include <optional>

namespace ZEP {

class TReadReport;

/// What the readers of all kinds of chunks share: children one by one, names, colours and numbers.
/// It writes the dump on the way, and reports the chunks that are passed over.
class TF3DSStream : public TF3DSCursor {
public:
    using TDump = std::function<void(std::string_view)>;

    /// \param source  of errors: who reads, and from which file
    /// \param dump    takes the dump; may be empty
    TF3DSStream(std::string_view bytes, const TErrorOrigin& source, TReadReport& report, TDump dump)
        : TF3DSCursor(bytes, source), m_report(report), m_dump(std::move(dump)) {}

    [[nodiscard]] TReadReport& Report() { return m_report; }
    /// How many numbers were none.
    [[nodiscard]] qint64 StrayNumbers() const { return m_strayNumbers; }

    /// \name Chunks
    /// @{
    [[nodiscard]] TF3DSChunk ReadMainHeader() { return Entered(EnterFile()); }
    [[nodiscard]] TF3DSChunk ReadChunk(const TF3DSChunk& parent) { return Entered(Enter(parent)); }
    /// Calls `read` with each child and goes behind it.
    template <class Read>
    void ReadChildren(const TF3DSChunk& parent, Read&& read) {
        while (IsWithin(parent)) {
            const TF3DSChunk child = ReadChunk(parent);
            read(child);
            Leave(child);
        }
    }
    /// \param parent  kind of the chunk that it is in
    void SkipChunk(const TF3DSChunk& chunk, std::uint16_t parent);
    /// Counts the chunk as passed over if it is of a kind that one would see.
    void ReportMissed(const TF3DSChunk& chunk, std::uint16_t parent);
    void Dump(std::string_view text) {
        if (m_dump) m_dump(text);
    }
    template <class... Values>
    void DumpValues(const char* format, Values... values) {
        if (m_dump) m_dump(QString::asprintf(format, values...).toStdString());
    }
    /// @}

    /// \name Values of a chunk
    /// @{
    [[nodiscard]] QString ReadName(const TF3DSChunk& chunk);
    [[nodiscard]] float ReadFloat(const TF3DSChunk& chunk);
    /// \param format  of its line in the dump
    [[nodiscard]] float ReadNumber(const TF3DSChunk& chunk, const char* format);
    [[nodiscard]] TGLArrayd3 ReadPoint(const TF3DSChunk& chunk, const char* format);
    /// A number that is none, or is endless, would spoil every box that it comes into: it counts as
    /// 0.
    [[nodiscard]] double Finite(float value) {
        if (std::isfinite(value)) return static_cast<double>(value);
        ++m_strayNumbers;
        return 0;
    }
    /// @}

    /// \name Values in chunks of their own
    /// @{
    [[nodiscard]] static bool IsColor(const TF3DSChunk& chunk);
    [[nodiscard]] TColor ReadColor(const TF3DSChunk& chunk);
    /// The colour of the first child that is one.
    [[nodiscard]] std::optional<TColor> ReadMaterialColorChunk(const TF3DSChunk& chunk);
    /// The first child that is a percentage.
    [[nodiscard]] std::optional<float> ReadPercentageChunk(const TF3DSChunk& chunk);
    /// @}

private:
    [[nodiscard]] TF3DSChunk Entered(const TF3DSChunk& chunk);
    [[nodiscard]] TColor ReadColorFChunk(const TF3DSChunk& chunk);
    [[nodiscard]] TColor ReadColor24Chunk(const TF3DSChunk& chunk);

    TReadReport& m_report;
    TDump m_dump;
    qint64 m_strayNumbers = 0;
};

} // namespace ZEP
