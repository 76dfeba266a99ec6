#pragma once

#include <zep/converters/rs274d/Dialect.h>

#include <array>
#include <functional>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ZEP {

/// A parameter: `#17` by its number, `#<depth>` by its name.
struct TRS274DReference {
    int Number = 0;
    std::string_view Name{}; ///< with its brackets: "<DEPTH>"; empty where it is a number
};

/// A parameter that nothing has set.
inline constexpr double RS274DVacant = std::numeric_limits<double>::quiet_NaN();

/// Names that may have a value at a time, each counting once more for each 64 characters; more are
/// an error of the program.
inline constexpr std::size_t MaxRS274DNames = 100000;

/// What a machine knows of itself, by the numbers of the RS-274/NGC dialect: 5220 is the work
/// system, 5420 to 5422 are the position.
class TRS274DMachineValues {
public:
    virtual ~TRS274DMachineValues() = default;
    /// Nothing for what does not follow from the program alone: probes, tool tables.
    [[nodiscard]] virtual std::optional<double> MachineValue(int number) const = 0;
    /// By the name of a parameter, capitals in brackets: "<_X>". Nothing where it is no such name.
    [[nodiscard]] virtual std::optional<double> MachineValue(std::string_view name) const = 0;
    /// \return whether the machine lets programs set it
    virtual bool SetMachineValue(int number, double value) = 0;
};

/// The parameters of a program that runs. #1 to #30 and names belong to the subprogram that runs;
/// #31 to #5060 and names that begin with "_" are there for all; what follows to #5601 is the
/// machine's. A number that nothing has set is 0.
///
/// In Fanuc's dialect #1 to #33 belong to the macro that runs, and #1000 to #9999 are the
/// machine's. What nothing has set is vacant there, as #0 always is: 0 where it is reckoned with.
class TRS274DParameters {
public:
    static constexpr int MaxLocalCount = 33;

    explicit TRS274DParameters(TRS274DMachineValues& machine,
                               TRS274DDialect dialect = TRS274DDialect::NGC);

    [[nodiscard]] bool IsFanuc() const { return m_isFanuc; }
    [[nodiscard]] int LocalCount() const { return m_isFanuc ? MaxLocalCount : 30; }
    [[nodiscard]] int Last() const { return m_isFanuc ? 9999 : 5601; }

    /// Whether it has a value, which `Got` answers then.
    [[nodiscard]] bool Get(const TRS274DReference& reference);
    [[nodiscard]] double Got() const { return m_got; }
    /// What was asked for last is vacant.
    [[nodiscard]] bool GotVacant() const { return m_gotVacant; }
    /// What had no value last, for a message: "#<depth>".
    [[nodiscard]] const std::string& Missing() const { return m_missing; }
    void ForgetMissing() { m_missing.clear(); }
    /// EXISTS: a name has a value; a number always is one.
    [[nodiscard]] bool Has(const TRS274DReference& reference);
    /// \param value  NaN: vacant from here on
    /// \return whether there is such a parameter that a program may set
    bool Set(const TRS274DReference& reference, double value);

    /// A subprogram begins, with its arguments in #1 and on, and no names. NaN: not given.
    void EnterSub(std::span<const double> arguments);
    void LeaveSub();
    /// A program begins that another one calls (M98): it has names of its own, and the numbers of
    /// the one that calls.
    void EnterProgram() { m_localNames.emplace_back(); }
    void LeaveProgram();
    /// What the last subprogram has returned: `#<_value>`; nothing sets it to 0.
    void SetReturned(std::optional<double> value);

    /// More names than `MaxRS274DNames` are wanted.
    [[nodiscard]] bool IsFull() const { return m_nameCount >= MaxRS274DNames; }
    /// Since it was asked last: a number was read that nothing has set.
    [[nodiscard]] bool TakeReadUnset() { return std::exchange(m_readUnset, false); }
    /// Since it was asked last: a number was read that only the machine knows.
    [[nodiscard]] bool TakeReadUnknown() { return std::exchange(m_readUnknown, false); }

private:
    struct THash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };
    using TNames = std::unordered_map<std::string, double, THash, std::equal_to<>>;
    using TNumbers = std::array<double, MaxLocalCount>;

    bool GetNumber(int number);
    bool GetName(std::string_view name);
    [[nodiscard]] int FirstOfMachine() const { return m_isFanuc ? 1000 : 5061; }
    bool Miss(const TRS274DReference& reference);
    void SetName(std::string_view name, double value);
    [[nodiscard]] bool IsOfMachine(std::string_view name) const;
    [[nodiscard]] TNames& NamesFor(std::string_view name);

    TRS274DMachineValues& m_machine;
    const bool m_isFanuc;
    std::vector<double> m_numbers; ///< from 0; NaN: not set
    TNames m_names;
    std::vector<TNumbers> m_localNumbers;
    std::vector<TNames> m_localNames;
    std::size_t m_nameCount = 0;
    double m_got = 0;
    std::string m_missing;
    bool m_gotVacant = false;
    bool m_readUnset = false, m_readUnknown = false;
};

} // namespace ZEP
