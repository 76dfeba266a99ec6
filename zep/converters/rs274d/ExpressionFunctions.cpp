#include <zep/converters/rs274d/Expression.h>

#include <zep/framework/Ascii.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

constexpr double Degree = std::numbers::pi / 180;

struct TFunction {
    std::string_view Name;
    double (*Call)(double);
};

/// Not a number where a function has no value.
constexpr TFunction Functions[] = {
    {"ABS", [](double x) { return std::abs(x); }},
    {"ACOS", [](double x) { return std::acos(x) / Degree; }},
    {"ASIN", [](double x) { return std::asin(x) / Degree; }},
    {"COS", [](double x) { return std::cos(x * Degree); }},
    {"EXP", [](double x) { return std::exp(x); }},
    {"LN", [](double x) { return std::log(x); }},
    {"ROUND", [](double x) { return std::round(x); }},
    {"SIN", [](double x) { return std::sin(x * Degree); }},
    {"SQRT", [](double x) { return std::sqrt(x); }},
    {"TAN", [](double x) { return std::tan(x * Degree); }},
};

} // namespace

/// The dialects differ for what is negative: FIX goes down, or towards 0.
double TRS274DExpression::Whole(double value, bool up) {
    const bool isMirrored = m_parameters.IsFanuc() && value < 0;
    return up != isMirrored ? std::ceil(value) : std::floor(value);
}

double TRS274DExpression::Function() {
    const auto size =
        static_cast<std::size_t>(std::ranges::find_if_not(m_rest, IsLetter) - m_rest.begin());
    const std::string_view name = m_rest.substr(0, size);
    m_rest.remove_prefix(size);
    if (name == "ATAN") return Arcus();
    if (name == "EXISTS") return Exists();
    if (name == "FIX" || name == "FUP") return Whole(Bracketed(), name == "FUP");
    const auto* function = std::ranges::find(Functions, name, &TFunction::Name);
    if (function == std::end(Functions)) return Fail(TRS274DFault::Unreadable);
    const double argument = Bracketed();
    return m_fault == TRS274DFault::None ? Checked(function->Call(argument)) : 0;
}

/// `ATAN[y]/[x]` knows all four quarters.
double TRS274DExpression::Arcus() {
    const double y = Bracketed();
    if (!m_rest.starts_with("/[")) return std::atan(y) / Degree;
    m_rest.remove_prefix(1);
    return std::atan2(y, Bracketed()) / Degree;
}

double TRS274DExpression::Exists() {
    if (!Take('[') || !StartsWith('#')) return Fail(TRS274DFault::Unreadable);
    const TRS274DReference reference = Reference();
    if (!Take(']')) return Fail(TRS274DFault::Unreadable);
    return m_parameters.Has(reference);
}

} // namespace ZEP
