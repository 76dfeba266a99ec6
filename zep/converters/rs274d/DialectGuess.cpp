#include <zep/converters/rs274d/DialectGuess.h>

#include <zep/converters/LineSource.h>
#include <zep/converters/rs274d/ControlWords.h>

#include <algorithm>
#include <span>

namespace ZEP {

namespace {

/// What one dialect has and the other one does not.
struct TSign {
    std::string_view Text;
    int Weight; ///< how sure it makes
};

constexpr TSign SignsOfFanuc[] = {{"GOTO", 4},     {"THEN", 4},    {"]DO", 4},   {"#3000=", 4},
                                  {"Q#0]", 3},     {"E#0]", 3},    {"G65P", 3},  {"G66P", 3},
                                  {"M99", 2},      {"G54.1", 2},   {"G05.1", 2}, {"G43.4", 2},
                                  {"G91G28Z0", 1}, {"G28G91Z0", 1}};

constexpr TSign SignsOfNGC[] = {{"#<", 4},    {"EXISTS[", 4}, {"G33.1", 2}, {"G38.2", 1},
                                {"G59.1", 1}, {"G61.1", 1},   {"G64P", 2},  {"G90.1", 1},
                                {"G91.1", 1}, {"G92.1", 2},   {"G92.2", 2}};

int WeightOf(std::span<const TSign> signs, std::string_view text) {
    int weight = 0;
    for (const TSign& sign : signs)
        if (text.find(sign.Text) != std::string_view::npos) weight += sign.Weight;
    return weight;
}

/// A program number is Fanuc's; what has a word behind its label is not.
int WeightOfLabel(const TRS274DBlock& block) {
    constexpr int sure = 4;
    const auto control = ControlOf(block);
    if (!control || control->Control == TRS274DControl::Unknown) return 0;
    return control->Control == TRS274DControl::Label ? sure : -sure;
}

/// Calls `function(block, text)` for each line of the front of a program, with its normalised text.
template <class Function>
void ForBlocks(std::string_view text, Function function) {
    TLineSource lines(text.substr(0, RS274DGuessSize));
    TRS274DBlock block;
    std::string buffer;
    std::string_view line;
    while (lines.Next(line)) {
        if (line.size() > MaxRS274DLineLength) continue;
        block.Read(line, true);
        function(block, NormalizeBlock(line, buffer));
    }
}

bool HasCode(const TRS274DBlock& block, double code) {
    return std::ranges::any_of(block.Words(), [code](const TRS274DWord& word) {
        return word.Letter == 'G' && word.Value == code;
    });
}

/// Constant cutting speed, a limit of it, roughing, increments, a tool with its offset.
bool IsOfLathe(const TRS274DBlock& block) {
    constexpr double firstWithOffset = 101, lastWithOffset = 9999;
    const double tool = block.Value('T');
    return HasCode(block, 96) || (HasCode(block, 50) && block.Has('S')) || HasCode(block, 71) ||
           HasCode(block, 72) || block.HasAnyOf("UW") ||
           (tool >= firstWithOffset && tool <= lastWithOffset);
}

} // namespace

TRS274DDialect GuessRS274DDialect(std::string_view text) {
    int weight = 0; // of Fanuc against NGC
    ForBlocks(text, [&](const TRS274DBlock& block, std::string_view line) {
        weight += WeightOfLabel(block) + WeightOf(SignsOfFanuc, line) - WeightOf(SignsOfNGC, line);
    });
    return weight > 0 ? TRS274DDialect::Fanuc : TRS274DDialect::NGC;
}

bool TurnsRS274D(std::string_view text) {
    bool hasY = false, isLathe = false;
    ForBlocks(text, [&](const TRS274DBlock& block, std::string_view) {
        hasY |= block.Has('Y');
        isLathe |= IsOfLathe(block);
    });
    return isLathe && !hasY;
}

} // namespace ZEP
