#pragma once

#include <zep/converters/rs274d/Parameters.h>

#include <cstdint>
#include <string_view>

namespace ZEP {

/// Brackets, parameters and functions within each other; more are too deep.
inline constexpr int MaxRS274DExpressionDepth = 100;

/// Why a value cannot be told.
enum class TRS274DFault : std::uint8_t {
    None,
    Unreadable,  ///< what stands there is no value
    TooDeep,     ///< more than `MaxRS274DExpressionDepth` within each other
    NoSuchValue, ///< a name without a value, or a number of no parameter
    DivisionByZero,
    OutOfRange ///< the root of a negative number and the like, or beyond `MaxRS274DNumber`
};

/// Cuts what would be a value from the front of a text, whether it has one or not: "-SIN[#1]",
/// "#<A>", "[1+2]". Nothing of it is reckoned.
std::string_view CutRS274DValue(std::string_view& text);

/// Reads values from the front of a normalised block, by the rules of the RS-274/NGC dialect
/// (NISTIR 6556, 3.3.2): numbers, parameters, functions and expressions in brackets, all of them
/// with signs. In brackets powers (`**`) come before `*`, `/` and `MOD`, these before `+` and `-`,
/// then the comparisons (`EQ`, `NE`, `GT`, `GE`, `LT`, `LE`), then `AND`, `OR` and `XOR`; what is
/// equal goes from the left. Angles are degrees. A comparison is 1 or 0, and what is not 0 is
/// true; `EQ` and `NE` take numbers that differ by less than 0.0001 for the same. In Fanuc's
/// dialect `FIX` and `FUP` go towards 0 and away from it, and `AND`, `OR` and `XOR` take bits.
///
/// After a fault nothing more is read, and values are 0.
class TRS274DExpression {
public:
    TRS274DExpression(std::string_view text, TRS274DParameters& parameters)
        : m_rest(text), m_parameters(parameters) {}

    double Value();
    /// What stands behind "=": a value; in Fanuc's dialect also operations without brackets.
    double Formula() { return m_parameters.IsFanuc() ? Operation(1) : Value(); }
    /// What "#" begins: the parameter itself, not its value.
    TRS274DReference Reference();

    [[nodiscard]] TRS274DFault Fault() const { return m_fault; }
    /// The value read last is a vacant parameter.
    [[nodiscard]] bool IsVacant() const { return m_isVacant; }
    [[nodiscard]] std::string_view Rest() const { return m_rest; }
    [[nodiscard]] bool StartsWith(char c) const { return m_rest.starts_with(c); }
    /// Cuts that character where it comes next.
    bool Take(char c);

private:
    enum class TOperator : std::uint8_t;

    double Fail(TRS274DFault fault);
    double Checked(double value);
    double Unsigned();
    double ValueOf(const TRS274DReference& reference);
    double Number();
    double Bracketed();
    double Operation(int lowest);
    double Function();
    double Arcus();
    double Exists();
    [[nodiscard]] TOperator NextOperator(std::size_t& size) const;
    double Apply(TOperator operation, double left, double right);
    double ApplyToBits(TOperator operation, double left, double right);
    double Whole(double value, bool up);

    std::string_view m_rest;
    TRS274DParameters& m_parameters;
    TRS274DFault m_fault = TRS274DFault::None;
    int m_depth = 0;
    bool m_isVacant = false;
};

} // namespace ZEP
