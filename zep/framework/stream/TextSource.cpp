#include <zep/framework/stream/TextSource.h>

namespace ZEP {

const TToken& TTextSource::Next() {
    m_token.Name = {};
    if (m_parts.empty() && m_started) {
        m_start = m_lexer.Current().Start;
        return Emit(TTokenKind::End);
    }
    m_lexer.Next();
    m_start = m_lexer.Current().Start;
    if (m_parts.empty()) {
        m_started = true;
        return ReadComponent();
    }
    switch (m_parts.back()) {
    case TPart::Properties:
    case TPart::Children:
        return ReadInComponent();
    case TPart::Item:
        return ReadInItem();
    case TPart::Collection:
        return ReadInCollection();
    case TPart::Set:
        return ReadInSet();
    case TPart::List:
        break;
    }
    return ReadInList();
}

void TTextSource::Restart() {
    m_lexer.Restart();
    m_parts.clear();
    m_started = false;
    m_start = 0;
}

void TTextSource::ExpectEnd() {
    if (m_lexer.Next().Kind != TLexemeKind::End) m_lexer.FailExpected("the end of the stream");
}

// --- structure ---------------------------------------------------------------------------------

const TToken& TTextSource::Emit(TTokenKind kind) {
    m_token.Kind = kind;
    return m_token;
}

const TToken& TTextSource::Begin(TTokenKind kind, TPart part) {
    if (m_parts.size() >= MaxStreamDepth)
        m_lexer.Fail(m_start, QStringLiteral("nested deeper than %1 levels").arg(MaxStreamDepth));
    m_parts.push_back(part);
    return Emit(kind);
}

const TToken& TTextSource::EndPart(TTokenKind kind) {
    m_parts.pop_back();
    return Emit(kind);
}

// Any word may be a property's name; only what follows tells.
bool TTextSource::AtProperty() {
    return m_lexer.Current().Kind == TLexemeKind::Name && m_lexer.Peek() == '=';
}

bool TTextSource::AtComponent() {
    return m_lexer.IsName("object") || m_lexer.IsName("inherited") || m_lexer.IsName("inline");
}

std::string_view TTextSource::ReadName(const char* what) {
    if (m_lexer.Next().Kind != TLexemeKind::Name) m_lexer.FailExpected(what);
    return m_lexer.Current().Bytes;
}

void TTextSource::Expect(char symbol, const char* what) {
    m_lexer.Next();
    if (!m_lexer.IsSymbol(symbol)) m_lexer.FailExpected(what);
}

const TToken& TTextSource::ReadComponent() {
    if (!AtComponent()) m_lexer.FailExpected("object");
    m_token.Bytes = ReadName("a name or a class");
    if (m_lexer.Peek() == ':') {
        m_lexer.Next();
        m_token.Name = m_token.Bytes;
        m_token.Bytes = ReadName("a class");
    }
    if (m_token.Bytes.size() > MaxStreamClassName)
        m_lexer.Fail(
            m_lexer.Current().Start,
            QStringLiteral("a class name is longer than %1 bytes").arg(MaxStreamClassName));
    if (m_lexer.Peek() == '[') SkipPosition();
    return Begin(TTokenKind::BeginComponent, TPart::Properties);
}

void TTextSource::SkipPosition() {
    m_lexer.Next();
    if (m_lexer.Next().Kind != TLexemeKind::Integer) m_lexer.FailExpected("a position");
    m_token.Integer = m_lexer.Current().Integer;
    Expect(']', "]");
}

const TToken& TTextSource::ReadInComponent() {
    if (m_parts.back() == TPart::Properties && AtProperty()) return ReadProperty();
    if (m_lexer.IsName("end")) return EndPart(TTokenKind::EndComponent);
    if (!AtComponent())
        m_lexer.FailExpected(m_parts.back() == TPart::Children ? "object or end"
                                                               : "a property, object or end");
    m_parts.back() = TPart::Children;
    return ReadComponent();
}

const TToken& TTextSource::ReadInItem() {
    if (AtProperty()) return ReadProperty();
    if (!m_lexer.IsName("end")) m_lexer.FailExpected("a property or end");
    return EndPart(TTokenKind::EndItem);
}

const TToken& TTextSource::ReadInCollection() {
    if (m_lexer.IsSymbol('>')) return EndPart(TTokenKind::EndCollection);
    if (!m_lexer.IsName("item")) m_lexer.FailExpected("item or >");
    m_token.HasPosition = m_lexer.Peek() == '[';
    if (m_token.HasPosition) SkipPosition();
    return Begin(TTokenKind::BeginItem, TPart::Item);
}

const TToken& TTextSource::ReadInSet() {
    const bool isFirst = m_token.Kind == TTokenKind::BeginSet;
    if (m_lexer.IsSymbol(']')) return EndPart(TTokenKind::EndSet);
    if (!isFirst && !m_lexer.IsSymbol(',')) m_lexer.FailExpected(", or ]");
    if (!isFirst) m_lexer.Next();
    if (m_lexer.Current().Kind != TLexemeKind::Name) m_lexer.FailExpected("a member of a set");
    m_token.Bytes = m_lexer.Current().Bytes;
    return Emit(TTokenKind::Identifier);
}

const TToken& TTextSource::ReadInList() {
    if (m_lexer.IsSymbol(')')) return EndPart(TTokenKind::EndList);
    if (m_lexer.IsName("Null")) m_lexer.FailExpected("a value that a list can hold");
    return ReadValue();
}

// --- values ------------------------------------------------------------------------------------

const TToken& TTextSource::ReadProperty() {
    m_token.Name = m_lexer.Current().Bytes;
    m_lexer.Next();
    m_lexer.Next();
    return ReadValue();
}

const TToken& TTextSource::ReadValue() {
    const TLexeme& lexeme = m_lexer.Current();
    switch (lexeme.Kind) {
    case TLexemeKind::Integer:
        m_token.Integer = lexeme.Integer;
        return Emit(TTokenKind::Integer);
    case TLexemeKind::Float:
        m_token.Float = lexeme.Float;
        return Emit(TTokenKind::Float);
    case TLexemeKind::String:
        m_token.Text = lexeme.Text;
        return Emit(TTokenKind::String);
    case TLexemeKind::Binary:
        m_token.Bytes = lexeme.Bytes;
        return Emit(TTokenKind::Binary);
    case TLexemeKind::Name:
        return ReadWord();
    default:
        return ReadBracket();
    }
}

const TToken& TTextSource::ReadWord() {
    if (m_lexer.IsName("True")) return Emit(TTokenKind::True);
    if (m_lexer.IsName("False")) return Emit(TTokenKind::False);
    if (m_lexer.IsName("nil")) return Emit(TTokenKind::Nil);
    if (m_lexer.IsName("Null")) return Emit(TTokenKind::Null);
    m_token.Bytes = m_lexer.Current().Bytes;
    return Emit(TTokenKind::Identifier);
}

const TToken& TTextSource::ReadBracket() {
    if (m_lexer.IsSymbol('[')) return Begin(TTokenKind::BeginSet, TPart::Set);
    if (m_lexer.IsSymbol('(')) return Begin(TTokenKind::BeginList, TPart::List);
    if (m_lexer.IsSymbol('<')) return Begin(TTokenKind::BeginCollection, TPart::Collection);
    m_lexer.FailExpected("a value");
}

} // namespace ZEP
