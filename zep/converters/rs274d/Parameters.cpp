#include <zep/converters/rs274d/Parameters.h>

#include <zep/framework/Ascii.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr std::string_view CallLevel = "<_CALL_LEVEL>";

std::size_t CostOf(std::string_view name) {
    constexpr std::size_t charactersOfName = 64;
    return 1 + name.size() / charactersOfName;
}

/// Such names are there for all subprograms, and for the machine.
bool IsGlobal(std::string_view name) {
    return name.starts_with("<_");
}

} // namespace

TRS274DParameters::TRS274DParameters(TRS274DMachineValues& machine, TRS274DDialect dialect)
    : m_machine(machine), m_isFanuc(dialect == TRS274DDialect::Fanuc),
      m_numbers(static_cast<std::size_t>(FirstOfMachine()), RS274DVacant), m_localNumbers(1),
      m_localNames(1) {
    m_localNumbers[0].fill(RS274DVacant);
}

bool TRS274DParameters::Get(const TRS274DReference& reference) {
    m_gotVacant = false;
    const bool isThere =
        reference.Name.empty() ? GetNumber(reference.Number) : GetName(reference.Name);
    return isThere || Miss(reference);
}

bool TRS274DParameters::Miss(const TRS274DReference& reference) {
    constexpr std::size_t shown = 40;
    m_missing = '#' + (reference.Name.empty() ? std::to_string(reference.Number)
                                              : std::string(reference.Name.substr(0, shown)));
    std::ranges::transform(m_missing, m_missing.begin(), ToLower);
    return false;
}

bool TRS274DParameters::GetNumber(int number) {
    if (m_isFanuc && number == 0) {
        m_gotVacant = true;
        m_got = 0;
        return true;
    }
    if (number < 1 || number > Last()) return false;
    if (number >= FirstOfMachine()) {
        const auto value = m_machine.MachineValue(number);
        m_readUnknown |= !value;
        m_got = value.value_or(0);
        return true;
    }
    const auto index = static_cast<std::size_t>(number);
    const bool isLocal = number <= LocalCount();
    const double value = isLocal ? m_localNumbers.back()[index - 1] : m_numbers[index];
    const bool isUnset = std::isnan(value);
    m_gotVacant = isUnset && m_isFanuc;
    m_readUnset |= isUnset && !(m_isFanuc && isLocal); // macros ask whether an argument is given
    m_got = isUnset ? 0 : value;
    return true;
}

bool TRS274DParameters::GetName(std::string_view name) {
    const TNames& names = NamesFor(name);
    const auto place = names.find(name);
    if (place != names.end()) {
        m_got = place->second;
        return true;
    }
    if (!IsGlobal(name)) return false;
    if (name == CallLevel) return m_got = static_cast<double>(m_localNames.size() - 1), true;
    const auto value = m_machine.MachineValue(name);
    m_got = value.value_or(0);
    return value.has_value();
}

bool TRS274DParameters::Has(const TRS274DReference& reference) {
    if (!reference.Name.empty()) return GetName(reference.Name);
    return reference.Number >= 1 && reference.Number <= Last();
}

bool TRS274DParameters::Set(const TRS274DReference& reference, double value) {
    if (!reference.Name.empty()) {
        if (IsGlobal(reference.Name) && IsOfMachine(reference.Name)) return false;
        SetName(reference.Name, value);
        return true;
    }
    const int number = reference.Number;
    if (number < 1 || number > Last()) return false;
    if (number >= FirstOfMachine()) return m_machine.SetMachineValue(number, value);
    const auto index = static_cast<std::size_t>(number);
    (number <= LocalCount() ? m_localNumbers.back()[index - 1] : m_numbers[index]) = value;
    return true;
}

bool TRS274DParameters::IsOfMachine(std::string_view name) const {
    return name == CallLevel || m_machine.MachineValue(name).has_value();
}

TRS274DParameters::TNames& TRS274DParameters::NamesFor(std::string_view name) {
    return IsGlobal(name) ? m_names : m_localNames.back();
}

void TRS274DParameters::SetName(std::string_view name, double value) {
    TNames& names = NamesFor(name);
    const auto place = names.find(name);
    if (place != names.end()) {
        place->second = value;
    } else if (!IsFull()) {
        names.emplace(name, value);
        m_nameCount += CostOf(name);
    }
}

void TRS274DParameters::EnterSub(std::span<const double> arguments) {
    std::ranges::copy(arguments, m_localNumbers.emplace_back().begin());
    EnterProgram();
}

void TRS274DParameters::LeaveSub() {
    m_localNumbers.pop_back();
    LeaveProgram();
}

void TRS274DParameters::LeaveProgram() {
    for (const auto& [name, value] : m_localNames.back()) m_nameCount -= CostOf(name);
    m_localNames.pop_back();
}

void TRS274DParameters::SetReturned(std::optional<double> value) {
    SetName("<_VALUE>", value.value_or(0));
    SetName("<_VALUE_RETURNED>", value.has_value());
}

} // namespace ZEP
