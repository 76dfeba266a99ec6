#include <zep/converters/rs274d/Expression.h>

#include <zep/converters/rs274d/Block.h>
#include <zep/framework/Ascii.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

enum class TRS274DExpression::TOperator : std::uint8_t {
    None,
    And,
    Or,
    Xor,
    Equal,
    NotEqual,
    Greater,
    GreaterOrEqual,
    Less,
    LessOrEqual,
    Plus,
    Minus,
    Times,
    Divide,
    Modulo,
    Power
};

namespace {

/// Numbers that differ by less are equal.
constexpr double EqualWithin = 0.0001;

/// From the least binding to the most; 0 is none.
constexpr int Precedences[] = {0, 1, 1, 1, 2, 2, 2, 2, 2, 2, 3, 3, 4, 4, 4, 5};

std::size_t CountWhile(std::string_view text, bool (*is)(char)) {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), is) - text.begin());
}

bool IsOfNumber(char c) {
    return IsDigit(c) || c == '.';
}

/// The length of "[...]" at the front, or of all the text where nothing closes it.
std::size_t BracketLength(std::string_view text) {
    int open = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        open += text[i] == '[' ? 1 : text[i] == ']' ? -1 : 0;
        if (open == 0) return i + 1;
    }
    return text.size();
}

/// Never negative, whatever the signs are.
double Modulo(double left, double right) {
    const double rest = std::fmod(left, right);
    return rest < 0 ? rest + std::abs(right) : rest;
}

} // namespace

std::string_view CutRS274DValue(std::string_view& text) {
    std::size_t size = CountWhile(text, [](char c) { return c == '-' || c == '+' || c == '#'; });
    size += CountWhile(text.substr(size), IsLetter);
    const std::string_view rest = text.substr(size);
    if (rest.starts_with('<'))
        size += std::min(rest.find('>'), rest.size() - 1) + 1;
    else if (rest.starts_with('['))
        size += BracketLength(rest);
    else
        size += CountWhile(rest, IsOfNumber);
    if (text.substr(size).starts_with("/[")) size += 1 + BracketLength(text.substr(size + 1));
    const std::string_view value = text.substr(0, size);
    text.remove_prefix(size);
    return value;
}

double TRS274DExpression::Fail(TRS274DFault fault) {
    if (m_fault == TRS274DFault::None) m_fault = fault;
    m_rest = {};
    return 0;
}

double TRS274DExpression::Checked(double value) {
    return std::abs(value) <= MaxRS274DNumber ? value : Fail(TRS274DFault::OutOfRange);
}

bool TRS274DExpression::Take(char c) {
    if (!m_rest.starts_with(c)) return false;
    m_rest.remove_prefix(1);
    return true;
}

double TRS274DExpression::Value() {
    bool negative = false;
    while (m_rest.starts_with('-') || m_rest.starts_with('+')) {
        negative ^= m_rest[0] == '-';
        m_rest.remove_prefix(1);
    }
    const double value = Unsigned();
    return negative ? -value : value;
}

double TRS274DExpression::Unsigned() {
    m_isVacant = false;
    if (m_rest.empty()) return Fail(TRS274DFault::Unreadable);
    if (IsOfNumber(m_rest[0])) return Number();
    if (++m_depth > MaxRS274DExpressionDepth) return Fail(TRS274DFault::TooDeep);
    double value = 0;
    if (m_rest[0] == '[')
        value = Bracketed();
    else if (m_rest[0] != '#')
        value = Function(), m_isVacant = false;
    else if (const TRS274DReference reference = Reference(); m_fault == TRS274DFault::None)
        value = ValueOf(reference);
    --m_depth;
    return value;
}

double TRS274DExpression::ValueOf(const TRS274DReference& reference) {
    if (!m_parameters.Get(reference)) return Fail(TRS274DFault::NoSuchValue);
    m_isVacant = m_parameters.GotVacant();
    return m_parameters.Got();
}

double TRS274DExpression::Number() {
    const std::size_t size = CountWhile(m_rest, IsOfNumber);
    const double value = GetNumber(m_rest.substr(0, size));
    m_rest.remove_prefix(size);
    return std::isnan(value) ? Fail(TRS274DFault::Unreadable) : value;
}

TRS274DReference TRS274DExpression::Reference() {
    m_rest.remove_prefix(1); // "#"
    if (m_rest.starts_with('<')) {
        const std::size_t end = m_rest.find('>');
        if (end == std::string_view::npos)
            return Fail(TRS274DFault::Unreadable), TRS274DReference();
        const std::string_view name = m_rest.substr(0, end + 1);
        m_rest.remove_prefix(end + 1);
        return {.Name = name};
    }
    const double number = Unsigned();
    const double nearest = std::round(number);
    // Reckoned numbers are whole but for rounding.
    if (std::abs(number - nearest) > EqualWithin || std::abs(nearest) > m_parameters.Last())
        m_parameters.ForgetMissing(), Fail(TRS274DFault::NoSuchValue);
    return {.Number = m_fault == TRS274DFault::None ? static_cast<int>(nearest) : 0};
}

double TRS274DExpression::Bracketed() {
    if (!Take('[')) return Fail(TRS274DFault::Unreadable);
    const double value = Operation(1);
    return Take(']') ? value : Fail(TRS274DFault::Unreadable);
}

double TRS274DExpression::Operation(int lowest) {
    double left = Value();
    std::size_t size = 0;
    for (TOperator next = NextOperator(size); next != TOperator::None; next = NextOperator(size)) {
        const int precedence = Precedences[static_cast<std::size_t>(next)];
        if (precedence < lowest) break;
        m_rest.remove_prefix(size);
        const bool isLeftVacant = m_isVacant;
        const double right = Operation(precedence + 1);
        const bool isVacancy = isLeftVacant || m_isVacant;
        // What is vacant equals nothing else, not even 0.
        if (isVacancy && (next == TOperator::Equal || next == TOperator::NotEqual))
            left = (isLeftVacant == m_isVacant) == (next == TOperator::Equal);
        else
            left = Apply(next, left, right);
        m_isVacant = false;
    }
    return left;
}

TRS274DExpression::TOperator TRS274DExpression::NextOperator(std::size_t& size) const {
    using enum TOperator;
    struct TWord {
        std::string_view Text;
        TOperator Operator;
    };
    static constexpr TWord words[] = {{"EQ", Equal},          {"NE", NotEqual}, {"GT", Greater},
                                      {"GE", GreaterOrEqual}, {"LT", Less},     {"OR", Or},
                                      {"LE", LessOrEqual},    {"AND", And},     {"XOR", Xor},
                                      {"MOD", Modulo}};
    if (m_rest.empty() || m_rest[0] == ']') return None;
    size = 1;
    switch (m_rest[0]) {
    case '+':
        return Plus;
    case '-':
        return Minus;
    case '/':
        return Divide;
    case '*':
        if (!m_rest.starts_with("**")) return Times;
        size = 2;
        return Power;
    default:
        break;
    }
    for (const TWord& word : words) {
        if (!m_rest.starts_with(word.Text)) continue;
        size = word.Text.size();
        return word.Operator;
    }
    return None;
}

double TRS274DExpression::Apply(TOperator operation, double left, double right) {
    using enum TOperator;
    if (m_fault != TRS274DFault::None) return 0;
    if (m_parameters.IsFanuc() && operation >= And && operation <= Xor)
        return ApplyToBits(operation, left, right);
    switch (operation) {
    case None:
        break;
    case And:
        return left != 0 && right != 0;
    case Or:
        return left != 0 || right != 0;
    case Xor:
        return (left != 0) != (right != 0);
    case Equal:
        return std::abs(left - right) < EqualWithin;
    case NotEqual:
        return std::abs(left - right) >= EqualWithin;
    case Greater:
        return left > right;
    case GreaterOrEqual:
        return left >= right;
    case Less:
        return left < right;
    case LessOrEqual:
        return left <= right;
    case Plus:
        return Checked(left + right);
    case Minus:
        return Checked(left - right);
    case Times:
        return Checked(left * right);
    case Divide:
        return right == 0 ? Fail(TRS274DFault::DivisionByZero) : Checked(left / right);
    case Modulo:
        return right == 0 ? Fail(TRS274DFault::DivisionByZero) : ZEP::Modulo(left, right);
    case Power:
        return Checked(std::pow(left, right));
    }
    return left;
}

/// Fanuc's take the bits of whole numbers, which for conditions is the same.
double TRS274DExpression::ApplyToBits(TOperator operation, double left, double right) {
    const auto a = std::llrint(left), b = std::llrint(right);
    if (operation == TOperator::And) return static_cast<double>(a & b);
    return static_cast<double>(operation == TOperator::Or ? a | b : a ^ b);
}

} // namespace ZEP
