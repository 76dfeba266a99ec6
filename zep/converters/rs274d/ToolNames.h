#pragma once

#include <QtGlobal>

#include <map>
#include <string_view>

namespace ZEP {

/// Tools beyond so many are known by their number alone.
inline constexpr std::size_t MaxRS274DTools = 10'000;

/// What the comments of a program say about its tools. The texts lie in the program.
class TRS274DToolNames {
public:
    /// A comment that stands alone in its line, or behind its number: "T1 D=6. CR=0. - flat end
    /// mill" and "TOOL 1: drill" are of a list, "TOOL: 10 mm drill" is of what comes next.
    void Note(std::string_view comment, qint64 line);

    /// \param ofBlock  the comment of the block that changes the tool; the best where it is there
    /// \param line     of that block
    [[nodiscard]] std::string_view NameOf(qint64 number, std::string_view ofBlock,
                                          qint64 line) const;

    /// The number behind a "D" or "DIA" that is a word of its own ("D=6.", "D10", "Dia. 0.5"), in
    /// the unit of the program: in the name, else in the list; 0 without one.
    [[nodiscard]] double DiameterOf(qint64 number, std::string_view name) const;

private:
    std::map<qint64, std::string_view> m_names;
    std::string_view m_last; ///< that stood alone
    qint64 m_lastLine = -1;
};

} // namespace ZEP
