#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ZEP {

/// Lines with more characters than this are no block of any machine and are passed over.
inline constexpr std::size_t MaxRS274DLineLength = 65536;

/// Numbers with a larger amount are not read: a hundred million kilometres, in millimetres.
inline constexpr double MaxRS274DNumber = 1e15;

/// A word of a block: a letter A to Z and its number.
struct TRS274DWord {
    char Letter;
    double Value;
    std::string_view Text; ///< the whole word as it stands in the normalised block
};

/// Where the words of a block ended.
enum class TRS274DBlockEnd : std::uint8_t {
    Complete,    ///< at the end of the line
    Deleted,     ///< at a "/" in front
    Variable,    ///< at a "#" or a "="
    Expression,  ///< at a "["
    ControlWord, ///< at SUB, CALL, WHILE, IF, GOTO and the like
    BadNumber,   ///< at a word whose number is none, or is beyond `MaxRS274DNumber`
    Unreadable   ///< at any other character that begins no word, or a letter without a number
};

/// Drops blanks, tabs, "%", comments in parentheses or after ";", and blank tape (NUL, DEL) and the
/// old end-of-file mark, and makes the rest upper case. A comment that is not closed ends with the
/// line. \param buffer  takes the block; kept by the caller from line to line \return a view into
/// `buffer`
std::string_view NormalizeBlock(std::string_view line, std::string& buffer);

/// Cuts the word from the front of a normalised block: one letter and the characters "+", "-",
/// "." and "0" to "9" that follow, which may be none. Empty, with nothing cut, where the block
/// begins with no letter.
/// \param polar  takes "@" and "^" for letters too
std::string_view GetWord(std::string_view& block, bool polar = false);

/// The number of a word: "X.5" is 0.5, "X-.5" is -0.5, "X5." is 5, "X+1" is 1, "X-" is 0. NaN
/// where the text is no number ("X1.2.3", "X--5") or beyond `MaxRS274DNumber`. The locale plays no
/// part.
double GetReal(std::string_view word);

/// The number of digits and points without a sign, by the same rules.
double GetNumber(std::string_view digits);

/// The words of one line. Kept from line to line, it allocates nothing.
class TRS274DBlock {
public:
    /// Reads the words up to the first character that begins none. `line` is no longer than
    /// `MaxRS274DLineLength`.
    /// \param polar  takes "@" and "^" for letters too
    void Read(std::string_view line, bool polar);

    /// For what reads on where the words ended: there, or at a word before that is a sign without
    /// digits ("X-" of "X-#1"), which is taken back.
    std::string_view Reopen();
    void Complete() { m_end = TRS274DBlockEnd::Complete; }
    /// \param word  whose text stands in the normalised block
    void Add(const TRS274DWord& word);

    [[nodiscard]] const std::vector<TRS274DWord>& Words() const { return m_words; }
    [[nodiscard]] TRS274DBlockEnd End() const { return m_end; }
    /// What its first comment says, without blanks around it; empty without one. It lies in the
    /// line that was read.
    [[nodiscard]] std::string_view Comment() const;
    /// What was left of the normalised block, from the character or word where the words ended.
    [[nodiscard]] std::string_view Rest() const { return m_rest; }

    [[nodiscard]] bool Has(char letter) const { return (m_letters & Bit(letter)) != 0; }
    [[nodiscard]] bool HasAnyOf(std::string_view letters) const {
        std::uint32_t mask = 0; // a constant where the letters are
        for (const char letter : letters) mask |= Bit(letter);
        return (m_letters & mask) != 0;
    }
    /// The number of the first word of that letter; 0 without one.
    [[nodiscard]] double Value(char letter) const {
        return Has(letter) ? m_values[Index(letter)] : 0.0;
    }

private:
    // The characters from "@" to "^" lie in one row of 31.
    static constexpr std::size_t Index(char letter) {
        return static_cast<std::size_t>(letter - '@');
    }
    static constexpr std::uint32_t Bit(char letter) { return 1U << Index(letter); }
    [[nodiscard]] TRS274DBlockEnd ReadWords(bool polar);
    [[nodiscard]] TRS274DBlockEnd EndAt(std::string_view rest) const;

    std::string_view m_line;
    std::string m_buffer;
    std::vector<TRS274DWord> m_words;
    std::string_view m_rest;
    std::array<double, 31> m_values{};
    std::uint32_t m_letters = 0;
    TRS274DBlockEnd m_end = TRS274DBlockEnd::Complete;
};

} // namespace ZEP
