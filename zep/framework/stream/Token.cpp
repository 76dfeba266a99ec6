#include <zep/framework/stream/Token.h>

#include <algorithm>

namespace ZEP {

namespace {

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

void CheckStructure(TTokenSource& source) {
    while (source.Next().Kind != TTokenKind::End) {
    }
}

void CopyStream(TTokenSource& source, TTokenSink& sink) {
    for (const TToken* token = &source.Next(); token->Kind != TTokenKind::End;
         token = &source.Next())
        sink.Write(*token);
    source.ExpectEnd();
}

bool IsStreamName(std::string_view name) {
    bool atStart = true;
    for (const char c : name) {
        if (atStart ? !IsLetter(c) : !IsLetter(c) && !IsDigit(c) && c != '.') return false;
        atStart = c == '.';
    }
    return !atStart;
}

bool SameName(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, Lower, Lower);
}

} // namespace ZEP
