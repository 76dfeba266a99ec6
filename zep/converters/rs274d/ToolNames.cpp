#include <zep/converters/rs274d/ToolNames.h>

#include <zep/converters/rs274d/Block.h>
#include <zep/framework/Ascii.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

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

/// Digits with nothing behind them that makes a size of them, as in "10MM", "1/4" and "0.5"; -1
/// where there are none.
qint64 TakeNumber(std::string_view& text) {
    qint64 number = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number < 0) return -1;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (text.empty()) return number;
    const bool isDecimal =
        (text[0] == '.' || text[0] == ',') && text.size() > 1 && IsDigit(text[1]);
    return isDecimal || IsLetter(text[0]) || text[0] == '/' ? -1 : number;
}

/// "TOOL 2: drill" and "TOOL 2 D=8" are of a list, "TOOL: 10 mm end mill" describes one.
bool IsListed(std::string_view behindNumber) {
    DropSeparators(behindNumber, " \t");
    if (behindNumber.empty()) return false;
    if (Separators.find(behindNumber[0]) != std::string_view::npos) return true;
    return TakeWord(behindNumber, "D") &&
           (TakeWord(behindNumber, "IA") || behindNumber.starts_with('='));
}

/// Up to the first character that is of no number; "8,5" is one, too.
double NumberAt(std::string_view text) {
    const std::size_t end = std::min(text.find_first_not_of("0123456789."), text.size());
    const bool isComma = end + 1 < text.size() && text[end] == ',' && IsDigit(text[end + 1]);
    if (!isComma) return end > 0 ? GetNumber(text.substr(0, end)) : 0;
    std::string digits(text.substr(0, text.find_first_not_of("0123456789", end + 1)));
    digits[end] = '.';
    return GetNumber(digits);
}

double StatedDiameter(std::string_view name) {
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (i > 0 && (IsLetter(name[i - 1]) || IsDigit(name[i - 1]))) continue;
        std::string_view rest = name.substr(i);
        if (!TakeWord(rest, "DIA.") && !TakeWord(rest, "DIA") && !TakeWord(rest, "D")) continue;
        DropSeparators(rest, " =:");
        if (const double value = NumberAt(rest); value > 0) return value;
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
    if (isTool && !IsListed(comment)) return;
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
