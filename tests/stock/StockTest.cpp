#include "tests/ErrorOf.h"
#include <zep/converters/rs274d/Interpreter.h>
#include <zep/converters/rs274d/Report.h>
#include <zep/scene/Vectors.h>
#include <zep/stock/Guess.h>
#include <zep/stock/Run.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace ZEP {
namespace {

constexpr TStockTool Flat{.Diameter = 4};
constexpr TStockTool Ball{.Shape = TStockShape::Ball, .Diameter = 4};
constexpr TStockTool Bull{.Shape = TStockShape::Bull, .Diameter = 4, .CornerRadius = 0.5};
constexpr TStockTool Cone{.Shape = TStockShape::V, .Diameter = 4, .Angle = 60};
constexpr TStockBlock Block{{0, 0, -10}, {20, 20, 0}, 0.5};

/// From the middle of a row, beside the path's line y = 10.25, and the height there.
void ExpectSection(const TStock& stock, const TStockTool& tool, double z) {
    for (int row = 0; row < stock.Rows(); ++row) {
        const double away = std::abs((row + 0.5) * 0.5 - 10.25);
        const double height = std::min(0.0, z + tool.EdgeAt(away));
        EXPECT_NEAR(stock.Height(20, row), height, 1e-6) << row;
        EXPECT_EQ(stock.Mark(20, row), height < 0 ? TStockMark::Cut : TStockMark::Raw) << row;
    }
}

TEST(Stock, LineLeavesTheToolsSection) {
    EXPECT_DOUBLE_EQ(Ball.EdgeAt(1), 2 - std::sqrt(3));
    EXPECT_DOUBLE_EQ(Cone.EdgeAt(1), std::sqrt(3));
    EXPECT_DOUBLE_EQ(Bull.EdgeAt(1.5), 0);
    EXPECT_DOUBLE_EQ(Bull.EdgeAt(2), 0.5);
    for (const TStockTool& tool : {Flat, Ball, Bull, Cone}) {
        TStock stock(Block);
        EXPECT_NEAR(stock.CutLine(tool, {2, 10.25, -3}, {18, 10.25, -3}), 3, 1e-6);
        ExpectSection(stock, tool, -3);
    }
}

TEST(Stock, FloorIsCutThroughNoMore) {
    TStock stock(Block);
    stock.CutLine(Flat, {10.25, 10.25, 5}, {10.25, 10.25, -50});
    EXPECT_TRUE(stock.IsThrough(20, 20));
    EXPECT_EQ(stock.Height(20, 20), -10);
    EXPECT_FALSE(stock.IsThrough(25, 20));
}

/// Lower than any of so many stamps, and than these by little.
void ExpectAsStamped(const TStock& stock, const TStockTool& tool, const auto& placeAt) {
    constexpr int Stamps = 1500;
    for (int row = 0; row < stock.Rows(); row += 4)
        for (int column = 0; column < stock.Columns(); column += 4) {
            double stamped = 0;
            for (int i = 0; i <= Stamps; ++i) {
                const TGLArrayd3 place = placeAt(static_cast<double>(i) / Stamps);
                const double away =
                    std::hypot((column + 0.5) * 0.5 - place[0], (row + 0.5) * 0.5 - place[1]);
                stamped = std::min(stamped, place[2] + tool.EdgeAt(away));
            }
            stamped = std::max(stamped, stock.Min()[2]);
            const double height = stock.Height(column, row);
            EXPECT_LE(height, stamped + 1e-6);
            const bool isAtRim = height < 0 && stamped == 0;
            if (!isAtRim) {
                EXPECT_GE(height, stamped - 0.05) << column << ' ' << row;
            }
        }
}

TEST(Stock, SlopesAndArcsAreAsManyStamps) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> anywhere(0, 20), deep(-8, 0);
    for (const TStockTool& tool : {Flat, Ball, Bull, Cone})
        for (int i = 0; i < 4; ++i) {
            const TGLArrayd3 from{anywhere(random), anywhere(random), deep(random)};
            TGLArrayd3 to{anywhere(random), anywhere(random), deep(random)};
            if (i == 0) to = {from[0] + 0.3, from[1] + 0.1, from[2] - 4}; // steeper than its sides
            TStock line(Block), arc(Block);
            line.CutLine(tool, from, to);
            ExpectAsStamped(line, tool, [&](double t) { return from + t * (to - from); });
            const double radius = anywhere(random) / 3, start = deep(random), sweep = 0.3 + 1.9 * i;
            arc.CutArc(tool, from, radius, start, sweep);
            ExpectAsStamped(arc, tool, [&](double t) {
                const double angle = start + t * sweep;
                return from + TGLArrayd3{radius * std::cos(angle), radius * std::sin(angle), 0};
            });
        }
}

TEST(Stock, RefusesWhatItCannotCut) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const auto made = [](const TStockBlock& block) {
        return ErrorOf([&] { TStock stock(block); });
    };
    EXPECT_EQ(made({{0, 0, 0}, {10, 0, 1}, 1}),
              "A block of stock has a size above 0 along y, not 0.");
    EXPECT_EQ(made({{0, 0, nan}, {10, 1, 1}, 1}),
              "A block of stock has a size above 0 along z, not nan.");
    EXPECT_EQ(made({{0, 0, 0}, {1, 1, 1}, 0}), "A cell of stock has a size above 0, not 0.");
    EXPECT_EQ(made({{0, 0, 0}, {1e9, 1, 1}, 0.5}),
              "A block of stock has at most 16777216 cells, and 8192 along a side, not 2000000000 "
              "by 2: its cells must be larger.");
    TStock stock(Block);
    EXPECT_EQ(ErrorOf([&] { stock.CutLine({.Diameter = 0}, {}, {}); }),
              "A tool's diameter is a number from 0.001 to 10000 mm, not 0.");
    EXPECT_EQ(ErrorOf([&] {
                  stock.CutLine({}, {nan, 0, 0}, {});
              }),
              "A tool cannot go to what is no number.");
    stock.CutLine(Flat, {-1e300, 5, -1}, {1e300, 5, -1});
    stock.CutLine(Flat, {1e300, 1e300, -1}, {1e300, 1e300, -1});
    EXPECT_EQ(stock.Mark(0, 30), TStockMark::Raw);
}

/// Levels of a pocket with arcs in all planes, and at last a rapid through what is left.
TToolPath Pocket() {
    TToolPath path;
    TRS274DPoint at{0, 0, 5};
    const auto go = [&](bool rapid, const TRS274DPoint& to) {
        rapid ? path.Rapid(at, to, path.Count() + 1) : path.Feed(at, to, path.Count() + 1);
        at = to;
    };
    go(true, {5, 5, 5});
    for (int i = 0; i < 2000; ++i) go(false, {5 + 10.0 * (i % 2), 5 + i % 20 * 0.5, -i * 0.002});
    go(true, {15, 14.5, 5}); // back through its own cut
    path.Arc({.Plane = apXY, .Center = {10, 10, -4.5}, .Radius = 3, .Sweep = 360}, 2100);
    path.Arc({.Plane = apXZ,
              .Center = {10, 10, 0},
              .Radius = 6,
              .StartAngle = 180,
              .EndAngle = 360,
              .Sweep = 180},
             2101);
    at = {16, 10, 0};
    go(true, {19, 19, -2});
    return path;
}

std::vector<double> HeightsOf(const TStock& stock) {
    std::vector<double> heights;
    for (int row = 0; row < stock.Rows(); ++row)
        for (int column = 0; column < stock.Columns(); ++column)
            heights.push_back(stock.Height(column, row));
    return heights;
}

TEST(Stock, RunGoesBackToWhatCuttingAnewMakes) {
    const TToolPath path = Pocket();
    const TStockBlock fine{{0, 0, -10}, {20, 20, 0}, 0.1};
    TStock stock(fine);
    TStockRun run(stock, path, {Ball});
    while (!run.GoTo(path.Count(), 0, std::chrono::milliseconds(1)))
        EXPECT_LT(run.Done(), path.Count());
    EXPECT_GT(run.Bytes(), 0);
    EXPECT_LT(run.Bytes(), TStockRun::MaxBytes);
    ASSERT_EQ(run.RapidCuts().size(), 1U);
    EXPECT_EQ(run.RapidCuts()[0].Move, path.Count() - 1);
    for (const int moves : {1500, 3, 2003, 0, 700}) {
        TStock anew(fine);
        TStockRun cut(anew, path, {Ball});
        run.GoTo(moves + 1, 0.5);
        run.GoTo(moves);
        cut.GoTo(moves);
        EXPECT_EQ(HeightsOf(stock), HeightsOf(anew)) << moves;
    }
    EXPECT_EQ(run.RapidCuts().size(), 1U);
}

TEST(Stock, RapidsBetweenPlacesThatTheProgramTellsCutAsAWhole) {
    struct {
        const char* Program;
        double Depth; ///< of the only one; 0: none
    } const rows[] = {
        {"G0X10Y10Z5\nG0Z-8\n", 7.99},
        {"G0Z-1\nX10Y10\n", 0.99}, // where it comes to
        {"G0Z2\nX10Y10\nZ1\n", 0}, // not on the way from where the tool was
        {"G0X10Y10Z5\nG91G28Z0\nG90G0X15\nZ5\n", 0},
        {"G0X10Y10Z5\nG53G0Z-5\nG0Z5\n", 0},
        {"G1X10F9\nG0Y9Z-3\n", 2.99},
    };
    for (const auto& row : rows) {
        TToolPath path;
        TRS274DReport report;
        TRS274DInterpreter({}, path, report).Run(row.Program);
        TStock stock({{-20, -20, -10}, {20, 20, 0}, 0.5});
        TStockRun run(stock, path, {Flat});
        for (int i = 0; i < path.Count(); ++i)
            for (const double part : {0.3, 0.6, 0.9, 1.0}) run.GoTo(i, part);
        run.GoTo(path.Count());
        ASSERT_EQ(run.RapidCuts().size(), row.Depth > 0 ? 1U : 0U) << row.Program;
        if (row.Depth > 0) {
            EXPECT_NEAR(run.RapidCuts()[0].Depth, row.Depth, 1e-5) << row.Program;
        }
    }
}

TEST(Stock, ToolsAreGuessedFromTheirNames) {
    struct {
        const char* Name;
        TStockTool Tool;
        bool Knows = true;
    } const rows[] = {{"D=6 flat", {.Diameter = 6}},
                      {"6mm end mill", {.Diameter = 6}},
                      {"60MM LONG 6,5MM BALL NOSE", {.Shape = TStockShape::Ball, .Diameter = 6.5}},
                      {"1/4in ball", {.Shape = TStockShape::Ball, .Diameter = 6.35}},
                      {"V 60", {.Shape = TStockShape::V, .Angle = 60}, false},
                      {"drill 5 mm", {.Shape = TStockShape::V, .Diameter = 5, .Angle = 118}},
                      {"anything", {}, false}};
    for (const auto& row : rows) {
        const TGuessedTool guess = GuessTool({.Name = QString::fromLatin1(row.Name)});
        EXPECT_EQ(guess.Tool.Shape, row.Tool.Shape) << row.Name;
        EXPECT_DOUBLE_EQ(guess.Tool.Diameter, row.Tool.Diameter) << row.Name;
        EXPECT_DOUBLE_EQ(guess.Tool.Angle, row.Tool.Angle) << row.Name;
        EXPECT_EQ(guess.KnowsDiameter, row.Knows) << row.Name;
    }
    const auto block = GuessBlock(Pocket(), {Ball});
    ASSERT_TRUE(block);
    EXPECT_EQ(block->Min[0], 2);
    EXPECT_EQ(block->Max[2], 0);
}

} // namespace
} // namespace ZEP
