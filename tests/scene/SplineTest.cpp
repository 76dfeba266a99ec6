#include <zep/scene/Spline.h>

#include <gtest/gtest.h>

#include <cmath>

namespace ZEP {
namespace {

using Points = std::vector<TGLArrayd3>;

TZEPSpline& Fill(TZEPSpline& spline, const Points& points) {
    spline.Clear();
    for (const TGLArrayd3& p : points) spline.AddVertex(p);
    return spline;
}

TGLArrayd3 At(TZEPSpline& spline, double t) {
    TGLArrayd3 v{9, 9, 9};
    spline.GetVertex(t, v);
    return v;
}

/// Second difference quotient of coordinate `k` about `t`.
double Bend(TZEPSpline& spline, double t, std::size_t k) {
    constexpr double E = 1e-4;
    return (At(spline, t - E)[k] - 2 * At(spline, t)[k] + At(spline, t + E)[k]) / (E * E);
}

double Slope(TZEPSpline& spline, double t, std::size_t k) {
    constexpr double E = 1e-6;
    return (At(spline, t + E)[k] - At(spline, t - E)[k]) / (2 * E);
}

const Points Curve{{0, 0, 0}, {1, 2, -1}, {3, 1, 0}, {4, -2, 2}, {2, -3, 5}, {0, 0, 6}};

TEST(Spline, GoesThroughItsPoints) {
    TZEPSpline spline;
    for (std::size_t n = 2; n <= Curve.size(); ++n) {
        Fill(spline, {Curve.begin(), Curve.begin() + static_cast<std::ptrdiff_t>(n)});
        for (std::size_t i = 0; i < n; ++i) {
            const TGLArrayd3 v = At(spline, static_cast<double>(i) / static_cast<double>(n - 1));
            for (std::size_t k = 0; k < 3; ++k) EXPECT_NEAR(v[k], Curve[i][k], 1e-12) << n << i;
        }
    }
}

TEST(Spline, IsSmoothAtItsPointsAndStraightAtItsEnds) {
    TZEPSpline spline;
    Fill(spline, Curve);
    for (std::size_t k = 0; k < 3; ++k) {
        for (const double knot : {0.2, 0.4, 0.6, 0.8}) {
            EXPECT_NEAR(Slope(spline, knot - 2e-6, k), Slope(spline, knot + 2e-6, k), 2e-3);
            EXPECT_NEAR(Bend(spline, knot - 2e-4, k), Bend(spline, knot + 2e-4, k), 3);
        }
        EXPECT_NEAR(Bend(spline, 2e-4, k), 0, 1);
        EXPECT_NEAR(Bend(spline, 1 - 2e-4, k), 0, 1);
        EXPECT_GT(std::abs(Bend(spline, 0.5, k)), 3) << "the bounds above would not tell";
    }
}

TEST(Spline, ThreePointsBendByTheKnownAmount) {
    TZEPSpline spline;
    Fill(spline, {{0, 0, 0}, {1, 1, 0}, {2, 0, 0}});
    // On [0, 1/2] with u = 2t the natural spline through heights 0, 1, 0 is (3u - u^3) / 2.
    for (const double u : {0.25, 0.5, 0.75})
        EXPECT_NEAR(At(spline, u / 2)[1], (3 * u - u * u * u) / 2, 1e-12) << u;
}

TEST(Spline, TwoPointsMakeALine) {
    TZEPSpline spline;
    Fill(spline, {{0, 2, 4}, {8, 2, 0}});
    EXPECT_EQ(At(spline, 0.25), (TGLArrayd3{2, 2, 3}));
    EXPECT_EQ(At(spline, 1), (TGLArrayd3{8, 2, 0}));
}

TEST(Spline, OutsideOfItsRangeIsZero) {
    TZEPSpline spline;
    EXPECT_EQ(At(spline, 0.5), zero3d);
    Fill(spline, Curve);
    for (const double t : {-0.0000001, 1.0000001, -5.0, 7.0, std::nan("")})
        EXPECT_EQ(At(spline, t), zero3d) << t;
}

TEST(Spline, OnePointIsEverywhere) {
    TZEPSpline spline;
    Fill(spline, {{1, 2, 3}});
    spline.Prepare();
    for (const double t : {0.0, 0.3, 1.0}) EXPECT_EQ(At(spline, t), (TGLArrayd3{1, 2, 3})) << t;
    EXPECT_EQ(At(spline, 1.5), zero3d);
}

TEST(Spline, NewPointsAreSeenAfterAnEvaluation) {
    TZEPSpline grown;
    TZEPSpline whole;
    Fill(whole, Curve);
    for (const TGLArrayd3& p : Curve) {
        grown.AddVertex(p);
        At(grown, 0.5);
    }
    EXPECT_EQ(At(grown, 0.37), At(whole, 0.37));
    Fill(grown, {{5, 5, 5}, {7, 7, 7}});
    EXPECT_EQ(At(grown, 0.5), (TGLArrayd3{6, 6, 6}));
}

TEST(Spline, ClosedOnesAreEvaluatedAsOpen) {
    TZEPSpline spline;
    Fill(spline, Curve);
    const TGLArrayd3 open = At(spline, 0.9);
    spline.SetClosed(true);
    EXPECT_TRUE(spline.Closed());
    EXPECT_EQ(At(spline, 0.9), open);
}

} // namespace
} // namespace ZEP
