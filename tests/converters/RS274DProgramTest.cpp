#include "framework/MappedFile.h"
#include "tests/converters/PathRecorder.h"

#include <QDir>

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

/// Rapids, feeds, arcs, curves, drill points, tool changes.
using TCounts = std::array<int, 6>;

TCounts CountsOf(const PathCounter& path) {
    return {path.Rapids, path.Feeds, path.Arcs, path.Curves, path.Drills, path.Tools};
}

struct TSample {
    const char* Name;
    TCounts Plain, Extended;
    std::vector<std::string> Passed; ///< in the extended reading
};

/// An independent interpreter counts the same moves, apart from what the comments say; arcs and
/// curves together are its arcs.
const TSample Samples[] = {
    {"3dtest.ngc", {25, 22, 3}, {25, 22, 3}, {}},
    {"cds.ngc", {25, 191, 50}, {25, 191, 50}, {}},
    {"arcspiral.ngc", {4, 2, 999}, {4, 2, 999}, {}},
    // Plain: M0 ends it in line 4.
    {"tort.ngc", {1}, {74, 56, 6, 132}, {}},
    // The other counts a G00 without axis words as a sixteenth rapid.
    {"plasmatest.ngc", {15, 218, 129, 0, 0, 1}, {15, 218, 129, 0, 0, 1}, {}},
    // Plain: "^" ends the block, and with it L6 is lost.
    {"hole-circle.ngc", {1, 0, 0, 0, 1}, {14, 6}, {}},
    // What needs variables is missing; three arcs start where a passed block should have led.
    {"mmount.ngc",
     {73, 36, 60, 0, 14, 7},
     {67, 47, 45, 13, 0, 7},
     {"blocks with variables 38@24", "blocks with control words 16@30",
      "blocks with expressions 3@41", "arcs of unequal radii (drawn as spirals) 3@88"}},
    // Plain: M0 ends it.
    {"skeleton.ngc", {2}, {7, 0, 0, 0, 0, 2}, {}},
    // Plain: each of the eight G10 L2 is a rapid three times over.
    {"botomata_bottom.nc", {620, 3096, 2384, 0, 0, 4}, {596, 3096, 2384, 0, 0, 4}, {}},
    {"vcarve.ngc", {119, 4034}, {119, 4034}, {}},
    // The other stops at the first of two G28 with two rapids each.
    {"G81.NC", {4, 0, 0, 0, 12, 1}, {27 + 4, 12, 0, 0, 0, 1}, {}},
    {"CONTOUR_R1.NC", {5 + 2, 9, 4, 0, 0, 1}, {5 + 4, 9, 4, 0, 0, 1}, {}},
    {"TEST_G91.NC", {19, 45, 76, 0, 0, 2}, {19, 45, 30, 46, 0, 2}, {}},
};

TEST(RS274DProgram, SamplesHaveTheMovesThatTheyState) {
    const QDir folder(QStringLiteral(ZEP_SAMPLES "/nc"));
    if (!folder.exists()) GTEST_SKIP() << "no samples";
    std::size_t known = 0;
    for (const QString& name : folder.entryList(QDir::Files)) {
        const TMappedFile file(folder.filePath(name), name);
        const PathCounts plain(file.Text(), {});
        const PathCounts extended(file.Text(), {.Extended = true});
        EXPECT_EQ(plain.Error + extended.Error, "") << name.toStdString();
        for (const TSample& sample : Samples) {
            if (name != QLatin1String(sample.Name)) continue;
            ++known;
            EXPECT_EQ(CountsOf(plain), sample.Plain) << sample.Name;
            EXPECT_EQ(CountsOf(extended), sample.Extended) << sample.Name;
            EXPECT_EQ(extended.Passed(), sample.Passed) << sample.Name;
        }
    }
    EXPECT_EQ(known, std::size(Samples));
}

} // namespace
} // namespace ZEP
