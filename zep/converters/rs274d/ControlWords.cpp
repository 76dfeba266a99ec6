#include <zep/converters/rs274d/ControlWords.h>

#include <zep/converters/rs274d/Expression.h>
#include <zep/framework/Ascii.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace ZEP {

namespace {

struct TKeyword {
    std::string_view Text;
    TRS274DControl Control;
};

constexpr auto Keywords = [] {
    using enum TRS274DControl;
    return std::to_array<TKeyword>({
        {"", TRS274DControl::Label},
        {"SUB", Sub},
        {"ENDSUB", EndSub},
        {"CALL", Call},
        {"RETURN", Return},
        {"IF", If},
        {"ELSEIF", ElseIf},
        {"ELSE", Else},
        {"ENDIF", EndIf},
        {"WHILE", While},
        {"DO", Do},
        {"ENDWHILE", EndWhile},
        {"BREAK", Break},
        {"CONTINUE", Continue},
        {"REPEAT", Repeat},
        {"ENDREPEAT", EndRepeat},
    });
}();

/// Whether a look at the words of the line is worth it.
bool MayHoldControl(std::string_view line) {
    const std::size_t first = line.find_first_not_of(" \t");
    if (first == std::string_view::npos) return false;
    const char c = ToUpper(line[first]);
    if (c == 'O') return true;
    const bool isBehind = c == 'N' || c == '(' || c == '%';
    return isBehind && line.find_first_of("oO", first) != std::string_view::npos;
}

/// What ends with such a word begins with the other one.
TRS274DControl BeginOf(TRS274DControl end) {
    using enum TRS274DControl;
    switch (end) {
    case EndIf:
        return If;
    case EndWhile:
        return While;
    case EndRepeat:
        return Repeat;
    default:
        return Do;
    }
}

} // namespace

std::optional<TRS274DControlBlock> ControlOf(const TRS274DBlock& block) {
    const auto& words = block.Words();
    const std::size_t behind = !words.empty() && words[0].Letter == 'N' ? 1 : 0;
    std::string_view rest = block.Rest();
    TRS274DControlBlock result;
    const bool isNumbered = words.size() > behind && words[behind].Letter == 'O';
    if (isNumbered && (words.size() == behind + 1 || rest.empty())) {
        result.Label = words[behind].Text.substr(1);
    } else if (words.size() == behind && rest.starts_with('O')) {
        rest.remove_prefix(1);
        if (rest.starts_with('<')) {
            result.Label = rest.substr(0, std::min(rest.find('>'), rest.size() - 1) + 1);
            rest.remove_prefix(result.Label.size());
        } else {
            result.Label = CutRS274DValue(rest);
        }
    } else {
        return std::nullopt;
    }
    const auto isLetter = [](char c) { return IsLetter(c); };
    const auto size = std::find_if_not(rest.begin(), rest.end(), isLetter) - rest.begin();
    const std::string_view text = rest.substr(0, static_cast<std::size_t>(size));
    const auto* keyword = std::ranges::find(Keywords, text, &TKeyword::Text);
    result.Arguments = rest.substr(text.size());
    const bool isKnown = keyword != Keywords.end() && (!text.empty() || rest.empty());
    if (isKnown) result.Control = keyword->Control;
    return result;
}

std::string RS274DLabelText(std::string_view label) {
    const std::size_t digits = label.find_first_not_of('0');
    if (label.empty() || !IsDigit(label[0])) return std::string(label);
    return std::string(digits == std::string_view::npos ? "0" : label.substr(digits));
}

std::string RS274DLabelOf(double number) {
    return std::to_string(std::llrint(number));
}

TRS274DControlWords::TRS274DControlWords(std::string_view text) {
    TLineSource lines(text);
    TRS274DBlock block;
    std::string_view line;
    for (TLineSource at = lines; lines.Next(line); at = lines) {
        if (line.size() > MaxRS274DLineLength || !MayHoldControl(line)) continue;
        block.Read(line, true);
        const auto control = ControlOf(block);
        if (!control) continue;
        m_words.push_back({control->Control, line.data(), at});
        Link(static_cast<int>(m_words.size()) - 1, m_labels[RS274DLabelText(control->Label)]);
    }
}

void TRS274DControlWords::Link(int index, TLabel& label) {
    using enum TRS274DControl;
    TRS274DControlWord& word = At(index);
    if (word.Control == While && FindOpen(label, Do)) word.Control = EndDo;
    switch (word.Control) {
    case TRS274DControl::Label:
    case Sub:
    case EndSub:
        return LinkSubprogram(index, label);
    case If:
    case While:
    case Do:
    case Repeat:
        label.Open.push_back({index, index});
        return;
    case ElseIf:
    case Else:
        return LinkBranch(index, label);
    case EndIf:
    case EndWhile:
    case EndDo:
    case EndRepeat:
        return LinkEnd(index, label);
    case Break:
    case Continue:
        for (const TRS274DControl loop : {While, Do, Repeat})
            if (const TOpen* open = FindOpen(label, loop)) word.Partner = open->First;
        return;
    default:
        return;
    }
}

void TRS274DControlWords::LinkSubprogram(int index, TLabel& label) {
    using enum TRS274DControl;
    const TRS274DControl control = At(index).Control;
    const bool endsSub = control == EndSub && m_subLabel == &label;
    if (endsSub) At(m_floor).End = index;
    m_floor = index;
    m_subLabel = control == Sub ? &label : nullptr;
    if (control == EndSub) return;
    const int known = label.Subprogram;
    if (known < 0 || (control == Sub && At(known).Control != Sub)) label.Subprogram = index;
}

void TRS274DControlWords::LinkBranch(int index, TLabel& label) {
    using enum TRS274DControl;
    TOpen* open = FindOpen(label, If);
    if (!open) return;
    At(open->Last).Partner = index;
    open->Last = index;
}

void TRS274DControlWords::LinkEnd(int index, TLabel& label) {
    TOpen* open = FindOpen(label, BeginOf(At(index).Control));
    if (!open) return;
    At(index).Partner = open->First;
    At(open->Last).Partner = index;
    for (int i = open->First; i != index; i = At(i).Partner) At(i).End = index;
    label.Open.pop_back();
}

TRS274DControlWords::TOpen* TRS274DControlWords::FindOpen(TLabel& label, TRS274DControl begin) {
    if (label.Open.empty() || label.Open.back().First < m_floor) return nullptr;
    return At(label.Open.back().First).Control == begin ? &label.Open.back() : nullptr;
}

int TRS274DControlWords::IndexOf(const char* line) const {
    const auto place = std::ranges::lower_bound(m_words, line, {}, &TRS274DControlWord::Line);
    return place != m_words.end() && place->Line == line ? static_cast<int>(place - m_words.begin())
                                                         : TRS274DControlWord::None;
}

const TRS274DControlWord* TRS274DControlWords::FindSubprogram(const std::string& label) const {
    const auto place = m_labels.find(label);
    if (place == m_labels.end() || place->second.Subprogram < 0) return nullptr;
    return &(*this)[place->second.Subprogram];
}

} // namespace ZEP
