#include <zep/converters/dxf/Tags.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

namespace ZEP {

namespace {

/// A drawing has seven.
constexpr std::size_t MaxSections = 1000;

/// No code that means anything is longer.
constexpr std::ptrdiff_t MaxCodeDigits = 5;

constexpr bool IsBlank(char c) {
    return static_cast<unsigned char>(c) <= ' ';
}

std::string_view WithoutBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

/// Not "inf" and "nan", which `from_chars` takes for numbers.
bool BeginsNumber(std::string_view text) {
    const std::size_t sign = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    return text.size() > sign && ((text[sign] >= '0' && text[sign] <= '9') || text[sign] == '.');
}

/// \return 0, or the number of the first wrong character
template <class Number>
std::size_t Convert(std::string_view text, Number& value) {
    value = 0;
    text = WithoutBlanks(text);
    if (!BeginsNumber(text)) return 1;
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    const auto result = std::from_chars(begin + (*begin == '+' ? 1 : 0), end, value);
    if (result.ec == std::errc() && result.ptr == end) return 0;
    value = 0;
    return static_cast<std::size_t>(result.ptr - begin) + 1;
}

bool IsText(int code) {
    return code == 1 || code == 3;
}

template <class Number>
Number Converted(std::string_view text) {
    Number value = 0;
    Convert(text, value);
    return value;
}

} // namespace

double DXFNumber(std::string_view value) {
    return Converted<double>(value);
}

int DXFInteger(std::string_view value) {
    return Converted<int>(value);
}

bool IsDXFSectionMark(std::string_view value) {
    return value == "ENDSEC" || value == "SECTION" || value == "EOF";
}

TDXFTags::TDXFTags(std::string_view text, bool lenient)
    : m_longestValue(lenient ? std::numeric_limits<std::size_t>::max() : MaxDXFLineLength),
      m_lenient(lenient) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    m_begin = m_next = text.data();
    m_end = m_begin + text.size();
    const std::size_t lineEnd = text.find('\r');
    m_doubleReturns =
        lenient && lineEnd != std::string_view::npos && text.substr(lineEnd).starts_with("\r\r\n");
}

// A loop: lines are so short that looking for their ends by `memchr` takes twice the time.
bool TDXFTags::NextLine(std::string_view& line) {
    const char* place = m_next;
    if (place == m_end) return false;
    while (place != m_end &&
           (static_cast<unsigned char>(*place) > '\r' || (*place != '\n' && *place != '\r')))
        ++place;
    line = {m_next, static_cast<std::size_t>(place - m_next)};
    if (place != m_end && *place++ == '\r') {
        if (m_doubleReturns && m_end - place > 1 && place[0] == '\r' && place[1] == '\n') ++place;
        if (place != m_end && *place == '\n') ++place;
    }
    m_next = place;
    ++m_line;
    return true;
}

/// A code as nearly all are written: blanks, digits, LF or CR LF. A third of the time of all other
/// ways to read it.
bool TDXFTags::NextCode() {
    const char* place = m_next;
    while (place != m_end && *place == ' ') ++place;
    const char* const digits = place;
    int code = 0;
    while (place != m_end && *place >= '0' && *place <= '9' && place - digits < MaxCodeDigits)
        code = code * 10 + (*place++ - '0');
    const bool isShort = place != digits && m_end - place > 1;
    if (isShort && *place == '\r' && place[1] == '\n') ++place;
    if (isShort && *place == '\n') {
        m_code = code;
        m_next = place + 1;
        ++m_line;
        return true;
    }
    std::string_view line;
    return NextLine(line) && Convert(line, m_code) == 0 && m_code >= 0;
}

int TDXFTags::NextGroupCode() {
    if (m_pushedBack) {
        m_pushedBack = false;
        return m_code;
    }
    if (m_unasked >= ProgressStep) Ask();
    const char* const begin = m_next;
    m_pairPosition = {static_cast<std::size_t>(begin - m_begin), m_line};
    m_pairLine = m_line + 1;
    if (m_code != EndOfTags) m_isEnded = m_code == 0 && m_value == "EOF";
    if (!NextCode() || !NextLine(m_value)) return End();
    m_unasked += static_cast<std::size_t>(m_next - begin);
    m_value = m_value.substr(0, m_longestValue);
    if (m_lenient && !IsText(m_code)) m_value = WithoutBlanks(m_value);
    return m_code;
}

// What stands behind a code 0 "EOF" is nobody's concern.
int TDXFTags::End() {
    const std::string_view rest = TextFrom(m_pairPosition);
    if (!m_isEnded && !std::all_of(rest.begin(), rest.end(), IsBlank)) m_badLine = m_pairLine;
    m_code = EndOfTags;
    m_value = {};
    m_next = m_end;
    return m_code;
}

void TDXFTags::Ask() {
    m_unasked = 0;
    m_done = std::max(m_done, static_cast<std::size_t>(m_next - m_begin));
    const auto done = static_cast<qint64>(m_done) + m_repeated;
    if (!m_progress || m_progress(done, m_end - m_begin + m_repeats)) return;
    m_cancelled = true;
    m_sections.clear();
    m_end = m_next = m_begin;
}

double TDXFTags::ValDbl() {
    double value = 0;
    m_errorPosition = Convert(m_value, value);
    return value;
}

int TDXFTags::ValInt() {
    int value = 0;
    m_errorPosition = Convert(m_value, value);
    return value;
}

bool TDXFTags::code_and_string(int& code, std::string_view& value) {
    code = NextGroupCode();
    value = m_value;
    return code >= 0;
}

bool TDXFTags::code_and_double(int& code, double& value) {
    code = NextGroupCode();
    value = ValDbl();
    return code >= 0;
}

void TDXFTags::read_2Dpoint(TGLArrayd3& point) {
    int code = 0;
    double value = 0;
    while (code_and_double(code, value))
        if (code == 10) {
            point[0] = value;
            if (code_and_double(code, value)) point[1] = value;
            return;
        }
}

void TDXFTags::go_back_to_last(int code, std::string_view value) {
    m_code = code;
    m_value = value;
    m_pushedBack = true;
}

std::string_view TDXFTags::TextFrom(const TDXFPosition& position) const {
    const std::size_t size = static_cast<std::size_t>(m_end - m_begin);
    const std::size_t offset = std::min(position.Offset, size);
    return {m_begin + offset, size - offset};
}

TDXFPosition TDXFTags::Position() const {
    if (m_pushedBack) return m_pairPosition;
    return {static_cast<std::size_t>(m_next - m_begin), m_line};
}

void TDXFTags::Goto(const TDXFPosition& position) {
    m_next = TextFrom(position).data();
    m_line = position.Line;
    m_pushedBack = false;
    m_isEnded = false;
    m_code = EndOfTags;
    m_value = {};
}

// --- sections ----------------------------------------------------------------------------------

/// Reads on from where searches have come to, up to the next section; false where there is none.
bool TDXFTags::FindNextSection() {
    Goto(m_searched);
    std::optional<std::size_t> start;
    while (NextGroupCode() >= 0) {
        if (start && m_code == 2) {
            m_searched = Position();
            m_sections.push_back({m_value, *start, m_searched});
            return true;
        }
        start.reset();
        if (m_code == 0 && m_value == "SECTION") start = m_pairPosition.Offset;
        m_hasEnd = m_hasEnd || (m_code == 0 && m_value == "EOF");
    }
    m_searched = Position();
    return false;
}

const TDXFTags::TSection* TDXFTags::FindSection(std::string_view name, std::size_t offset) {
    const auto fits = [&](const TSection& section) {
        return section.Start >= offset && section.Name == name;
    };
    const auto known = std::find_if(m_sections.begin(), m_sections.end(), fits);
    if (known != m_sections.end()) return &*known;
    while (m_sections.size() < MaxSections && FindNextSection())
        if (fits(m_sections.back())) return &m_sections.back();
    return nullptr;
}

bool TDXFTags::skip_upto_section(std::string_view name) {
    const TSection* section = FindSection(name, Position().Offset);
    if (section)
        Goto(section->Begin);
    else
        m_next = m_end;
    m_pushedBack = false;
    return section != nullptr;
}

void TDXFTags::PassSearched() {
    const TDXFPosition here = Position();
    if (here.Offset > m_searched.Offset) m_searched = here;
}

bool TDXFTags::IsDrawing() {
    const TDXFPosition back = Position();
    const bool isDrawing = !m_sections.empty() || FindNextSection() || m_hasEnd;
    Goto(back);
    return isDrawing;
}

} // namespace ZEP
