#include <zep/converters/rs274d/Parameters.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ZEP {

namespace {

constexpr double NotSet = std::numeric_limits<double>::quiet_NaN();

constexpr std::string_view CallLevel = "<_CALL_LEVEL>";

/// Such names are there for all subprograms, and for the machine.
bool IsGlobal(std::string_view name) {
    return name.starts_with("<_");
}

} // namespace

TRS274DParameters::TRS274DParameters(TRS274DMachineValues& machine)
    : m_machine(machine), m_numbers(FirstOfMachine, NotSet), m_localNumbers(1), m_localNames(1) {
    m_localNumbers[0].fill(NotSet);
}

bool TRS274DParameters::Get(const TRS274DReference& reference) {
    return reference.Name.empty() ? GetNumber(reference.Number) : GetName(reference.Name);
}

bool TRS274DParameters::GetNumber(int number) {
    if (number < 1 || number > Last) return false;
    if (number >= FirstOfMachine) {
        const auto value = m_machine.MachineValue(number);
        m_readUnknown |= !value;
        m_got = value.value_or(0);
        return true;
    }
    const auto index = static_cast<std::size_t>(number);
    const double value = number <= LocalCount ? m_localNumbers.back()[index - 1] : m_numbers[index];
    m_readUnset |= std::isnan(value);
    m_got = std::isnan(value) ? 0 : value;
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
    return reference.Number >= 1 && reference.Number <= Last;
}

bool TRS274DParameters::Set(const TRS274DReference& reference, double value) {
    if (!reference.Name.empty()) {
        if (IsGlobal(reference.Name) && IsOfMachine(reference.Name)) return false;
        SetName(reference.Name, value);
        return true;
    }
    const int number = reference.Number;
    if (number < 1 || number > Last) return false;
    if (number >= FirstOfMachine) return m_machine.SetMachineValue(number, value);
    const auto index = static_cast<std::size_t>(number);
    (number <= LocalCount ? m_localNumbers.back()[index - 1] : m_numbers[index]) = value;
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
        ++m_nameCount;
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
    m_nameCount -= m_localNames.back().size();
    m_localNames.pop_back();
}

void TRS274DParameters::SetReturned(std::optional<double> value) {
    SetName("<_VALUE>", value.value_or(0));
    SetName("<_VALUE_RETURNED>", value.has_value());
}

} // namespace ZEP
