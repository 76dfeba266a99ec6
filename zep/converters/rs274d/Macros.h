#pragma once

#include <zep/converters/LineSource.h>
#include <zep/converters/rs274d/Block.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace ZEP {

/// What a block says to a custom macro B, which has no labels before its words.
enum class TRS274DMacro : std::uint8_t {
    GoTo, ///< GOTO 10
    If,   ///< IF [...] GOTO 10, IF [...] THEN #1=2
    Loop, ///< WHILE [...] DO 1, or DO 1 alone
    End   ///< END 1
};

/// The words of such a block, views into it.
struct TRS274DMacroBlock {
    TRS274DMacro Macro;
    std::string_view Condition; ///< in brackets; empty where there is none
    std::string_view Rest;      ///< the line to go to, or what is to be done
};

/// Nothing where the block is none of these. A line number may precede.
std::optional<TRS274DMacroBlock> MacroOf(const TRS274DBlock& block);

/// The loops of a program, found in one pass: END n belongs to the last DO n before it.
class TRS274DMacroLoops {
public:
    explicit TRS274DMacroLoops(std::string_view text);

    /// The other end of the loop that begins or ends in the line with that first byte; null where
    /// it has none.
    [[nodiscard]] const TLineSource* PartnerOf(const char* line) const;

private:
    struct TEnd {
        const char* Line;
        TLineSource At; ///< about to hand out its line
        int Partner;
    };
    static constexpr int None = -1;
    static constexpr std::size_t Numbers = 4; ///< DO 1 to DO 3

    /// The last end closes what begins there.
    void Link(int begin);

    std::vector<TEnd> m_ends;
};

/// The parameter that an argument of a macro call becomes: A is #1, D is #7, and the n-th I, J, K
/// #4, #5, #6 and on by threes. 0 for letters that are none.
/// \param nth  from 0
[[nodiscard]] int ArgumentOf(char letter, int nth);

} // namespace ZEP
