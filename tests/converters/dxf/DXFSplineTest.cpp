#include <zep/converters/dxf/Spline.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace ZEP {
namespace {

using testing::DoubleNear;
using testing::Pointwise;

constexpr double Huge = 1e308;
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
const double Half = std::sqrt(0.5);

void ExpectPoint(const TGLArrayd3& point, const TGLArrayd3& expected) {
    EXPECT_THAT(point, Pointwise(DoubleNear(1e-9), expected));
}

double DistanceToChord(const TGLArrayd3& place, const TGLArrayd3& a, const TGLArrayd3& b) {
    const TGLArrayd3 chord{b[0] - a[0], b[1] - a[1], b[2] - a[2]};
    const TGLArrayd3 off{place[0] - a[0], place[1] - a[1], place[2] - a[2]};
    const double t = std::clamp(Dotd(off, chord) / Dotd(chord, chord), 0.0, 1.0);
    return std::hypot(off[0] - t * chord[0], off[1] - t * chord[1], off[2] - t * chord[2]);
}

/// How near the chain comes to the place, the way from its last point to the first included.
double DistanceTo(const TDXFChain& chain, const TGLArrayd3& place) {
    double least = INFINITY;
    const auto& points = chain.Points;
    for (std::size_t i = 0; i + (chain.Closed ? 0 : 1) < points.size(); ++i)
        least = std::min(least, DistanceToChord(place, points[i], points[(i + 1) % points.size()]));
    return least;
}

/// A circle of radius 1 in nine rational points.
TDXFSpline Circle() {
    TDXFSpline circle{.Degree = 2, .Closed = true};
    circle.ControlPoints = {{1, 0},   {1, 1},  {0, 1},  {-1, 1}, {-1, 0},
                            {-1, -1}, {0, -1}, {1, -1}, {1, 0}};
    circle.Weights = {1, Half, 1, Half, 1, Half, 1, Half, 1};
    circle.Knots = {0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4};
    return circle;
}

TEST(DXFSpline, WeightsMakeACircle) {
    const TDXFChain chain = SplineChain(Circle());
    EXPECT_TRUE(chain.Closed);
    EXPECT_THAT(chain.Points.size(), testing::AllOf(testing::Gt(30U), testing::Lt(200U)));
    for (const TGLArrayd3& point : chain.Points)
        EXPECT_NEAR(std::hypot(point[0], point[1]), 1, 1e-12);
    ExpectPoint(chain.Points.front(), {1, 0, 0});
    EXPECT_LT(chain.Points.back()[1], -1e-3); // the first is not repeated
}

TEST(DXFSpline, PassesWhereTheRecurrenceSays) {
    const struct {
        const char* Name;
        TDXFSpline Spline;
        TGLArrayd3 First, On, Last;
    } rows[] = {
        {"one cubic, at its middle",
         {.Degree = 3,
          .Knots = {0, 0, 0, 0, 1, 1, 1, 1},
          .ControlPoints = {{0, 0}, {0, 4}, {4, 4, 8}, {4, 0}}},
         {0, 0, 0},
         {2, 3, 3},
         {4, 0, 0}},
        {"knots are made",
         {.Degree = 3, .ControlPoints = {{0, 0}, {0, 4}, {4, 4, 8}, {4, 0}}},
         {0, 0, 0},
         {2, 3, 3},
         {4, 0, 0}},
        {"two parabolas, where they meet",
         {.Degree = 2,
          .Knots = {0, 0, 0, 1, 2, 2, 2},
          .ControlPoints = {{0, 0}, {2, 4}, {6, 4}, {8, 0}}},
         {0, 0, 0},
         {4, 4, 0},
         {8, 0, 0}},
        {"even knots begin inside",
         {.Degree = 2, .Knots = {0, 1, 2, 3, 4, 5}, .ControlPoints = {{0, 0}, {2, 4}, {4, 0}}},
         {1, 2, 0},
         {2, 3, 0},
         {3, 2, 0}},
        {"straight",
         {.Degree = 1, .ControlPoints = {{0, 0}, {5, 0}, {5, 7}}},
         {0, 0, 0},
         {5, 0, 0},
         {5, 7, 0}},
        {"fewer points than the degree asks",
         {.Degree = 9, .ControlPoints = {{0, 0}, {1, 2}, {2, 0}}},
         {0, 0, 0},
         {1, 1, 0},
         {2, 0, 0}},
        {"weights that are none",
         {.Degree = 2, .Weights = {1, -1, 1}, .ControlPoints = {{0, 0}, {1, 2}, {2, 0}}},
         {0, 0, 0},
         {1, 1, 0},
         {2, 0, 0}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        const TDXFChain chain = SplineChain(row.Spline);
        ASSERT_GE(chain.Points.size(), 3U);
        ExpectPoint(chain.Points.front(), row.First);
        EXPECT_LT(DistanceTo(chain, row.On), 2e-3);
        ExpectPoint(chain.Points.back(), row.Last);
    }
    EXPECT_EQ(SplineChain(rows[4].Spline).Points.size(), 3U);
}

TEST(DXFSpline, ClosesWithoutKnotsPeriodically) {
    // Of a square's corners it touches the middles of the sides.
    const TDXFChain chain = SplineChain(
        {.Degree = 2, .Closed = true, .ControlPoints = {{0, 0}, {2, 0}, {2, 2}, {0, 2}, {0, 0}}});
    EXPECT_TRUE(chain.Closed);
    ExpectPoint(chain.Points.front(), {1, 0, 0});
    for (const TGLArrayd3& place : {TGLArrayd3{2, 1}, TGLArrayd3{1, 2}, TGLArrayd3{0, 1}})
        EXPECT_LT(DistanceTo(chain, place), 1e-9);
}

TEST(DXFSpline, GoesThroughFitPoints) {
    const std::vector<TGLArrayd3> places = {{0, 0}, {1, 2}, {3, 1, 1}, {3, 1, 1}, {4, 4, 2}};
    for (const bool closed : {false, true}) {
        const TDXFChain chain = SplineChain({.Closed = closed, .FitPoints = places});
        EXPECT_EQ(chain.Closed, closed);
        for (const TGLArrayd3& place : places) EXPECT_LT(DistanceTo(chain, place), 1e-9);
    }
    const TDXFChain straight = SplineChain({.FitPoints = {{0, 0}, {9, 3}}});
    EXPECT_LT(DistanceTo(straight, {3, 1}), 1e-9);
    // Ends that are known to go up.
    const TDXFChain arch =
        SplineChain({.FitPoints = {{0, 0}, {8, 0}}, .StartTangent = {0, 5}, .EndTangent = {0, -5}});
    EXPECT_LT(DistanceTo(arch, {4, 2}), 2e-3); // 8/8 of either tangent at the middle
    for (std::size_t i = 0; i < arch.Points.size(); ++i) EXPECT_GE(arch.Points[i][1], 0);
}

TEST(DXFSpline, CirclePointsGiveNearlyACircle) {
    TDXFSpline spline{.Closed = true};
    for (int i = 0; i < 24; ++i)
        spline.FitPoints.push_back({std::cos(i * M_PI / 12), std::sin(i * M_PI / 12), 0});
    for (const TGLArrayd3& point : SplineChain(spline).Points)
        EXPECT_NEAR(std::hypot(point[0], point[1]), 1, 1e-3);
}

TEST(DXFSpline, AnyDataGiveABoundedFiniteChain) {
    std::vector<TGLArrayd3> wild;
    for (int i = 0; i < 1000; ++i) wild.push_back({i % 2 * 1e9, i % 3 * 1e-9, i % 5 * 1e3});
    std::vector<TDXFSpline> splines = {
        {},
        {.ControlPoints = {{1, 1}}},
        {.FitPoints = {{1, 1}}},
        {.FitPoints = {{1, 1}, {1, 1}}},
        {.ControlPoints = {{1, 1}, {1, 1}, {1, 1}}},
        {.Degree = -5, .ControlPoints = wild},
        {.Degree = 1'000'000, .ControlPoints = wild},
        {.Degree = 3, .Closed = true, .ControlPoints = wild},
        {.Closed = true, .FitPoints = wild},
        {.ControlPoints = {{0, 0}, {NaN, 0}, {1, 1}}},
        {.FitPoints = {{0, 0}, {INFINITY, 0}}},
        {.ControlPoints = {{-Huge, 0}, {Huge, 0}, {Huge, -Huge}, {0, 0}}},
        {.FitPoints = {{-Huge, 0}, {Huge, 0}, {0, 0}}},
        {.Degree = 1, .Knots = {0, NaN, 1, 2}, .ControlPoints = {{0, 0}, {1, 1}}},
        {.Degree = 1, .Knots = {3, 2, 1, 0}, .ControlPoints = {{0, 0}, {1, 1}}},
        {.Degree = 1, .Knots = {1, 1, 1, 1}, .ControlPoints = {{0, 0}, {1, 1}}},
        {.Degree = 1, .Knots = {-Huge, -Huge, Huge, Huge}, .ControlPoints = {{0, 0}, {1, 1}}},
        {.Degree = 2, .Weights = {Huge, 1e-320, Huge}, .ControlPoints = {{9, 0}, {1, 1}, {2, 2}}},
        {.Closed = true, .ControlPoints = {{0, 0}, {1, 1}, {0, 0}}},
        {.Closed = true, .ControlPoints = {{0, 0}, {0, 0}}},
        {.Closed = true, .FitPoints = {{0, 0}, {0, 0}}},
        {.FitPoints = {{0, 0}, {1, 1}}, .StartTangent = {Huge, Huge}, .EndTangent = {NaN, 0}},
    };
    for (std::size_t i = 0; i < splines.size(); ++i) {
        const TDXFSpline& spline = splines[i];
        const TDXFChain chain = SplineChain(spline);
        EXPECT_LE(chain.Points.size(),
                  65 * (spline.ControlPoints.size() + spline.FitPoints.size() + 1))
            << i;
        for (const TGLArrayd3& point : chain.Points)
            EXPECT_TRUE(std::isfinite(point[0] + point[1] + point[2])) << i;
    }
}

} // namespace
} // namespace ZEP
