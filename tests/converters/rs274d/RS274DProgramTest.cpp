#include "tests/converters/rs274d/PathRecorder.h"

#include <gmock/gmock.h>

namespace ZEP {
namespace {

using namespace std::string_literals;

PathResult Read(std::string_view text, bool extended) {
    return {text, {.Extended = extended}};
}

TEST(RS274DProgram, BadInputEndsSoonAndHarmsNothing) {
    const std::string megabytes(10'000'000, '1');
    const struct {
        const char* Name;
        std::string Text;
        std::size_t Moves;
    } rows[] = {
        {"empty", "", 0},
        {"no line end", "G1X1", 1},
        {"NUL bytes", std::string(100, '\0') + "G1X1\0Y1\nX2\0"s, 2},
        {"a line of NUL bytes", "G1X1\n" + std::string(10'000'000, '\0') + "\nX2", 2},
        {"one long word", "G1X" + megabytes + "\nG1X2", 1},
        {"one long comment", "G1X1(" + megabytes + ")\nG1X2", 1},
        {"many words in a long line", "G1" + std::string(5'000'000, 'X') + "\nG1X2", 1},
        {"400 digits", "G1\nX" + std::string(400, '7') + "\nX1." + std::string(400, '7'), 1},
        {"bytes above 127", "G1X1(Gr\xC3\xB6\xC3\x9F\x65 \xFF)\n\xC3\xB6\nX2", 2},
        {"UTF-16", "\xFF\xFEG\0001\0X\0001\0\r\0\n\0X\0002\0"s, 0},
    };
    for (const auto& row : rows)
        for (const bool extended : {false, true}) {
            const auto result = Read(row.Text, extended);
            EXPECT_EQ(result.Error, "") << row.Name;
            EXPECT_EQ(result.Moves.size(), row.Moves) << row.Name << extended;
        }
    EXPECT_EQ(PathResult("G1X1(" + megabytes + ")", {.StopOnErrors = true}).Error,
              "Line longer than 65536 characters. Line: 1");
}

TEST(RS274DProgram, ALineOfTheLargestLengthIsRead) {
    std::string line = "G1";
    while (line.size() + 2 <= MaxRS274DLineLength) line += "X1";
    EXPECT_EQ(Read(line, false).Moves.size(), 1U);
    EXPECT_EQ(Read(line + "X", false).Moves.size(), 0U);
}

TEST(RS274DProgram, ProgressComesNowAndThenAndCancels) {
    std::string text = "G91G1\n";
    while (text.size() < 1'000'000) text += "X1\n";
    PathCounter all;
    TRS274DReport report;
    std::vector<qint64> done;
    EXPECT_TRUE(ReadRS274D(text, {}, all, report, [&](qint64 bytes, qint64 total) {
        EXPECT_EQ(total, static_cast<qint64>(text.size()));
        done.push_back(bytes);
        return true;
    }));
    EXPECT_THAT(done.size(), testing::AllOf(testing::Ge(10U), testing::Le(100U)));
    EXPECT_TRUE(std::is_sorted(done.begin(), done.end()));
    PathCounter cancelled;
    EXPECT_FALSE(ReadRS274D(text, {}, cancelled, report, [](qint64, qint64) { return false; }));
    EXPECT_GT(cancelled.Feeds, 0);
    EXPECT_LT(cancelled.Feeds, all.Feeds / 5);
}

} // namespace
} // namespace ZEP
