#include "tests/converters/rs274d/PathRecorder.h"

#include <gmock/gmock.h>

namespace ZEP {
namespace {

using testing::ElementsAre;
using TTexts = std::vector<std::string>;

PathResult Read(std::string_view text) {
    return {text, {}};
}
PathResult ReadStrict(std::string_view text) {
    return {text, {.StopOnErrors = true}};
}

TEST(RS274DPlain, Moves) {
    const struct {
        const char* Program;
        TTexts Moves;
    } rows[] = {
        {"g01 x1 y2", {"feed 0 0 0 > 1 2 0 @1"}},
        {"G1X5.Y-.25", {"feed 0 0 0 > 5 -0.25 0 @1"}},
        {"G20\nG1X1", {"feed 0 0 0 > 2.54 0 0 @2"}},
        {"G20 G21 G1X1", {"feed 0 0 0 > 1 0 0 @1"}},
        {"G0X1\nG10Y1\nG11Z1\nG12X2",
         {"rapid 0 0 0 > 1 0 0 @1", "rapid 1 0 0 > 1 1 0 @2", "rapid 1 1 0 > 1 1 1 @3",
          "rapid 1 1 1 > 2 1 1 @4"}},
        {"G91G1X1L3",
         {"feed 0 0 0 > 1 0 0 @1", "feed 1 0 0 > 2 0 0 @1", "feed 2 0 0 > 3 0 0 @1",
          "feed 3 0 0 > 4 0 0 @1"}},
        {"G1X1L1", {"feed 0 0 0 > 1 0 0 @1", "feed 1 0 0 > 1 0 0 @1"}},
        {"G1X1L-1\nX2L-2\nX3L0", {"feed 0 0 0 > 3 0 0 @3"}},
        {"G1X1\nG90Y5\nG91Y5\nG90Y1",
         {"feed 0 0 0 > 1 0 0 @1", "feed 1 0 0 > 1 5 0 @2", "feed 1 5 0 > 1 10 0 @3",
          "feed 1 10 0 > 1 1 0 @4"}},
        {"X1\nG1X2", {"feed 0 0 0 > 2 0 0 @2"}},
        {"G1 X1 (X5 L3) Y1 ; Z9", {"feed 0 0 0 > 1 1 0 @1"}},
        {"G1 X1 #5 Y2", {"feed 0 0 0 > 1 0 0 @1"}},
        {"G1 X1.2.3 Y2\nX2", {}},
        {"G92.1 G1.4 X1", {"feed 0 0 0 > 1 0 0 @1"}},
        {"G81X1Y2Z-3R2\nX5\nG80X6\nG0X7",
         {"drill 1 2 -3 @1", "drill 5 2 -3 @2", "rapid 5 2 -3 > 7 2 -3 @4"}},
        {"G1X1\nG80X2", {"feed 0 0 0 > 1 0 0 @1", "feed 1 0 0 > 2 0 0 @2"}},
        {"M6\nG1X1M6", {"tool", "tool", "feed 0 0 0 > 1 0 0 @2"}},
        {"%\r\nO1(X)\r\r\nG1\tX1", {"feed 0 0 0 > 1 0 0 @3"}},
    };
    for (const auto& row : rows) EXPECT_EQ(Read(row.Program).Moves, row.Moves) << row.Program;
}

TEST(RS274DPlain, TheProgramEndsAfterTheBlockThatEndsIt) {
    for (const char* end : {"M0", "M2", "M30", "M60", "m02"}) {
        const auto result = Read(std::string("G1X1\nY1") + end + "\nX5\n");
        EXPECT_THAT(result.Moves, ElementsAre("feed 0 0 0 > 1 0 0 @1", "feed 1 0 0 > 1 1 0 @2"));
    }
    EXPECT_THAT(Read("G1X1\nM1\nX2").Moves, testing::SizeIs(2));
}

TEST(RS274DPlain, Arcs) {
    const struct {
        const char* Program;
        TTexts Arcs;
    } rows[] = {
        // A quarter about the origin each way, by radius and by centre.
        {"G3X0Y1R1", {"arc XY 0 0 0 r1 0..90 @2"}},
        {"G3X0Y1I-1", {"arc XY 0 0 0 r1 0..90 @2"}},
        {"G2X0Y-1R1", {"arc XY 0 0 0 r1 270..0 @2"}},
        // The other side of the chord: the centre words give no more than the radius.
        {"G75G3X0Y1R1", {"arc XY 1 1 0 r1 270..180 @2"}},
        {"G75G2X0Y-1R1", {"arc XY 1 -1 0 r1 180..90 @2"}},
        {"G74G3X0Y1J1", {"arc XY 0 0 0 r1 0..90 @2"}},
        // The normal axis is the target's.
        {"G3X0Y1Z5R1", {"arc XY 0 0 5 r1 0..90 @2"}},
        {"G18G3X0Z1R1", {"arc XZ 0 0 0 r1 0..90 @2"}},
        {"G18G2X0Z1K1", {"arc XZ 1 0 1 r1 180..270 @2"}},
        {"G19G3Y1Z1R1", {"arc YZ 1 0 1 r1 270..0 @2"}},
        // Too short a radius is made up for.
        {"G3X-1R.5", {"arc XY 0 -0.866 0 r0.5 40.8934..139.1066 @2"}},
        {"G2I-1", {"arc XY 0 0 0 r1 0..0 @2"}},
        {"G2X1Y0I2J1R9", {"arc XY 3 1 0 r2.2361 0..0 @2"}},
        {"G2X1Y0R3", {}},
        {"G2X1", {}},
        {"G2R3", {}},
    };
    for (const auto& row : rows) {
        auto moves = Read(std::string("G0X1\n") + row.Program).Moves;
        moves.erase(moves.begin());
        EXPECT_EQ(moves, row.Arcs) << row.Program;
    }
}

TEST(RS274DPlain, ArcsEndWhereTheNextMoveStarts) {
    const auto result = Read("G1X1\nG2X3Y4R2.5\nG1X0\nG2X0Y4R1\nG1Y9");
    EXPECT_THAT(result.Moves, ElementsAre("feed 0 0 0 > 1 0 0 @1", testing::StartsWith("arc XY"),
                                          "feed 3 4 0 > 0 4 0 @3", "feed 0 4 0 > 0 9 0 @5"));
}

TEST(RS274DPlain, ErrorsNameTheLine) {
    const struct {
        const char* Program;
        const char* Error;
        const char* Passed;
    } rows[] = {
        {"\nX1", "Cannot use axis commands with no motion mode set.Line: 2",
         "axis words without a motion mode 1@2"},
        {"G81X1\nG80\nX1", "Cannot use axis commands with no motion mode set.Line: 3",
         "axis words without a motion mode 1@3"},
        {"G2X1R.4", "Cannot reach destination with specified radius. Line: 1", nullptr},
        {"G2X0R4", "Cannot reach destination with specified radius. Line: 1",
         "arcs without a centre 1@1"},
        {"G1\nX1.2.3", "Invalid number in word \"X1.2.3\". Line: 2",
         "blocks with a bad number 1@2"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ReadStrict(row.Program).Error, row.Error) << row.Program;
        const auto lenient = Read(row.Program);
        EXPECT_EQ(lenient.Error, "") << row.Program;
        EXPECT_EQ(lenient.Passed(), row.Passed ? TTexts{row.Passed} : TTexts{}) << row.Program;
    }
    EXPECT_EQ(ReadStrict("G2X1R.4999").Error, "") << "a radius that rounding made short";
}

TEST(RS274DPlain, RepeatCountsHaveALimit) {
    EXPECT_EQ(PathCounts("G91G1X1L9999", {}).Feeds, 10000);
    EXPECT_EQ(Read("\nG1X1L999999999").Error,
              "Repeat count 999999999 is larger than 9999. Line: 2");
    std::string many = "G91G1";
    for (int i = 0; i < 200; ++i) many += "X1L9000\n";
    const PathCounts result(many, {});
    EXPECT_EQ(result.Error, "The program repeats more than 1000000 motions. Line: 112");
    EXPECT_EQ(result.Feeds, 1'000'112) << "what was read before the error stays";
}

TEST(RS274DPlain, TraceSaysHowWordsWereUnderstood) {
    const struct {
        const char* Line;
        TTexts Trace;
    } rows[] = {
        {"G0", {"quick move"}},
        {"G12", {"quick move"}},
        {"G1", {"linear interpolation"}},
        {"G2 G03", {"arc interpolation", "arc interpolation"}},
        {"G17G18G19", {"select XY plane", "select XZ plane", "select YZ plane"}},
        {"G20G21", {"inch system selection", "millimeter system selection"}},
        {"G74G75", {"quadrant arc", "multiquadrant arc"}},
        {"G80", {"cancel drill"}},
        {"G81 G89", {"drill", "drill"}},
        {"G90G91", {"absolute distance mode", "incremental distance mode"}},
        {"G98", {"initial level return in canned cycles"}},
        {"G99", {"R value return in canned cycles"}},
        {"g040 G92.1", {"skip word (G040)", "skip word (G92.1)"}},
        {"M2", {"program end"}},
        {"M06", {"next tool"}},
        {"N10 M3 S500 T1 F10", {}},
        {"G1X1Y-.5", {"linear interpolation", "X=1.000000, Y=-0.500000, Z=0.000000"}},
        {"G3X2I1",
         {"arc interpolation", "X=2.000000, Y=0.000000, Z=0.000000",
          "I=1.000000, J=0.000000, K=0.000000, R=0.000000"}},
        {"G1X1L1",
         {"linear interpolation", "X=1.000000, Y=0.000000, Z=0.000000",
          "X=1.000000, Y=0.000000, Z=0.000000"}},
        {"X1", {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(PathResult(row.Line, {.Trace = true}).Trace, row.Trace) << row.Line;
    EXPECT_TRUE(Read("G1X1").Trace.empty());
}

} // namespace
} // namespace ZEP
