#pragma once

#include <zep/framework/stream/Token.h>

#include <string>

namespace ZEP {

enum class TLexemeKind : unsigned char { Name, Integer, Float, String, Binary, Symbol, End };

/// One word, number, string or sign of the text form.
struct TLexeme {
    TLexemeKind Kind = TLexemeKind::End;
    char Symbol = 0;
    std::string_view Bytes; ///< the name as it stands, or what binary data holds
    qint64 Integer = 0;
    double Float = 0;
    QString Text;
    std::size_t Start = 0; ///< its first byte
};

/// Splits the text form of a stream. Raises `TStreamError` naming line and column.
class TTextLexer {
public:
    /// \param text  must outlive this
    explicit TTextLexer(std::string_view text);

    /// Goes on to the next lexeme, which stays valid until the one after it is asked for.
    const TLexeme& Next();
    [[nodiscard]] const TLexeme& Current() const { return m_lexeme; }
    /// Whether the current lexeme is this name, compared without case.
    [[nodiscard]] bool IsName(std::string_view word) const;
    [[nodiscard]] bool IsSymbol(char symbol) const {
        return m_lexeme.Kind == TLexemeKind::Symbol && m_lexeme.Symbol == symbol;
    }
    /// The first byte of what follows the current lexeme, blanks passed over; 0 at the end.
    [[nodiscard]] char Peek();
    void Restart();
    [[nodiscard]] std::size_t Size() const { return m_text.size(); }

    /// Line and column of a byte. Cheap where the places asked for mostly come in order.
    [[nodiscard]] TFilePlace PlaceOf(std::size_t position);
    [[noreturn]] void Fail(std::size_t position, const QString& message);
    /// Fails for want of `what` at the current lexeme.
    [[noreturn]] void FailExpected(const char* what);

private:
    void SkipBlanks();
    void ReadName();
    void ReadNumber();
    void ReadHexNumber();
    void ReadFloat(std::string_view digits);
    void ReadEndless();
    void ReadString();
    void ReadQuoted();
    void ReadCharacterCode();
    void ReadBinary();
    [[nodiscard]] char At(std::size_t position) const {
        return position < m_text.size() ? m_text[position] : '\0';
    }
    [[nodiscard]] std::string_view Described() const;

    std::string_view m_text;
    std::size_t m_next = 0;
    TLexeme m_lexeme;
    std::string m_binary;
    std::size_t m_begin = 0; // behind a byte order mark
    std::size_t m_lineStart = 0;
    qint64 m_line = 1;
};

} // namespace ZEP
