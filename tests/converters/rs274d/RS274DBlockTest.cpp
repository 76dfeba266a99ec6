#include <zep/converters/rs274d/Block.h>

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <random>

namespace ZEP {
namespace {

using namespace std::string_literals;

TEST(RS274DBlock, NormalizingLeavesOnlyWords) {
    const struct {
        std::string Line, Block;
    } rows[] = {
        {"g01 x1 y2", "G01X1Y2"},
        {"\tG1\tX  0.5 \t", "G1X0.5"},
        {"(Name X5 L3)", ""},
        {"G1 (to X5) X6 (Y7", "G1X6"},
        {"G1 X1 ; X5 L3", "G1X1"},
        {"G1 (a;b) X1", "G1X1"},
        {"%", ""},
        {"%G1 %X1", "G1X1"},
        {"G1 (Maß Übermaß) X1", "G1X1"},
        {"G1 X\0\0 1\x7F\x1A"s, "G1X1"},
        {"G1 X1)Y2", "G1X1)Y2"},
    };
    std::string buffer;
    for (const auto& row : rows) EXPECT_EQ(NormalizeBlock(row.Line, buffer), row.Block) << row.Line;
}

TEST(RS274DBlock, WordsAreCutFromTheFront) {
    std::string_view block = "G01X-1.5+Y#5";
    EXPECT_EQ(GetWord(block), "G01");
    EXPECT_EQ(GetWord(block), "X-1.5+");
    EXPECT_EQ(GetWord(block), "Y");
    EXPECT_EQ(GetWord(block), "");
    EXPECT_EQ(block, "#5");
    std::string_view polar = "^60@2";
    EXPECT_EQ(GetWord(polar), "");
    EXPECT_EQ(GetWord(polar, true), "^60");
    EXPECT_EQ(GetWord(polar, true), "@2");
}

TEST(RS274DBlock, NumbersNeedNoDigitBeforeOrAfterThePoint) {
    const std::string zeros(400, '0');
    const std::string nines(400, '9');
    const struct {
        std::string Word;
        double Value; // NAN: no number
    } rows[] = {
        {"X5.", 5},
        {"Y-.25", -0.25},
        {"X.5", 0.5},
        {"X+1.5", 1.5},
        {"X+.5", 0.5},
        {"X-", 0},
        {"X.", 0},
        {"X007", 7},
        {"X1" + zeros + ".", NAN},
        {"X" + nines, NAN},
        {"X-" + nines, NAN},
        {"X" + zeros + "7", 7},
        {"X0." + nines, 1},
        {"X0." + zeros + "1", 0},
        {"X1000000000000000", 1e15},
        {"X1000000000000001", NAN},
        {"X1.2.3", NAN},
        {"X--5", NAN},
        {"X+-5", NAN},
        {"X5-3", NAN},
        {"X..", NAN},
    };
    for (const auto& row : rows) {
        const double value = GetReal(row.Word);
        EXPECT_EQ(std::isnan(value), std::isnan(row.Value)) << row.Word;
        if (!std::isnan(value)) {
            EXPECT_DOUBLE_EQ(value, row.Value) << row.Word;
        }
    }
}

TEST(RS274DBlock, NumbersOfEveryLengthAreTheNearestDouble) {
    std::mt19937 random(274);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    for (int i = 0; i < 20000; ++i) {
        std::string digits;
        for (std::size_t size = 1 + below(18); digits.size() < size;)
            digits += static_cast<char>('0' + below(10));
        digits.insert(digits.begin() + static_cast<std::ptrdiff_t>(below(digits.size())), '.');
        double expected = 0;
        std::from_chars(digits.data(), digits.data() + digits.size(), expected);
        const std::string negative = "X-" + digits;
        if (expected > MaxRS274DNumber) expected = NAN;
        const double value = GetReal(negative);
        EXPECT_TRUE(value == -expected || (std::isnan(value) && std::isnan(expected))) << negative;
    }
}

TEST(RS274DBlock, SaysWhereAndWhyWordsEnd) {
    using enum TRS274DBlockEnd;
    const struct {
        const char* Line;
        std::size_t Words;
        TRS274DBlockEnd End;
        const char* Rest;
    } rows[] = {
        {"", 0, Complete, ""},
        {"N5 G1 X1", 3, Complete, ""},
        {"O0001 (TEST)", 1, Complete, ""},
        {"/G1 X1", 0, Deleted, "/G1X1"},
        {"N10 / G1 X1", 1, Deleted, "/G1X1"},
        {"G1 / X1", 1, Unreadable, "/X1"},
        {"#100=10.0", 0, Variable, "#100=10.0"},
        {"G1 X1 F#102", 2, Variable, "F#102"},
        {"R1=5", 1, Variable, "=5"},
        {"g0 x[#1 + #6] y2", 1, Expression, "X[#1+#6]Y2"},
        {"o100 sub", 1, ControlWord, "SUB"},
        {"o100 call [1.188]", 1, ControlWord, "CALL[1.188]"},
        {"o<name> sub", 0, ControlWord, "O<NAME>SUB"},
        {"o#1 if [1]", 0, ControlWord, "O#1IF[1]"},
        {"IF [#1 EQ 2] GOTO 10", 0, ControlWord, "IF[#1EQ2]GOTO10"},
        {"GOTO 10", 0, ControlWord, "GOTO10"},
        {"N5 WHILE [#1 LT 3] DO1", 1, ControlWord, "WHILE[#1LT3]DO1"},
        {"G1 X Y5", 1, Unreadable, "XY5"},
        {"G1 X1 & Y2", 2, Unreadable, "&Y2"},
        {"G1 X1 Z", 2, Unreadable, "Z"},
        {"G1 X1.2.3 Y2", 1, BadNumber, "X1.2.3"},
    };
    TRS274DBlock block;
    for (const auto& row : rows) {
        block.Read(row.Line, false);
        EXPECT_EQ(block.Words().size(), row.Words) << row.Line;
        EXPECT_EQ(block.End(), row.End) << row.Line;
        EXPECT_EQ(block.Rest(), row.Rest) << row.Line;
    }
}

TEST(RS274DBlock, AnswersTheFirstWordOfALetter) {
    TRS274DBlock block;
    block.Read("G1 X5 X7 Y-2", false);
    EXPECT_EQ(block.Value('X'), 5);
    EXPECT_EQ(block.Value('Y'), -2);
    EXPECT_FALSE(block.Has('Z'));
    block.Read("^30 Z1", true);
    EXPECT_EQ(block.Value('^'), 30);
    EXPECT_EQ(block.Value('X'), 0) << "of the block before";
}

} // namespace
} // namespace ZEP
