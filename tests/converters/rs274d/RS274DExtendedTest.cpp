#include "tests/converters/rs274d/PathRecorder.h"

#include <gmock/gmock.h>

namespace ZEP {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using TTexts = std::vector<std::string>;

struct TRow {
    const char* Program;
    TTexts Moves;
};

PathResult Read(std::string_view text) {
    return {text, {.Extended = true}};
}

template <std::size_t N>
void ExpectMoves(const TRow (&rows)[N]) {
    for (const TRow& row : rows) {
        const auto result = Read(row.Program);
        EXPECT_EQ(result.Moves, row.Moves) << row.Program;
        EXPECT_EQ(result.Error, "") << row.Program;
    }
}

TEST(RS274DExtended, ModesAndMoves) {
    ExpectMoves({
        {"G20G1X1", {"feed 0 0 0 > 25.4 0 0 @1"}},
        {"G1 X1 G20", {"feed 0 0 0 > 25.4 0 0 @1"}},
        {"G91G1X1\nX1\nG90X1",
         {"feed 0 0 0 > 1 0 0 @1", "feed 1 0 0 > 2 0 0 @2", "feed 2 0 0 > 1 0 0 @3"}},
        {"M0\nM1\nM60\nG0X1M0\nM2\nX9", {"rapid 0 0 0 > 1 0 0 @4"}},
        {"T1M6\nG1X1M30\nX2", {"tool", "feed 0 0 0 > 1 0 0 @2"}},
        {"G1X1 (X5 L3)L3 ; Y1", {"feed 0 0 0 > 1 0 0 @1"}},
        {"G0X1\n/X2\nX[1+2]\nX#1\nO5 WHILE [1]\nX3",
         {"rapid 0 0 0 > 1 0 0 @1", "rapid 1 0 0 > 3 0 0 @6"}},
        // Codes that use the axis words for something else, and a dwell beside a motion.
        {"G0X1\nG4X5\nG4P.1G0X2", {"rapid 0 0 0 > 1 0 0 @1", "rapid 1 0 0 > 2 0 0 @3"}},
        {"G1X1\nG65P1X5\nG187P1G1X2", {"feed 0 0 0 > 1 0 0 @1", "feed 1 0 0 > 2 0 0 @3"}},
        // A dotted code is itself.
        {"G1.1X1\nG0X2", {"rapid 0 0 0 > 2 0 0 @2"}},
        {"G0Y5\nG33.1Z-9K.05",
         {"rapid 0 0 0 > 0 5 0 @1", "feed 0 5 0 > 0 5 -9 @2", "feed 0 5 -9 > 0 5 0 @2"}},
        {"G33Z-9K.05\nG38.2Z1", {"feed 0 0 0 > 0 0 -9 @1", "feed 0 0 -9 > 0 0 1 @2"}},
        {"G0@2^90\nG91^90\n@1",
         {"rapid 0 0 0 > 0 2 0 @1", "rapid 0 2 0 > -2 0 0 @2", "rapid -2 0 0 > -3 0 0 @3"}},
    });
}

TEST(RS274DExtended, Frames) {
    ExpectMoves({
        {"G10L2P2X10Y20\nG0X1Y1\nG55X1Y1\nZ5\nG54X1",
         {"rapid 0 0 0 > 1 1 0 @2", "rapid 1 1 0 > 11 21 0 @3", "rapid 11 21 0 > 11 21 5 @4",
          "rapid 11 21 5 > 1 21 5 @5"}},
        {"G10L2P0X5\nG10L2P9X7\nG0X0\nG59.3X0",
         {"rapid 0 0 0 > 5 0 0 @3", "rapid 5 0 0 > 7 0 0 @4"}},
        {"G20\nG10L2P1X1\nG0X1", {"rapid 0 0 0 > 50.8 0 0 @3"}},
        {"G0X3\nG10L20P1X1\nX1\nX2",
         {"rapid 0 0 0 > 3 0 0 @1", "rapid 3 0 0 > 3 0 0 @3", "rapid 3 0 0 > 4 0 0 @4"}},
        {"G0X10\nG92X0Y5\nX1Y5\nG92.1\nX1Y5",
         {"rapid 0 0 0 > 10 0 0 @1", "rapid 10 0 0 > 11 0 0 @3", "rapid 11 0 0 > 1 5 0 @5"}},
        {"G0X10\nG92X0\nG92.2\nX1\nG92.3\nX1\nG92.1\nG92.3\nX1",
         {"rapid 0 0 0 > 10 0 0 @1", "rapid 10 0 0 > 1 0 0 @4", "rapid 1 0 0 > 11 0 0 @6",
          "rapid 11 0 0 > 1 0 0 @9"}},
        {"G0X10\nG92X0\nX1\nG92X0\nX1",
         {"rapid 0 0 0 > 10 0 0 @1", "rapid 10 0 0 > 11 0 0 @3", "rapid 11 0 0 > 12 0 0 @5"}},
        {"G52X5\nG0X1Y1\nG52X2Y3\nX0Y0\nG55X0\nG52X0Y0\nX0Y0",
         {"rapid 0 0 0 > 6 1 0 @2", "rapid 6 1 0 > 2 3 0 @4", "rapid 2 3 0 > 2 3 0 @5",
          "rapid 2 3 0 > 0 0 0 @7"}},
        {"G10L2P1Z10\nG0X1Z1\nG53Z0\nX2\nG91G53X7",
         {"rapid 0 0 0 > 1 0 11 @2", "rapid 1 0 11 > 1 0 0 @3", "rapid 1 0 0 > 2 0 0 @4",
          "rapid 2 0 0 > 7 0 0 @5"}},
        {"G10L2P1X100\nG0@2^90", {"rapid 0 0 0 > 100 2 0 @2"}},
    });
}

TEST(RS274DExtended, ReferencePoints) {
    ExpectMoves({
        {"G0X5Y5Z5\nG28X7Z9",
         {"rapid 0 0 0 > 5 5 5 @1", "rapid 5 5 5 > 7 5 9 @2", "rapid 7 5 9 > 0 5 0 @2"}},
        {"G0Z5\nG91G28Z0\nG90\nG1X1",
         {"rapid 0 0 0 > 0 0 5 @1", "rapid 0 0 5 > 0 0 5 @2", "rapid 0 0 5 > 0 0 0 @2",
          "feed 0 0 0 > 1 0 0 @4"}},
        {"G0X5Y5\nG28", {"rapid 0 0 0 > 5 5 0 @1", "rapid 5 5 0 > 0 0 0 @2"}},
        {"G1X5Y6\nG30.1\nX0\nG30Y9\nG28X0\nX1",
         {"feed 0 0 0 > 5 6 0 @1", "feed 5 6 0 > 0 6 0 @3", "rapid 0 6 0 > 0 9 0 @4",
          "rapid 0 9 0 > 0 6 0 @4", "rapid 0 6 0 > 0 6 0 @5", "rapid 0 6 0 > 0 6 0 @5",
          "feed 0 6 0 > 1 6 0 @6"}},
    });
}

TEST(RS274DExtended, Cycles) {
    ExpectMoves({
        // Back to R, since nothing else was said.
        {"G0Z9\nG81X1Y2Z-3R2\nX5\nG80\nX0",
         {"rapid 0 0 0 > 0 0 9 @1", "rapid 0 0 9 > 1 2 9 @2", "rapid 1 2 9 > 1 2 2 @2",
          "feed 1 2 2 > 1 2 -3 @2", "rapid 1 2 -3 > 1 2 2 @2", "rapid 1 2 2 > 5 2 2 @3",
          "feed 5 2 2 > 5 2 -3 @3", "rapid 5 2 -3 > 5 2 2 @3", "rapid 5 2 2 > 0 2 2 @5"}},
        // Back to the initial level.
        {"G0Z9\nG98G85Y1Z-3R2\nG99G81Y2",
         {"rapid 0 0 0 > 0 0 9 @1", "rapid 0 0 9 > 0 1 9 @2", "rapid 0 1 9 > 0 1 2 @2",
          "feed 0 1 2 > 0 1 -3 @2", "feed 0 1 -3 > 0 1 9 @2", "rapid 0 1 9 > 0 2 9 @3",
          "rapid 0 2 9 > 0 2 2 @3", "feed 0 2 2 > 0 2 -3 @3", "rapid 0 2 -3 > 0 2 2 @3"}},
        // The tool below R goes up first. Repeats move on by the distance.
        {"G91G98G81X1Z-3R2L2",
         {"rapid 0 0 0 > 0 0 2 @1", "rapid 0 0 2 > 1 0 2 @1", "feed 1 0 2 > 1 0 -1 @1",
          "rapid 1 0 -1 > 1 0 2 @1", "rapid 1 0 2 > 2 0 2 @1", "feed 2 0 2 > 2 0 -1 @1",
          "rapid 2 0 -1 > 2 0 2 @1"}},
        {"G81X1Z-3R0L0", {}},
        // In incremental mode R counts from the initial level, not from where a hole left the tool.
        {"G0Z5\nG91G99G81X1Z-3R-2\nX1",
         {"rapid 0 0 0 > 0 0 5 @1", "rapid 0 0 5 > 1 0 5 @2", "rapid 1 0 5 > 1 0 3 @2",
          "feed 1 0 3 > 1 0 0 @2", "rapid 1 0 0 > 1 0 3 @2", "rapid 1 0 3 > 2 0 3 @3",
          "feed 2 0 3 > 2 0 0 @3", "rapid 2 0 0 > 2 0 3 @3"}},
        {"G20G10L2P1Z1\nG0Z1\nG81Z0R.5",
         {"rapid 0 0 0 > 0 0 50.8 @2", "rapid 0 0 50.8 > 0 0 50.8 @3",
          "rapid 0 0 50.8 > 0 0 38.1 @3", "feed 0 0 38.1 > 0 0 25.4 @3",
          "rapid 0 0 25.4 > 0 0 38.1 @3"}},
        {"G18G82Y-1X2R0",
         {"rapid 0 0 0 > 2 0 0 @1", "feed 2 0 0 > 2 -1 0 @1", "rapid 2 -1 0 > 2 0 0 @1"}},
        {"G83Z-2.5R0Q1",
         {"rapid 0 0 0 > 0 0 0 @1", "feed 0 0 0 > 0 0 -1 @1", "rapid 0 0 -1 > 0 0 0 @1",
          "rapid 0 0 0 > 0 0 -0.746 @1", "feed 0 0 -0.746 > 0 0 -2 @1", "rapid 0 0 -2 > 0 0 0 @1",
          "rapid 0 0 0 > 0 0 -1.746 @1", "feed 0 0 -1.746 > 0 0 -2.5 @1",
          "rapid 0 0 -2.5 > 0 0 0 @1"}},
        {"G73Z-2R0Q1",
         {"rapid 0 0 0 > 0 0 0 @1", "feed 0 0 0 > 0 0 -1 @1", "rapid 0 0 -1 > 0 0 -0.746 @1",
          "feed 0 0 -0.746 > 0 0 -2 @1", "rapid 0 0 -2 > 0 0 0 @1"}},
        // A new series starts from its own level with its own R.
        {"G81Z-1R1\nG0Z5\nG81Z-1",
         {"rapid 0 0 0 > 0 0 1 @1", "rapid 0 0 1 > 0 0 1 @1", "feed 0 0 1 > 0 0 -1 @1",
          "rapid 0 0 -1 > 0 0 1 @1", "rapid 0 0 1 > 0 0 5 @2", "rapid 0 0 5 > 0 0 5 @3",
          "feed 0 0 5 > 0 0 -1 @3", "rapid 0 0 -1 > 0 0 5 @3"}},
        {"G0X1\nG80G0X2\nG0G80X3\nG1X4\nG81Z-1\nG80\nX5",
         {"rapid 0 0 0 > 1 0 0 @1", "rapid 1 0 0 > 2 0 0 @2", "rapid 2 0 0 > 3 0 0 @3",
          "feed 3 0 0 > 4 0 0 @4", "rapid 4 0 0 > 4 0 0 @5", "feed 4 0 0 > 4 0 -1 @5",
          "rapid 4 0 -1 > 4 0 0 @5", "feed 4 0 0 > 5 0 0 @7"}},
    });
}

TEST(RS274DExtended, Arcs) {
    const struct {
        const char* Program;
        TTexts Moves;
    } rows[] = {
        {"G3X0Y1I-1", {"arc XY 0 0 0 r1 0..90 @2"}},
        {"G2X0Y1I-1", {"arc XY 0 0 0 r1 90..0 @2"}},
        {"G3X0Y1R1", {"arc XY 0 0 0 r1 0..90 @2"}},
        {"G3X0Y1R-1", {"arc XY 1 1 0 r1 270..180 @2"}},
        {"G2X0Y1R-1", {"arc XY 0 0 0 r1 90..0 @2"}},
        {"G3X-1R1", {"arc XY 0 0 0 r1 0..180 @2"}},
        {"G3X-1R.999", {"arc XY 0 0 0 r1 0..180 @2"}},
        {"G90.1G3X0Y1I0J0", {"arc XY 0 0 0 r1 0..90 @2"}},
        {"G92X11Y5\nG90.1G3X10Y6I10J5", {"arc XY 0 0 0 r1 0..90 @3"}},
        {"G90.1G3X0Y1J0\nG91.1G3X1Y2I0J1", {"arc XY 0 2 0 r1 270..0 @3"}},
        {"G2I-1", {"arc XY 0 0 0 r1 0..0 @2"}},
        {"G2X1Y0I-1J0", {"arc XY 0 0 0 r1 0..0 @2"}},
        {"G20G2I-1", {"arc XY -24.4 0 0 r25.4 0..0 @2"}},
        // In the XZ plane the machine's first axis is Z.
        {"G18G3X0Z1I-1", {"arc XZ 0 0 0 r1 90..0 @2"}},
        {"G18G2X0Z1I-1", {"arc XZ 0 0 0 r1 0..90 @2"}},
        {"G18G2X0Z1R1", {"arc XZ 0 0 0 r1 0..90 @2"}},
        {"G19G3Y1Z1J1", {"arc YZ 1 1 0 r1 180..90 @2"}},
        // A centre stated with few digits moves to where both ends fit.
        {"G3X0Y1.002I-1", {"arc XY -0.001 0.001 0 r1.001 359.9427..89.9428 @2"}},
        {"G91G2X-1Y1J1I0", {"arc XY 1 1 0 r1 180..270 @2"}},
        {"G3X0Y1Z5I-1", {"curve 1 0 0 > 0 1 5 @2"}},
        {"G3X0Y1I-1P2", {"curve 1 0 0 > 0 1 0 @2"}},
    };
    for (const auto& row : rows) {
        auto moves = Read(std::string("G0X1\n") + row.Program).Moves;
        moves.erase(moves.begin());
        EXPECT_EQ(moves, row.Moves) << row.Program;
    }
}

/// A block for an arc from one corner of a square to another about its middle.
struct TArcCase {
    TRS274DArcPlane Plane;
    bool CounterClockwise;
    double From, To; // degrees from the machine's first axis to its second
};

std::string Word(char letter, double value) {
    return letter + QString::number(value, 'f', 12).toStdString();
}

TEST(RS274DExtended, ArcsInEveryPlaneRunFromStartToEnd) {
    // The first and the second axis as the machine sees them from the normal axis' tip.
    constexpr std::size_t machineAxes[][2] = {{0, 1}, {2, 0}, {1, 2}};
    constexpr double radius = 7.5;
    const auto at = [](double degrees) {
        return std::array{radius * std::cos(degrees * std::numbers::pi / 180),
                          radius * std::sin(degrees * std::numbers::pi / 180)};
    };
    for (const auto plane : {apXY, apXZ, apYZ})
        for (const bool counterClockwise : {false, true})
            for (int from = 0; from < 360; from += 30)
                for (int to = from + 15; to < from + 360; to += 30) {
                    const auto* axes = machineAxes[plane];
                    TRS274DPoint start{3, 4, 5}, end = start;
                    TRS274DPoint offset{};
                    for (std::size_t i = 0; i < 2; ++i) {
                        offset[axes[i]] = -at(from)[i];
                        start[axes[i]] += at(from)[i];
                        end[axes[i]] += at(to)[i];
                    }
                    std::string program = "G0";
                    for (std::size_t i = 0; i < 3; ++i)
                        program += Word(static_cast<char>('X' + i), start[i]);
                    program += "\nG" + std::to_string(17 + plane);
                    program += counterClockwise ? "G3" : "G2";
                    for (std::size_t i = 0; i < 2; ++i) {
                        program += Word(static_cast<char>('X' + axes[i]), end[axes[i]]);
                        program += Word(static_cast<char>('I' + axes[i]), offset[axes[i]]);
                    }
                    const auto result = Read(program);
                    ASSERT_EQ(result.Arcs.size(), 1U) << program;
                    const TRS274DArc& arc = result.Arcs[0];
                    // The sweep tells the direction, whichever of the ends the object starts at.
                    const double way = counterClockwise ? to - from : from + 360 - to;
                    EXPECT_NEAR(arc.Sweep, way, 1e-9) << program;
                    const TRS274DPoint first = PointOf(arc, arc.StartAngle);
                    const bool isForward = std::abs(first[axes[0]] - start[axes[0]]) +
                                               std::abs(first[axes[1]] - start[axes[1]]) <
                                           1e-9;
                    const TRS274DPoint last = PointOf(arc, arc.EndAngle);
                    for (std::size_t i = 0; i < 3; ++i) {
                        EXPECT_NEAR(first[i], isForward ? start[i] : end[i], 1e-9) << program;
                        EXPECT_NEAR(last[i], isForward ? end[i] : start[i], 1e-9) << program;
                    }
                    EXPECT_EQ(isForward, counterClockwise != (plane == apXZ)) << program;
                }
}

TEST(RS274DExtended, HelicesClimbEvenlyAboutTheirAxis) {
    const auto result = Read("G0X2Z1\nG3X0Y2Z10I-2P2");
    ASSERT_EQ(result.Curves.size(), 1U);
    const auto& points = result.Curves[0];
    ASSERT_EQ(points.size(), 91U) << "one and a quarter turns in steps of five degrees";
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double angle = static_cast<double>(i) * std::numbers::pi / 36;
        EXPECT_NEAR(points[i][0], 2 * std::cos(angle), 1e-9);
        EXPECT_NEAR(points[i][1], 2 * std::sin(angle), 1e-9);
        EXPECT_NEAR(points[i][2], 1 + 9.0 * static_cast<double>(i) / 90, 1e-9);
    }
    EXPECT_EQ(points.back(), (TRS274DPoint{0, 2, 10}));
}

TEST(RS274DExtended, UnequalRadiiMakeASpiral) {
    const auto result = Read("G0X2\nG2X-4I-2");
    ASSERT_EQ(result.Curves.size(), 1U);
    const auto& points = result.Curves[0];
    const TRS274DPoint& middle = points[points.size() / 2];
    EXPECT_NEAR(middle[0], 0, 1e-9);
    EXPECT_NEAR(middle[1], -3, 1e-9);
    EXPECT_THAT(result.Passed(), ElementsAre("arcs of unequal radii (drawn as spirals) 1@2"));
}

TEST(RS274DExtended, CountsWhatItPassesOver) {
    const struct {
        const char* Program;
        TTexts Passed;
    } rows[] = {
        {"G0X1\n(X)\n%\n\nG17G40G43H1G49G64G94M3S1M8\nG54G61G80M5M9T2F100.\nO0001\n", {}},
        {"#1=2\nG1X#1\nG1X[1]\n/G1X1\nO5 SUB\nO5 ENDSUB\nGOTO 5\nG1X?\nG1X1..2\n",
         {"blocks with variables 2@1", "blocks with expressions 1@3", "deleted blocks (/) 1@4",
          "blocks with control words 3@5", "blocks that cannot be read 1@8",
          "blocks with a bad number 1@9"}},
        {"G68X0Y0R5\nG68.2\nG68X1\nM98P1\nG-1\n\nM99999\nG4.03",
         {"code G68 2@1", "code G68.2 1@2", "code M98 1@4", "G codes out of range 1@5",
          "M codes out of range 1@7", "code G4.03 1@8"}},
        {"G10L1P1X5\nG10L2P10X5\nG10L2P1R30", {"code G10 3@1"}},
        {"G1X1A90\nG1C5U1", {"words of the axes A, B, C, U, V and W 2@1"}},
        {"X1", {"axis words without a motion mode 1@1"}},
        {"G2X1\nG2X5I0J0\nG2X6R.1\nG2X6R1",
         {"arcs without a centre 2@1", "arcs that cannot reach their end 2@3"}},
    };
    for (const auto& row : rows) EXPECT_EQ(Read(row.Program).Passed(), row.Passed) << row.Program;
}

TEST(RS274DExtended, TheToolIsWhereAPassedArcEnds) {
    EXPECT_THAT(Read("G2X5R1\nG1X6").Moves, ElementsAre("feed 5 0 0 > 6 0 0 @2"));
}

TEST(RS274DExtended, ErrorsNameTheLine) {
    const struct {
        const char* Program;
        const char* Error;
    } rows[] = {
        {"\nX1", "Cannot use axis commands with no motion mode set.Line: 2"},
        {"G2X1R.4", "Cannot reach destination with specified radius. Line: 1"},
        {"G1X1..1", "Invalid number in word \"X1..1\". Line: 1"},
        {"G1X[1]\nG77X1", ""},
        {"\nG1X1L999999999", "Repeat count 999999999 is larger than 9999. Line: 2"},
        {"G2I1Z1P100000", "The program repeats more than 1000000 motions. Line: 1"},
        {"G2I1Z1P999999999999999", "The program repeats more than 1000000 motions. Line: 1"},
        {"G83Z-9R0Q.000001", "The program repeats more than 1000000 motions. Line: 1"},
        {"G83Z-999999999999999R0Q.000000000001",
         "The program repeats more than 1000000 motions. Line: 1"},
    };
    for (const auto& row : rows) {
        const PathResult result(row.Program, {.Extended = true, .StopOnErrors = true});
        EXPECT_EQ(result.Error, row.Error) << row.Program;
    }
}

TEST(RS274DExtended, TraceSpeaksLikeThePlainOne) {
    const PathResult result("G0G90\nG43H1\nM1\nG55G1X1\nG2X2R.5\nG92.1G81Z-1\nM30",
                            {.Extended = true, .Trace = true});
    EXPECT_THAT(result.Trace,
                ElementsAre("quick move", "absolute distance mode", "skip word (G43)",
                            "program pause", "work coordinate system 2", "linear interpolation",
                            "X=1.000000, Y=0.000000, Z=0.000000", "arc interpolation",
                            "X=2.000000, Y=0.000000, Z=0.000000",
                            "I=0.000000, J=0.000000, K=0.000000, R=0.500000",
                            "clear coordinate offset", "drill", "program end"));
}

} // namespace
} // namespace ZEP
