#include <zep/converters/rs274d/Macros.h>

#include <zep/converters/rs274d/Expression.h>

#include <algorithm>
#include <array>
#include <utility>

namespace ZEP {

namespace {

bool TakeWord(std::string_view& text, std::string_view word) {
    if (!text.starts_with(word)) return false;
    text.remove_prefix(word.size());
    return true;
}

/// The number of a loop, 1 to 3; 0 for what is none.
std::size_t LoopNumber(std::string_view text) {
    return text.size() == 1 && text[0] >= '1' && text[0] <= '3'
               ? static_cast<std::size_t>(text[0] - '0')
               : 0;
}

} // namespace

std::optional<TRS274DMacroBlock> MacroOf(const TRS274DBlock& block) {
    using enum TRS274DMacro;
    const auto& words = block.Words();
    std::string_view rest = block.Rest();
    if (words.size() > 1 || (words.size() == 1 && words[0].Letter != 'N')) return std::nullopt;
    if (TakeWord(rest, "GOTO")) return TRS274DMacroBlock{GoTo, {}, rest};
    if (TakeWord(rest, "END")) return TRS274DMacroBlock{End, {}, rest};
    if (TakeWord(rest, "DO")) return TRS274DMacroBlock{Loop, {}, rest};
    const bool isIf = TakeWord(rest, "IF");
    if ((!isIf && !TakeWord(rest, "WHILE")) || !rest.starts_with('[')) return std::nullopt;
    const std::string_view condition = CutRS274DValue(rest);
    if (isIf) {
        TakeWord(rest, "THEN");
        return TRS274DMacroBlock{If, condition, rest};
    }
    if (!TakeWord(rest, "DO")) return std::nullopt;
    return TRS274DMacroBlock{Loop, condition, rest};
}

TRS274DMacroLoops::TRS274DMacroLoops(std::string_view text) {
    using enum TRS274DMacro;
    std::array<int, Numbers> open{};
    open.fill(None);
    TLineSource lines(text);
    TRS274DBlock block;
    std::string_view line;
    for (TLineSource at = lines; lines.Next(line); at = lines) {
        // Both DO and END have one.
        if (line.size() > MaxRS274DLineLength || line.find_first_of("dD") == line.npos) continue;
        block.Read(line, true);
        const auto macro = MacroOf(block);
        const std::size_t number = macro ? LoopNumber(macro->Rest) : 0;
        if (number == 0 || (macro->Macro != Loop && macro->Macro != End)) continue;
        m_ends.push_back({line.data(), at, None});
        if (macro->Macro == Loop)
            open[number] = static_cast<int>(m_ends.size()) - 1;
        else if (const int begin = std::exchange(open[number], None); begin != None)
            Link(begin);
    }
}

void TRS274DMacroLoops::Link(int begin) {
    m_ends.back().Partner = begin;
    m_ends[static_cast<std::size_t>(begin)].Partner = static_cast<int>(m_ends.size()) - 1;
}

const TLineSource* TRS274DMacroLoops::PartnerOf(const char* line) const {
    const auto place = std::ranges::lower_bound(m_ends, line, {}, &TEnd::Line);
    if (place == m_ends.end() || place->Line != line || place->Partner == None) return nullptr;
    return &m_ends[static_cast<std::size_t>(place->Partner)].At;
}

int ArgumentOf(char letter, int nth) {
    constexpr int first = 4, step = 3, last = 33;
    //                               A  B  C  D  E  F  G  H   I  J  K  L  M
    constexpr int numbers[] = {1, 2, 3, 7,  8,  9,  0,  11, 0,  0,  0,  0,  13,
                               0, 0, 0, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26};
    //                               N  O  P  Q   R   S   T   U   V   W   X   Y   Z
    if (letter < 'A' || letter > 'Z') return 0;
    if (letter < 'I' || letter > 'K') return numbers[letter - 'A'];
    const int number = first + (letter - 'I') + step * nth;
    return number <= last ? number : 0;
}

} // namespace ZEP
