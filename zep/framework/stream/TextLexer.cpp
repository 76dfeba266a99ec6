#include <zep/framework/stream/TextLexer.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <zep/framework/Ascii.h>

namespace ZEP {

namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t LongestQuote = 40; // of what an error message shows

bool IsNameByte(char c) {
    return IsLetter(c) || IsDigit(c) || c == '_' || c == '.' ||
           static_cast<unsigned char>(c) >= 0x80;
}

int HexValue(char c) {
    if (IsDigit(c)) return c - '0';
    c = ToLower(c);
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

} // namespace

TTextLexer::TTextLexer(std::string_view text) : m_text(text) {
    if (text.starts_with(ByteOrderMark)) m_begin = ByteOrderMark.size();
    Restart();
}

void TTextLexer::Restart() {
    m_next = m_lineStart = m_begin;
    m_line = 1;
    m_lexeme.Kind = TLexemeKind::End;
}

bool TTextLexer::IsName(std::string_view word) const {
    return m_lexeme.Kind == TLexemeKind::Name && SameName(m_lexeme.Bytes, word);
}

void TTextLexer::SkipBlanks() {
    while (m_next < m_text.size() && static_cast<unsigned char>(m_text[m_next]) <= ' ') ++m_next;
}

char TTextLexer::Peek() {
    SkipBlanks();
    return At(m_next);
}

const TLexeme& TTextLexer::Next() {
    SkipBlanks();
    m_lexeme.Start = m_next;
    const char c = At(m_next);
    const bool isSigned = c == '-' || c == '+';
    if (m_next == m_text.size())
        m_lexeme.Kind = TLexemeKind::End;
    else if (IsDigit(c) || (isSigned && IsDigit(At(m_next + 1))))
        ReadNumber();
    else if (c == '$')
        ReadHexNumber();
    else if (isSigned && IsNameByte(At(m_next + 1)))
        ReadEndless();
    else if (IsNameByte(c))
        ReadName();
    else if (c == '\'' || c == '#')
        ReadString();
    else if (c == '{')
        ReadBinary();
    else {
        m_lexeme.Kind = TLexemeKind::Symbol;
        m_lexeme.Symbol = c;
        ++m_next;
    }
    return m_lexeme;
}

void TTextLexer::ReadName() {
    const std::size_t start = m_next;
    while (IsNameByte(At(m_next))) ++m_next;
    m_lexeme.Bytes = m_text.substr(start, m_next - start);
    if (!IsStreamName(m_lexeme.Bytes)) Fail(start, QStringLiteral("expected a name"));
    if (m_lexeme.Bytes.size() > MaxStreamName)
        Fail(start, QStringLiteral("a name is longer than %1 bytes").arg(MaxStreamName));
    m_lexeme.Kind = TLexemeKind::Name;
}

// --- numbers -----------------------------------------------------------------------------------

void TTextLexer::ReadNumber() {
    const char* const start = m_text.data() + m_next + (At(m_next) == '+' ? 1 : 0);
    const char* const end = m_text.data() + m_text.size();
    const auto isInteger = [](char c) { return IsDigit(c) || c == '-'; };
    const char* stop = std::find_if_not(start, end, isInteger);
    const bool isFloat = stop != end && (*stop == '.' || ToLower(*stop) == 'e');
    if (isFloat) return ReadFloat({start, static_cast<std::size_t>(end - start)});
    const auto result = std::from_chars(start, stop, m_lexeme.Integer);
    if (result.ec != std::errc() || result.ptr != stop || (stop != end && IsNameByte(*stop)))
        Fail(m_next, QStringLiteral("expected an integer of at most 64 bits"));
    m_lexeme.Kind = TLexemeKind::Integer;
    m_next = static_cast<std::size_t>(stop - m_text.data());
}

void TTextLexer::ReadFloat(std::string_view digits) {
    const char* const end = digits.data() + digits.size();
    auto result = std::from_chars(digits.data(), end, m_lexeme.Float);
    if (result.ec == std::errc::result_out_of_range) {
        // Beyond a double, as extended floats may be: the nearest one is zero or infinity.
        long double wide = 0;
        result = std::from_chars(digits.data(), end, wide);
        m_lexeme.Float = static_cast<double>(wide);
    }
    if (result.ec != std::errc()) Fail(m_next, QStringLiteral("expected a number within range"));
    m_next = static_cast<std::size_t>(result.ptr - m_text.data());
    if (IsNameByte(At(m_next))) Fail(m_lexeme.Start, QStringLiteral("expected a number"));
    m_lexeme.Kind = TLexemeKind::Float;
}

void TTextLexer::ReadHexNumber() {
    const char* const start = m_text.data() + m_next + 1;
    std::uint64_t value = 0;
    const auto result = std::from_chars(start, m_text.data() + m_text.size(), value, 16);
    if (result.ec != std::errc())
        Fail(m_next, QStringLiteral("expected hexadecimal digits, at most 16, after the $"));
    m_next = static_cast<std::size_t>(result.ptr - m_text.data());
    if (IsNameByte(At(m_next))) Fail(m_lexeme.Start, QStringLiteral("expected a number"));
    m_lexeme.Integer = static_cast<qint64>(value);
    m_lexeme.Kind = TLexemeKind::Integer;
}

void TTextLexer::ReadEndless() {
    const bool negative = At(m_next++) == '-';
    ReadName();
    using TLimits = std::numeric_limits<double>;
    if (SameName(m_lexeme.Bytes, "INF"))
        m_lexeme.Float = TLimits::infinity();
    else if (SameName(m_lexeme.Bytes, "NAN"))
        m_lexeme.Float = TLimits::quiet_NaN();
    else
        Fail(m_lexeme.Start, QStringLiteral("expected a number after the sign"));
    if (negative) m_lexeme.Float = -m_lexeme.Float;
    m_lexeme.Kind = TLexemeKind::Float;
}

// --- strings and bytes -------------------------------------------------------------------------

void TTextLexer::ReadString() {
    m_lexeme.Text.clear();
    for (;;) {
        if (At(m_next) == '\'')
            ReadQuoted();
        else if (At(m_next) == '#')
            ReadCharacterCode();
        else if (Peek() == '+') {
            ++m_next;
            if (const char next = Peek(); next != '\'' && next != '#')
                Fail(m_next, QStringLiteral("expected the next piece of a string after the +"));
        } else
            break;
    }
    m_lexeme.Kind = TLexemeKind::String;
}

void TTextLexer::ReadQuoted() {
    const std::size_t start = m_next++;
    std::size_t pieceStart = m_next;
    for (;; ++m_next) {
        const char c = At(m_next);
        if (m_next >= m_text.size() || c == '\n' || c == '\r')
            Fail(start, QStringLiteral("the string does not end on its line"));
        if (c != '\'') continue;
        const std::string_view piece = m_text.substr(pieceStart, m_next - pieceStart);
        m_lexeme.Text += QString::fromUtf8(piece);
        ++m_next;
        if (At(m_next) != '\'') return;
        pieceStart = m_next; // the second of two quotes stands for itself
    }
}

void TTextLexer::ReadCharacterCode() {
    const std::size_t start = m_next++;
    const int base = At(m_next) == '$' ? 16 : 10;
    if (base == 16) ++m_next;
    std::uint16_t code = 0;
    const char* const digits = m_text.data() + m_next;
    const auto result = std::from_chars(digits, m_text.data() + m_text.size(), code, base);
    if (result.ec != std::errc())
        Fail(start, QStringLiteral("expected a character's code from 0 to 65535 after the #"));
    m_lexeme.Text += QChar(code);
    m_next = static_cast<std::size_t>(result.ptr - m_text.data());
}

void TTextLexer::ReadBinary() {
    const std::size_t start = m_next++;
    m_binary.clear();
    while (Peek() != '}') {
        const int high = HexValue(At(m_next));
        const int low = high < 0 ? -1 : HexValue(At(m_next + 1));
        if (m_next >= m_text.size()) Fail(start, QStringLiteral("the binary data does not end"));
        if (low < 0) Fail(m_next, QStringLiteral("expected two hexadecimal digits or }"));
        m_binary.push_back(static_cast<char>(high * 16 + low));
        m_next += 2;
    }
    ++m_next;
    m_lexeme.Bytes = m_binary;
    m_lexeme.Kind = TLexemeKind::Binary;
}

// --- places ------------------------------------------------------------------------------------

TFilePlace TTextLexer::PlaceOf(std::size_t position) {
    if (position < m_lineStart) {
        m_lineStart = m_begin;
        m_line = 1;
    }
    const auto before = [&] { return m_text.substr(m_lineStart, position - m_lineStart); };
    // A line ends in LF, in CR LF or in CR.
    for (std::size_t end = before().find_first_of("\r\n"); end != std::string_view::npos;
         end = before().find_first_of("\r\n")) {
        const bool isPair = At(m_lineStart + end) == '\r' && At(m_lineStart + end + 1) == '\n';
        if (isPair && end + 1 == before().size()) break;
        m_lineStart += end + (isPair ? 2 : 1);
        ++m_line;
    }
    return {.Line = m_line, .Column = static_cast<qint64>(position - m_lineStart) + 1};
}

void TTextLexer::Fail(std::size_t position, const QString& message) {
    throw TStreamError(message, PlaceOf(position));
}

std::string_view TTextLexer::Described() const {
    if (m_lexeme.Kind == TLexemeKind::End) return "the end";
    return m_text.substr(m_lexeme.Start, std::min(LongestQuote, m_next - m_lexeme.Start));
}

void TTextLexer::FailExpected(const char* what) {
    Fail(m_lexeme.Start, QStringLiteral("expected %1, but found %2")
                             .arg(QLatin1StringView(what), QString::fromUtf8(Described())));
}

} // namespace ZEP
