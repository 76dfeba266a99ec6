#include <zep/converters/LineSource.h>

#include <algorithm>

namespace ZEP {

TLineSource::TLineSource(std::string_view text) : m_text(text) {
    if (m_text.starts_with("\xEF\xBB\xBF")) m_text.remove_prefix(3);
    m_lineFeed = std::min(m_text.find('\n'), m_text.size());
}

bool TLineSource::Next(std::string_view& line) {
    if (m_position >= m_text.size()) return false;
    // Kept from line to line: a text without any line feed is searched for it once.
    if (m_lineFeed < m_position)
        m_lineFeed = std::min(m_text.find('\n', m_position), m_text.size());
    line = m_text.substr(m_position, m_lineFeed - m_position);
    line = line.substr(0, line.find('\r'));
    const std::size_t end = m_position + line.size();
    m_position = end + EndLength(end);
    ++m_lineNumber;
    return true;
}

std::size_t TLineSource::EndLength(std::size_t end) const {
    const std::string_view rest = m_text.substr(end, 3);
    if (rest == "\r\r\n") return 3;
    if (rest.starts_with("\r\n")) return 2;
    return rest.empty() ? 0 : 1;
}

} // namespace ZEP
