#include <zep/framework/stream/TextSink.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ZEP {

namespace {

constexpr qsizetype PieceLength = 64; // characters of a long string on each line
constexpr std::size_t BinaryLine = 32;

bool IsPlain(QChar c) {
    return c >= u' ' && c <= u'~';
}

} // namespace

void TTextSink::Write(const TToken& token) {
    switch (token.Kind) {
    case TTokenKind::BeginComponent:
        return BeginComponent(token);
    case TTokenKind::BeginItem:
        return BeginItem(token);
    case TTokenKind::EndComponent:
    case TTokenKind::EndItem:
        return End("end");
    case TTokenKind::EndList:
        return End(")");
    case TTokenKind::EndCollection:
        return End(">");
    case TTokenKind::EndSet:
        m_inSet = false;
        return m_output.Append(']');
    case TTokenKind::End:
        return;
    default:
        if (m_inSet) return WriteMember(token.Bytes);
        NewLine();
        m_output.Append(token.Name);
        WriteValue(token);
    }
}

// --- structure ---------------------------------------------------------------------------------

// Lines but the first begin with their line break, so that > and ) can end the one before.
void TTextSink::NewLine() {
    static constexpr std::string_view Blanks = "                                ";
    m_output.Append('\n');
    for (std::size_t left = 2 * m_level; left > 0;) {
        const std::size_t count = std::min(left, Blanks.size());
        m_output.Append(Blanks.substr(0, count));
        left -= count;
    }
}

void TTextSink::BeginComponent(const TToken& token) {
    if (m_level > 0) NewLine();
    m_output.Append("object ");
    if (!token.Name.empty()) {
        m_output.Append(token.Name);
        m_output.Append(": ");
    }
    m_output.Append(token.Bytes);
    ++m_level;
}

void TTextSink::BeginItem(const TToken& token) {
    NewLine();
    m_output.Append("item");
    if (token.HasPosition) {
        m_output.Append(" [");
        m_output.AppendNumber(token.Integer);
        m_output.Append(']');
    }
    ++m_level;
}

void TTextSink::Begin(char bracket) {
    m_output.Append(bracket);
    ++m_level;
}

void TTextSink::End(std::string_view closing) {
    --m_level;
    if (closing == "end") NewLine();
    m_output.Append(closing);
    if (m_level > 0) return;
    m_output.Append('\n');
    m_output.Flush();
}

void TTextSink::WriteMember(std::string_view name) {
    if (!std::exchange(m_setIsEmpty, false)) m_output.Append(", ");
    m_output.Append(name);
}

// --- values ------------------------------------------------------------------------------------

void TTextSink::WriteValue(const TToken& token) {
    const bool isLong = token.Kind == TTokenKind::String && token.Text.size() > PieceLength;
    if (!token.Name.empty()) m_output.Append(isLong ? " =" : " = ");
    switch (token.Kind) {
    case TTokenKind::Null:
        return m_output.Append("Null");
    case TTokenKind::Nil:
        return m_output.Append("nil");
    case TTokenKind::False:
        return m_output.Append("False");
    case TTokenKind::True:
        return m_output.Append("True");
    case TTokenKind::Integer:
        return m_output.AppendNumber(token.Integer);
    case TTokenKind::Float:
        return WriteFloat(token.Float);
    case TTokenKind::Identifier:
        return m_output.Append(token.Bytes);
    case TTokenKind::String:
        return WriteString(token.Text);
    case TTokenKind::Binary:
        return WriteBinary(token.Bytes);
    case TTokenKind::BeginSet:
        m_inSet = m_setIsEmpty = true;
        return m_output.Append('[');
    case TTokenKind::BeginList:
        return Begin('(');
    default:
        return Begin('<');
    }
}

void TTextSink::WriteFloat(double value) {
    if (!std::isfinite(value)) {
        m_output.Append(std::signbit(value) ? '-' : '+');
        return m_output.Append(std::isnan(value) ? "NAN" : "INF");
    }
    char digits[32];
    const auto result = std::to_chars(digits, digits + sizeof digits, value);
    const std::string_view text(digits, static_cast<std::size_t>(result.ptr - digits));
    m_output.Append(text);
    if (text.find_first_of(".e") == std::string_view::npos) m_output.Append(".0");
}

void TTextSink::WriteString(QStringView text) {
    if (text.size() <= PieceLength) return WritePiece(text);
    ++m_level;
    for (qsizetype start = 0; start < text.size(); start += PieceLength) {
        if (start > 0) m_output.Append(" +");
        NewLine();
        WritePiece(text.sliced(start, std::min(PieceLength, text.size() - start)));
    }
    --m_level;
}

void TTextSink::WritePiece(QStringView text) {
    bool isQuoted = text.empty();
    if (isQuoted) m_output.Append('\'');
    for (const QChar c : text) {
        if (IsPlain(c) != isQuoted) {
            m_output.Append('\'');
            isQuoted = !isQuoted;
        }
        if (isQuoted) {
            if (c == u'\'') m_output.Append('\'');
            m_output.Append(static_cast<char>(c.unicode()));
        } else {
            m_output.Append('#');
            m_output.AppendNumber(static_cast<unsigned>(c.unicode()));
        }
    }
    if (isQuoted) m_output.Append('\'');
}

void TTextSink::WriteBinary(std::string_view bytes) {
    static constexpr char Digits[] = "0123456789ABCDEF";
    m_output.Append('{');
    ++m_level;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i % BinaryLine == 0) NewLine();
        const auto byte = static_cast<unsigned char>(bytes[i]);
        const char pair[]{Digits[byte >> 4], Digits[byte & 0xF]};
        m_output.Append({pair, sizeof pair});
    }
    --m_level;
    m_output.Append('}');
}

} // namespace ZEP
