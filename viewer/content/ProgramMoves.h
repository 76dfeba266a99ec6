#pragma once

#include <optional>
#include <vector>

namespace ZEP {

class TZEPObject;

/// Which object of a tool path came from which line of its program, and back.
class TProgramMoves {
public:
    TProgramMoves() = default;
    explicit TProgramMoves(const TZEPObject& root);

    /// Number among the children of the root: the first of what the line made; none where it made
    /// nothing.
    [[nodiscard]] std::optional<int> ItemOf(int line) const;
    /// The same of the line, or of the next one that made something; none behind the last.
    [[nodiscard]] std::optional<int> ItemFrom(int line) const;
    [[nodiscard]] bool IsEmpty() const { return m_moves.empty(); }

private:
    struct TMove {
        int Line, Item;
        // NOLINTNEXTLINE(modernize-use-nullptr): the compiler compares with a literal 0
        auto operator<=>(const TMove&) const = default;
    };
    std::vector<TMove> m_moves; ///< by line
};

} // namespace ZEP
