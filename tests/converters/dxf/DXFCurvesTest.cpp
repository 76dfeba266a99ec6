#include <zep/converters/dxf/Curves.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace ZEP {
namespace {

using std::numbers::pi;
using testing::DoubleNear;
using testing::Pointwise;

constexpr double Huge = 1e308;
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Near = 1e-9;

using TCorners = std::vector<TDXFBulgeVertex>;

void ExpectPoint(const TGLArrayd3& point, const TGLArrayd3& expected) {
    EXPECT_THAT(point, Pointwise(DoubleNear(Near), expected));
}

double DistanceTo(const TGLArrayd3& point, double x, double y) {
    return std::hypot(point[0] - x, point[1] - y);
}

TEST(DXFCurves, BulgesAreArcsAboutTheirCentre) {
    const double quarter = std::tan(pi / 8);
    const struct {
        const char* Name;
        double Bulge;
        TGLArrayd3 Center; // of the arc from (0, 0) to (2, 0)
        double Radius;
        TGLArrayd3 Middle;
        std::size_t Points;
    } rows[] = {
        {"half circle, below", 1, {1, 0}, 1, {1, -1, 0}, 37},
        {"half circle, above", -1, {1, 0}, 1, {1, 1, 0}, 37},
        {"quarter", quarter, {1, 1}, std::sqrt(2.0), {1, 1 - std::sqrt(2.0), 0}, 19},
        {"three quarters", -1 / quarter, {1, 1}, std::sqrt(2.0), {1, 1 + std::sqrt(2.0), 0}, 55},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        const TDXFChain chain = BulgedChain(TCorners{{{0, 0, 0}, row.Bulge}, {{2, 0, 0}}}, false);
        ASSERT_EQ(chain.Points.size(), row.Points);
        EXPECT_FALSE(chain.Closed);
        for (const TGLArrayd3& point : chain.Points)
            EXPECT_NEAR(DistanceTo(point, row.Center[0], row.Center[1]), row.Radius, Near);
        ExpectPoint(chain.Points.front(), {0, 0, 0});
        ExpectPoint(chain.Points[row.Points / 2], row.Middle);
        ExpectPoint(chain.Points.back(), {2, 0, 0});
    }
}

TEST(DXFCurves, BulgesOfAnySizeGiveFiniteChains) {
    const struct {
        double Bulge;
        std::size_t Points;
    } rows[] = {{0, 2},     {1e-300, 2}, {-1e-9, 2},    {0.01, 2},      {1e6, 73},
                {-1e6, 73}, {Huge, 2},   {INFINITY, 2}, {-INFINITY, 2}, {NaN, 2}};
    for (const auto& row : rows) {
        const TDXFChain chain = BulgedChain(TCorners{{{0, 0, 0}, row.Bulge}, {{8, 0, 0}}}, false);
        EXPECT_EQ(chain.Points.size(), row.Points) << row.Bulge;
        for (const TGLArrayd3& point : chain.Points)
            EXPECT_TRUE(std::isfinite(point[0]) && std::isfinite(point[1])) << row.Bulge;
    }
}

TEST(DXFCurves, TheLastBulgeClosesAPolyline) {
    const TDXFChain circle = BulgedChain(TCorners{{{0, 0, 5}, 1}, {{2, 0, 5}, 1}}, true);
    EXPECT_TRUE(circle.Closed);
    ASSERT_EQ(circle.Points.size(), 72U);
    for (const TGLArrayd3& point : circle.Points) {
        EXPECT_NEAR(DistanceTo(point, 1, 0), 1, Near);
        EXPECT_EQ(point[2], 5);
    }
    // A first point that is repeated is dropped, an open chain keeps it.
    const TCorners triangle{{{0, 0, 0}}, {{1, 0, 0}}, {{0, 1, 0}}, {{0, 0, 0}}};
    EXPECT_EQ(BulgedChain(triangle, true).Points.size(), 3U);
    EXPECT_EQ(BulgedChain(triangle, false).Points.size(), 4U);
    EXPECT_EQ(BulgedChain(TCorners{{{0, 0, 0}}, {{1, 0, 0}, 1}}, false).Points.size(), 2U);
}

TEST(DXFCurves, LeavesOutWhatIsNoPolyline) {
    for (const TCorners& corners :
         {TCorners{}, TCorners{{{1, 2, 3}, 1}}, TCorners{{{0, 0, 0}}, {{NaN, 0, 0}}},
          TCorners{{{0, 0, 0}, 1}, {{INFINITY, 0, 0}}}})
        for (const bool closed : {false, true})
            EXPECT_TRUE(BulgedChain(corners, closed).Points.empty());
    EXPECT_EQ(BulgedChain(TCorners{{{-Huge, 0, 0}, 1}, {{Huge, 0, 0}}}, false).Points.size(), 2U);
}

TEST(DXFCurves, EllipsesFollowTheirAxes) {
    const struct {
        const char* Name;
        TDXFEllipse Ellipse;
        std::size_t Points;
        bool Closed;
        TGLArrayd3 First, Quarter, Last; // a quarter of the points further on
    } rows[] = {
        {"whole",
         {{1, 2, 3}, {4, 0, 0}, {0, 0, 1}, 0.5, 0, 2 * pi},
         72,
         true,
         {5, 2, 3},
         {1, 4, 3},
         {1 + 4 * std::cos(pi / 36), 2 - 2 * std::sin(pi / 36), 3}},
        {"half",
         {{0, 0, 0}, {0, 2, 0}, {0, 0, 1}, 0.5, 0, pi},
         37,
         false,
         {0, 2, 0},
         {-std::sqrt(0.5), std::sqrt(2.0), 0},
         {0, -2, 0}},
        {"seen from below",
         {{0, 0, 0}, {2, 0, 0}, {0, 0, -3}, 0.5, 0, pi},
         37,
         false,
         {2, 0, 0},
         {std::sqrt(2.0), -std::sqrt(0.5), 0},
         {-2, 0, 0}},
        {"through zero",
         {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}, 1, 1.5 * pi, pi / 2},
         37,
         false,
         {0, -1, 0},
         {std::sqrt(0.5), -std::sqrt(0.5), 0},
         {0, 1, 0}},
        {"turns",
         {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}, 1, 0, 1000 * pi},
         72,
         true,
         {1, 0, 0},
         {0, 1, 0},
         {std::cos(pi / 36), -std::sin(pi / 36), 0}},
        {"a turn, rounded",
         {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}, 1, 0, 6.2832},
         72,
         true,
         {1, 0, 0},
         {0, 1, 0},
         {std::cos(pi / 36), -std::sin(pi / 36), 0}},
        {"upright",
         {{0, 0, 0}, {1, 0, 0}, {0, -1, 0}, 2, 0, pi},
         37,
         false,
         {1, 0, 0},
         {std::sqrt(0.5), 0, std::sqrt(2.0)},
         {-1, 0, 0}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        const TDXFChain chain = EllipseChain(row.Ellipse);
        ASSERT_EQ(chain.Points.size(), row.Points);
        EXPECT_EQ(chain.Closed, row.Closed);
        ExpectPoint(chain.Points.front(), row.First);
        ExpectPoint(chain.Points[row.Points / 4], row.Quarter);
        ExpectPoint(chain.Points.back(), row.Last);
    }
}

TEST(DXFCurves, LeavesOutWhatIsNoEllipse) {
    for (const TDXFEllipse& ellipse :
         {TDXFEllipse{.Start = NaN}, TDXFEllipse{.End = INFINITY}, TDXFEllipse{.Ratio = NaN},
          TDXFEllipse{.Center = {Huge, 0, 0}, .MajorAxis = {Huge, 0, 0}},
          TDXFEllipse{.MajorAxis = {0, INFINITY, 0}}})
        EXPECT_TRUE(EllipseChain(ellipse).Points.empty());
    EXPECT_EQ(EllipseChain({.Start = -Huge, .End = Huge}).Points.size() > 1, true);
}

} // namespace
} // namespace ZEP
