#pragma once

#include <zep/framework/stream/TextLexer.h>

#include <vector>

namespace ZEP {

/// Reads the text form, which begins with `object`.
class TTextSource : public TTokenSource {
public:
    /// \param text  must outlive this; UTF-8
    explicit TTextSource(std::string_view text) : m_lexer(text) {}

    const TToken& Next() override;
    void Restart() override;
    [[nodiscard]] TFilePlace Where() override { return m_lexer.PlaceOf(m_start); }
    [[nodiscard]] std::size_t Size() const override { return m_lexer.Size(); }
    void ExpectEnd() override;

private:
    enum class TPart : unsigned char { Properties, Children, List, Set, Collection, Item };

    const TToken& Emit(TTokenKind kind);
    const TToken& Begin(TTokenKind kind, TPart part);
    const TToken& EndPart(TTokenKind kind);
    const TToken& ReadComponent();
    const TToken& ReadInComponent();
    const TToken& ReadInItem();
    const TToken& ReadInCollection();
    const TToken& ReadInSet();
    const TToken& ReadInList();
    const TToken& ReadProperty();
    const TToken& ReadValue();
    const TToken& ReadWord();
    const TToken& ReadBracket();

    [[nodiscard]] bool AtComponent();
    [[nodiscard]] bool AtProperty();
    [[nodiscard]] std::string_view ReadName(const char* what);
    void SkipPosition();
    void Expect(char symbol, const char* what);

    TTextLexer m_lexer;
    std::size_t m_start = 0;
    bool m_started = false;
    std::vector<TPart> m_parts;
    TToken m_token;
};

} // namespace ZEP
