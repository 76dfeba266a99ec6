#include "tests/ErrorOf.h"
#include <zep/appearance/effects/EdgeTurns.h>
#include <zep/appearance/effects/Outline.h>
#include <zep/gl/Feedback.h>

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <random>

namespace ZEP {
namespace {

using TPolygon = std::vector<GLfloat>;

TPolygon Square(float x, float y, float size, float z = 0.5F) {
    return {x, y, z, x + size, y, z, x + size, y + size, z, x, y + size, z};
}

/// The contours' number, points and enclosed area: to their left it counts positive.
class TMeasure final : public TZEPOutline::TSink {
public:
    void Begin() override {
        ++Contours;
        m_points.clear();
    }
    void Point(const TZEPOutline::TPoint& point) override { m_points.push_back(point); }
    void End() override {
        Points += m_points.size();
        for (std::size_t i = 0; i < m_points.size(); ++i) {
            const auto& [x, y, z] = m_points[i];
            const auto& [nextX, nextY, nextZ] = m_points[(i + 1) % m_points.size()];
            Area += static_cast<double>(x * nextY - y * nextX) / 2;
        }
    }
    int Contours = 0;
    std::size_t Points = 0;
    double Area = 0;

private:
    std::vector<TZEPOutline::TPoint> m_points;
};

TMeasure Traced(const std::vector<TPolygon>& polygons) {
    TZEPOutline outline;
    for (const TPolygon& polygon : polygons) outline.Add(polygon);
    TMeasure measure;
    outline.Trace(measure);
    return measure;
}

TEST(Outline, ItIsThatOfTheUnion) {
    constexpr float none = std::numeric_limits<float>::quiet_NaN();
    constexpr float endless = std::numeric_limits<float>::infinity();
    struct Case {
        const char* Name;
        std::vector<TPolygon> Polygons;
        int Contours;
        double Area;
    };
    std::vector<TPolygon> ring;
    for (int i = 0; i < 9; ++i)
        if (i != 4) ring.push_back(Square(static_cast<float>(i % 3), static_cast<float>(i / 3), 1));
    const Case cases[] = {
        {"nothing", {}, 0, 0},
        {"one", {Square(0, 0, 2)}, 1, 4},
        {"the same twice", {Square(0, 0, 2), Square(0, 0, 2)}, 1, 4},
        {"apart", {Square(0, 0, 1), Square(2, 0, 1)}, 2, 2},
        {"side by side", {Square(0, 0, 1), Square(1, 0, 1)}, 1, 2},
        {"overlapping", {Square(0, 0, 2), Square(1, 1, 2)}, 1, 7},
        {"one before the other", {Square(0, 0, 4, 0.1F), Square(1, 1, 1, 0.9F)}, 1, 16},
        {"with a hole", ring, 2, 8},
        {"no area", {{0, 0, 0, 1, 1, 0, 2, 2, 0}, Square(0, 0, 0)}, 0, 0},
        {"no numbers", {{0, 0, 0, 1, none, 0, 1, 1, 0}, Square(endless, 0, 1)}, 0, 0},
    };
    for (const Case& c : cases) {
        const TMeasure measure = Traced(c.Polygons);
        EXPECT_EQ(measure.Contours, c.Contours) << c.Name;
        EXPECT_NEAR(measure.Area, c.Area, 1e-5) << c.Name;
    }
}

TEST(Outline, LoopsAreThoseOfEachPart) {
    TZEPOutline outline;
    outline.Add(Square(0, 0, 2));
    outline.Add(Square(2, 0, 2)); // beside it
    outline.Add(Square(1, 1, 2)); // over both
    TMeasure measure;
    outline.SendLoops(measure);
    EXPECT_EQ(measure.Contours, 2);
    EXPECT_NEAR(measure.Area, 8 + 4, 1e-5);
}

// 10,000 cells that share their corners are a square of four sides.
TEST(Outline, WhatNeighboursShareIsNotTraced) {
    std::vector<TPolygon> cells;
    for (int i = 0; i < 10'000; ++i)
        cells.push_back(Square(static_cast<float>(i % 100), static_cast<float>(i / 100), 1));
    const TMeasure measure = Traced(cells);
    EXPECT_EQ(measure.Contours, 1);
    EXPECT_NEAR(measure.Area, 10'000, 1e-3);
    EXPECT_LE(measure.Points, 400U);
}

/// Triangles of any kind, over and over each other: GLU must come to an end, and the union must
/// enclose what a grid of points finds in any of them.
TEST(Outline, TrianglesAtRandomCoverWhatTheyCover) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> place(0, 100);
    for (int round = 0; round < 20; ++round) {
        std::vector<TPolygon> triangles;
        for (int i = 0; i < 60; ++i) {
            const float x = place(random);
            const float y = place(random);
            const float size = place(random) / 5;
            triangles.push_back({x, y, 0.5F, x + size, y, 0.2F, x, y + size, 0.9F});
        }
        int covered = 0;
        constexpr int Steps = 400;
        for (int i = 0; i < Steps * Steps; ++i) {
            const auto at = [](int step) {
                return (static_cast<float>(step) + 0.5F) * 125 / Steps;
            };
            const float x = at(i % Steps);
            const float y = at(i / Steps);
            for (const TPolygon& t : triangles)
                if (x >= t[0] && y >= t[1] && (x - t[0]) + (y - t[1]) <= t[3] - t[0]) {
                    ++covered;
                    break;
                }
        }
        const double area = covered * (125.0 * 125.0) / (Steps * Steps);
        EXPECT_NEAR(Traced(triangles).Area, area, 0.01 * area) << round;
    }
}

TEST(Feedback, TokensOtherThanPolygonsAreErrors) {
    constexpr float mark = 0x1234BA00;
    const auto read = [](const std::vector<GLfloat>& tokens) {
        std::size_t corners = 0;
        ForEachPolygon(tokens,
                       [&](std::span<const GLfloat> polygon) { corners += polygon.size() / 3; });
        return corners;
    };
    const std::vector<GLfloat> triangle{GL_POLYGON_TOKEN, 3, 0, 0, 0, 1, 0, 0, 0, 1, 0};
    EXPECT_EQ(read({}), 0U);
    EXPECT_EQ(read(triangle), 3U);
    std::vector<GLfloat> marked{GL_PASS_THROUGH_TOKEN, mark, GL_POINT_TOKEN, 1, 2, 3};
    marked.insert(marked.end(), triangle.begin(), triangle.end());
    EXPECT_EQ(read(marked), 3U);

    struct Case {
        std::vector<GLfloat> Tokens;
        const char* Error;
    };
    const Case cases[] = {
        {{GL_LINE_TOKEN, 0, 0, 0, 1, 1, 1}, "ERROR: Unexpected feedback token 0x702 (1794)."},
        {{GL_POINT_TOKEN, 1, 2, 3}, "ERROR: Unexpected feedback token 0x701 (1793)."},
        {{GL_PASS_THROUGH_TOKEN, 7}, "ERROR: Unexpected feedback token 0x700 (1792)."},
        {{GL_PASS_THROUGH_TOKEN, mark, GL_POINT_TOKEN, 1, 2, 3, GL_POINT_TOKEN, 1, 2, 3},
         "ERROR: Unexpected feedback token 0x701 (1793)."},
        {{GL_PASS_THROUGH_TOKEN, mark, GL_PASS_THROUGH_TOKEN, mark, GL_POINT_TOKEN, 1, 2, 3},
         "ERROR: Unexpected feedback token 0x701 (1793)."},
        {{GL_POLYGON_TOKEN, 2, 0, 0, 0, 1, 1, 1}, "Assertion failure (ZEPClasses, line 3023)"},
        {{GL_POLYGON_TOKEN, 4, 0, 0, 0}, "ERROR: Unexpected feedback token 0x703 (1795)."},
        {{GL_POLYGON_TOKEN}, "ERROR: Unexpected feedback token 0x703 (1795)."},
        {{1e30F}, "ERROR: Unexpected feedback token 0x0 (0)."},
    };
    for (const Case& c : cases) EXPECT_EQ(ErrorOf([&] { read(c.Tokens); }), c.Error);
}

using TTurns = std::map<std::pair<TZEPEdgeTurns::TPoint, TZEPEdgeTurns::TPoint>, int>;

TTurns TurnsOf(const TZEPEdgeTurns& edges) {
    TTurns turns;
    edges.ForEach([&](const TZEPEdgeTurns::TEdge& edge) {
        EXPECT_TRUE(turns.try_emplace({edge.Low, edge.High}, edge.Turns).second) << "kept twice";
    });
    return turns;
}

/// Edges that come and go at random, few and many, stand where a plain map has them.
TEST(EdgeTurns, WhatRunsBothWaysIsGone) {
    std::mt19937 random(11);
    TZEPEdgeTurns edges;
    for (const int points : {2, 12, 60, 300}) {
        edges.Clear();
        TTurns expected;
        std::uniform_int_distribution<int> place(0, points - 1);
        for (int i = 0; i < 20'000; ++i) {
            const TZEPEdgeTurns::TPoint from{static_cast<float>(place(random)), 0.5F, 1};
            const TZEPEdgeTurns::TPoint to{static_cast<float>(place(random)), 0.5F, 1};
            edges.Add(from, to);
            if (from == to) continue;
            const auto edge = expected.try_emplace(std::minmax(from, to)).first;
            edge->second += from < to ? 1 : -1;
            if (edge->second == 0) expected.erase(edge);
        }
        EXPECT_EQ(TurnsOf(edges), expected) << points;
    }
}

TEST(EdgeTurns, ZeroIsZeroWithEitherSign) {
    TZEPEdgeTurns edges;
    edges.Add({0.0F, -0.0F, 1}, {1, 1, 1});
    edges.Add({1, 1, 1}, {-0.0F, 0.0F, 1});
    EXPECT_TRUE(TurnsOf(edges).empty());
}

} // namespace
} // namespace ZEP
