#include <zep/view/Extent.h>

#include <zep/objects/Line.h>
#include <zep/scene/Add.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vertex3.h>
#include <zep/view/Camera.h>
#include <zep/view/Fitting.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace ZEP {
namespace {

double FarthestOf(const std::vector<TGLArrayd3>& points, const TGLArrayd3& direction) {
    double farthest = -1e300;
    for (const TGLArrayd3& point : points) farthest = std::max(farthest, Dotd(point, direction));
    return farthest;
}

TEST(Extent, NothingReachesFarBeyondItsCorners) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> place(-100, 100);
    for (const double distance : {0.0, 1e6}) {
        TZEPExtent extent;
        TZEPExtent halves[2];
        std::vector<TGLArrayd3> points;
        for (int i = 0; i < 3000; ++i) {
            TGLArrayd3 point{place(random), place(random), place(random)};
            if (std::hypot(point[0], point[1], point[2]) > 100) continue; // a ball
            point[0] += distance;
            points.push_back(point);
            extent.Add({point, point});
            halves[i % 2].Add({point, point});
        }
        TZEPExtent sum;
        for (const TZEPExtent& half : halves) sum.Add(half);
        EXPECT_EQ(sum.Bounds()->Min, extent.Bounds()->Min);
        EXPECT_EQ(sum.Bounds()->Max, extent.Bounds()->Max);
        for (int i = 0; i < 200; ++i) {
            TGLArrayd3 direction{place(random), place(random), place(random)};
            Normalized(direction);
            const double all = FarthestOf(points, direction);
            EXPECT_LT(all - FarthestOf(extent.Corners(), direction), 12);
            EXPECT_LT(all - FarthestOf(sum.Corners(), direction), 12);
        }
    }
}

TEST(Extent, WhatSticksOutIsFound) {
    TZEPExtent extent;
    for (int i = 0; i < 10'000; ++i) extent.Add({{0, 0, 0}, {1, 1, 1}});
    extent.Add({{-50, 20, 0}, {-50, 20, 3}});
    EXPECT_EQ(extent.Bounds()->Min, (TGLArrayd3{-50, 0, 0}));
    EXPECT_EQ(extent.Bounds()->Max, (TGLArrayd3{1, 20, 3}));
    EXPECT_EQ(FarthestOf(extent.Corners(), {-1, 0, 0}), 50);
    EXPECT_EQ(FarthestOf(extent.Corners(), {-1, 1, 1}), 73);
}

TEST(Extent, WhatCannotBeDrawnHidesNothingElse) {
    using TLimits = std::numeric_limits<double>;
    for (const double bad : {TLimits::quiet_NaN(), TLimits::infinity(), -1e160, 1e200}) {
        TZEPScene scene;
        auto* camera = Add<TZEPCamera>(&scene);
        Add<TZEPLine>(&scene)->P1()->SetData(bad, 2, 0);
        auto* line = Add<TZEPLine>(&scene);
        line->P1()->SetData(-4, 2, 0);
        line->P2()->SetData(4, 3, 0);
        EXPECT_EQ(VisibleExtent(scene).Bounds().value_or(TZEPBounds{}).Max, (TGLArrayd3{4, 3, 0}))
            << bad;
        EXPECT_TRUE(FitCamera(*camera, scene, 1)) << bad;
    }
}

} // namespace
} // namespace ZEP
