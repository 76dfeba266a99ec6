#pragma once

#include <zep/Export.h>

#include <QtGlobal>

#include <cstddef>
#include <string_view>

namespace ZEP {

/// Hands out the lines of a text in memory (a buffer, or a file that was read) as views into it;
/// nothing is copied. A line ends with LF, CR LF, CR CR LF or a lone CR, the last one also without
/// any. A byte order mark (UTF-8) in front is passed over. Linear in the size of the text for any
/// mix of line ends.
class ZEP_CORE_EXPORT TLineSource {
public:
    /// \param text  must outlive the source
    explicit TLineSource(std::string_view text);

    /// Takes the next line, without its end; false when there is none.
    bool Next(std::string_view& line);

    /// Number of the line that was handed out last: 1 for the first, 0 before it.
    [[nodiscard]] qint64 LineNumber() const { return m_lineNumber; }
    /// Bytes taken so far.
    [[nodiscard]] std::size_t Position() const { return m_position; }

private:
    [[nodiscard]] std::size_t EndLength(std::size_t end) const;

    std::string_view m_text;
    std::size_t m_position = 0;
    std::size_t m_lineFeed = 0;
    qint64 m_lineNumber = 0;
};

} // namespace ZEP
