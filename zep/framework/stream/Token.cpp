#include <zep/framework/stream/Token.h>

#include <zep/framework/Ascii.h>

#include <algorithm>

namespace ZEP {

namespace {

bool BeginsName(char c) {
    return IsLetter(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

} // namespace

int CheckStructure(TTokenSource& source) {
    int depth = 0;
    int deepest = 0;
    for (TTokenKind kind = source.Next().Kind; kind != TTokenKind::End; kind = source.Next().Kind) {
        if (kind == TTokenKind::BeginComponent) deepest = std::max(deepest, ++depth);
        if (kind == TTokenKind::EndComponent) --depth;
    }
    return deepest;
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
        if (atStart ? !BeginsName(c) : !BeginsName(c) && !IsDigit(c) && c != '.') return false;
        atStart = c == '.';
    }
    return !atStart;
}

bool SameName(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, ToLower, ToLower);
}

} // namespace ZEP
