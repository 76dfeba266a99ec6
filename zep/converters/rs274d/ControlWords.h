#pragma once

#include <zep/converters/LineSource.h>
#include <zep/converters/rs274d/Block.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ZEP {

/// What stands behind the label of an O-word.
enum class TRS274DControl : std::uint8_t {
    Label, ///< nothing: a program, or a subprogram for M98
    Sub,
    EndSub,
    Call,
    Return,
    If,
    ElseIf,
    Else,
    EndIf,
    While,
    EndWhile,
    Do,
    EndDo, ///< the WHILE that ends a DO
    Break,
    Continue,
    Repeat,
    EndRepeat,
    Unknown
};

/// The words of a block with an O-word: label, control word and what follows.
struct TRS274DControlBlock {
    /// As it stands in the block: "100", "<NAME>", or what is reckoned to a number, "#1" or
    /// "[...]".
    std::string_view Label;
    TRS274DControl Control = TRS274DControl::Unknown;
    std::string_view Arguments;
};

/// Nothing where the block has no O-word in front, which a line number may precede. Behind a label
/// alone other words may follow.
std::optional<TRS274DControlBlock> ControlOf(const TRS274DBlock& block);

/// One name for a label, however it is written: "100" for "0100".
std::string RS274DLabelText(std::string_view label);
/// That of a number.
std::string RS274DLabelOf(double number);

/// A control word of a program, where it stands, and those that belong to it.
struct TRS274DControlWord {
    static constexpr int None = -1;

    TRS274DControl Control;
    const char* Line; ///< the first byte of its line
    TLineSource At;   ///< about to hand out its line
    /// IF, ELSEIF: the next branch. BREAK, CONTINUE and what ends a loop: where the loop begins.
    int Partner = None;
    int End = None; ///< of the lines that this begins or divides
};

/// The control words of a program, found in one pass. What ends something belongs to the last one
/// open with the same label, so that labels may be used again, and nothing reaches out of a
/// subprogram or into one. Words without a counterpart have no `Partner` and no `End`.
class TRS274DControlWords {
public:
    explicit TRS274DControlWords(std::string_view text);

    [[nodiscard]] const TRS274DControlWord& operator[](int index) const {
        return m_words[static_cast<std::size_t>(index)];
    }
    /// The word in the line that begins with that byte of the text.
    [[nodiscard]] int IndexOf(const char* line) const;
    /// Where the subprogram of that label begins (SUB, else the label alone); null without it.
    [[nodiscard]] const TRS274DControlWord* FindSubprogram(const std::string& label) const;

private:
    /// What is open with a label: its first word and the last branch.
    struct TOpen {
        int First, Last;
    };
    struct TLabel {
        std::vector<TOpen> Open;
        int Subprogram = TRS274DControlWord::None;
    };

    TRS274DControlWord& At(int index) { return m_words[static_cast<std::size_t>(index)]; }
    void Link(int index, TLabel& label);
    void LinkSubprogram(int index, TLabel& label);
    void LinkBranch(int index, TLabel& label);
    void LinkEnd(int index, TLabel& label);
    /// The innermost one open with the label, in this subprogram; null where it is of another kind.
    TOpen* FindOpen(TLabel& label, TRS274DControl begin);

    std::vector<TRS274DControlWord> m_words;
    std::unordered_map<std::string, TLabel> m_labels;
    int m_floor = TRS274DControlWord::None; ///< what is open before it belongs elsewhere
    const TLabel* m_subLabel = nullptr;     ///< of the SUB that `m_floor` is
};

} // namespace ZEP
