#include <zep/converters/dxf/Curves.h>
#include <zep/converters/dxf/Spline.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace ZEP {
namespace {

constexpr double Huge = 1e308;
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

using TCorners = std::vector<TDXFBulgeVertex>;

TEST(DXFCurves, BulgesOfAnySizeGiveFiniteChains) {
    const std::pair<double, std::size_t> rows[] = {
        {0, 2},     {1e-300, 2}, {-1e-9, 2},    {0.01, 2},      {1e6, 73},
        {-1e6, 73}, {Huge, 2},   {INFINITY, 2}, {-INFINITY, 2}, {NaN, 2}};
    for (const auto& [bulge, points] : rows) {
        const TDXFChain chain = BulgedChain(TCorners{{{0, 0, 0}, bulge}, {{8, 0, 0}}}, false);
        EXPECT_EQ(chain.Points.size(), points) << bulge;
        for (const TGLArrayd3& point : chain.Points)
            EXPECT_TRUE(std::isfinite(point[0]) && std::isfinite(point[1])) << bulge;
    }
    for (const TCorners& corners :
         {TCorners{}, TCorners{{{1, 2, 3}, 1}}, TCorners{{{0, 0, 0}}, {{NaN, 0, 0}}},
          TCorners{{{0, 0, 0}, 1}, {{INFINITY, 0, 0}}}})
        for (const bool closed : {false, true})
            EXPECT_TRUE(BulgedChain(corners, closed).Points.empty());
    EXPECT_EQ(BulgedChain(TCorners{{{-Huge, 0, 0}, 1}, {{Huge, 0, 0}}}, false).Points.size(), 2U);
    TCorners many(100);
    for (int i = 0; i < 100; ++i) many[std::size_t(i)] = {{double(i), 0, 0}, 1};
    EXPECT_EQ(BulgedChain(many, false).Points.size(), 100U + 99 * 35);
    EXPECT_EQ(BulgedChain(many, false, 50).Points.size(), 100U + 2 * 35) << "two arcs reach it";
}

TEST(DXFCurves, EllipsesThatAreNoneAreLeftOut) {
    for (const TDXFEllipse& ellipse :
         {TDXFEllipse{.Start = NaN}, TDXFEllipse{.End = INFINITY}, TDXFEllipse{.Ratio = NaN},
          TDXFEllipse{.Center = {Huge, 0, 0}, .MajorAxis = {Huge, 0, 0}},
          TDXFEllipse{.MajorAxis = {0, INFINITY, 0}}})
        EXPECT_TRUE(EllipseChain(ellipse).Points.empty());
}

/// What was computed of weights lies on a circle, what goes through its points nearly.
TEST(DXFCurves, SplinesOfACircleAreCircles) {
    const double half = std::sqrt(0.5);
    const TDXFSpline rational{
        .Degree = 2,
        .Closed = true,
        .Knots = {0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4},
        .Weights = {1, half, 1, half, 1, half, 1, half, 1},
        .ControlPoints = {
            {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}, {1, 0}}};
    TDXFSpline fitted{.Closed = true};
    for (int i = 0; i < 24; ++i)
        fitted.FitPoints.push_back({std::cos(i * M_PI / 12), std::sin(i * M_PI / 12), 0});
    for (const auto& [spline, error] : {std::pair{rational, 1e-12}, {fitted, 1e-3}}) {
        const TDXFChain chain = SplineChain(spline);
        EXPECT_TRUE(chain.Closed);
        EXPECT_GT(chain.Points.size(), 30U);
        for (const TGLArrayd3& point : chain.Points)
            EXPECT_NEAR(std::hypot(point[0], point[1]), 1, error);
    }
}

TEST(DXFCurves, SplinesOfAnyDataAreBoundedFiniteChains) {
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
