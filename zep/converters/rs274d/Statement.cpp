#include <zep/converters/rs274d/Statement.h>

#include <zep/framework/Ascii.h>

namespace ZEP {

namespace {

constexpr std::string_view WordsThatNoPathNeeds = "FSHDT";

/// "@" and "^" begin words, too: the polar ones.
bool BeginsWord(char c) {
    return IsLetter(c) || c == '@' || c == '^';
}

} // namespace

TRS274DFault TRS274DStatement::Read(TRS274DBlock& block) {
    m_settings.clear();
    m_droppedWords = m_refusedSettings = 0;
    std::string_view rest = block.Reopen();
    auto fault = TRS274DFault::None;
    while (!rest.empty() && fault == TRS274DFault::None)
        fault = rest[0] == '#'        ? ReadSetting(rest)
                : BeginsWord(rest[0]) ? ReadWord(block, rest)
                                      : TRS274DFault::Unreadable;
    if (fault != TRS274DFault::None) return fault;
    block.Complete();
    for (const TSetting& setting : m_settings)
        m_refusedSettings += !m_parameters.Set(setting.Parameter, setting.Value);
    return fault;
}

TRS274DFault TRS274DStatement::ReadSetting(std::string_view& rest) {
    TRS274DExpression text(rest, m_parameters);
    const TRS274DReference parameter = text.Reference();
    if (text.Fault() == TRS274DFault::None && !text.Take('=')) return TRS274DFault::Unreadable;
    const double value = text.Formula();
    m_settings.push_back({parameter, text.IsVacant() ? RS274DVacant : value});
    rest = text.Rest();
    return text.Fault();
}

TRS274DFault TRS274DStatement::ReadWord(TRS274DBlock& block, std::string_view& rest) {
    const std::string_view start = rest;
    TRS274DExpression text(rest.substr(1), m_parameters);
    const double value = text.Value();
    rest = text.Rest();
    if (text.Fault() == TRS274DFault::None) {
        // Macros leave words out by arguments that are not given.
        if (!text.IsVacant())
            block.Add({start[0], value, start.substr(0, start.size() - rest.size())});
        return TRS274DFault::None;
    }
    if (WordsThatNoPathNeeds.find(start[0]) == std::string_view::npos) return text.Fault();
    ++m_droppedWords;
    rest = start.substr(1);
    CutRS274DValue(rest);
    return TRS274DFault::None;
}

} // namespace ZEP
