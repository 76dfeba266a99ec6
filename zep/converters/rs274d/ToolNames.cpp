#include <zep/converters/rs274d/ToolNames.h>

#include <zep/converters/rs274d/Block.h>
#include <zep/framework/Ascii.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace ZEP {

namespace {

constexpr std::string_view Separators = " \t:=#.-|,";

bool TakeWord(std::string_view& text, std::string_view upperCase) {
    const bool isThere = text.size() >= upperCase.size() &&
                         std::ranges::equal(upperCase, text.substr(0, upperCase.size()),
                                            [](char upper, char c) { return upper == ToUpper(c); });
    if (isThere) text.remove_prefix(upperCase.size());
    return isThere;
}

void DropSeparators(std::string_view& text, std::string_view separators = Separators) {
    text.remove_prefix(std::min(text.find_first_not_of(separators), text.size()));
}

/// Digits that no letter or digit follows; -1 where there are none.
qint64 TakeNumber(std::string_view& text) {
    qint64 number = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number < 0) return -1;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return text.empty() || !IsLetter(text[0]) ? number : -1;
}

double StatedDiameter(std::string_view name) {
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (i > 0 && (IsLetter(name[i - 1]) || IsDigit(name[i - 1]))) continue;
        std::string_view rest = name.substr(i);
        if (!TakeWord(rest, "DIA.") && !TakeWord(rest, "DIA") && !TakeWord(rest, "D")) continue;
        DropSeparators(rest, " =:");
        rest = rest.substr(0, rest.find_first_not_of("0123456789."));
        const double value = rest.empty() ? 0 : GetNumber(rest);
        if (value > 0) return value;
    }
    return 0;
}

} // namespace

void TRS274DToolNames::Note(std::string_view comment, qint64 line) {
    if (comment.empty()) return;
    const bool isTool = TakeWord(comment, "TOOL");
    if (isTool) DropSeparators(comment, " :=#");
    m_last = comment;
    m_lastLine = line;
    if (!isTool && !TakeWord(comment, "T")) return;
    const qint64 number = TakeNumber(comment);
    DropSeparators(comment);
    if (number < 0 || comment.empty() || m_names.size() >= MaxRS274DTools) return;
    m_names.try_emplace(number, comment);
}

std::string_view TRS274DToolNames::NameOf(qint64 number, std::string_view ofBlock,
                                          qint64 line) const {
    if (!ofBlock.empty()) return ofBlock;
    const auto listed = m_names.find(number);
    if (listed != m_names.end()) return listed->second;
    return m_lastLine + 1 == line ? m_last : std::string_view();
}

double TRS274DToolNames::DiameterOf(qint64 number, std::string_view name) const {
    const double diameter = StatedDiameter(name);
    const auto listed = m_names.find(number);
    return diameter > 0 || listed == m_names.end() ? diameter : StatedDiameter(listed->second);
}

} // namespace ZEP
