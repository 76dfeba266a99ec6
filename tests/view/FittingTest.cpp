#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/scene/Vectors.h>

#include <zep/view/Extent.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace ZEP {
namespace {

constexpr double Pixel = 2e-3; // of a view from -1 to 1 that is 1000 pixels wide
constexpr double Inf = std::numeric_limits<double>::infinity();

using TPoints = std::vector<TGLArrayd3>;

/// What the points cover of the view, -1 to 1 on each axis, by the matrices that are drawn with.
struct TSeen {
    TSeen(const TZEPCamera& camera, const TPoints& points, double aspect) {
        TGLMatrixd4 matrix = camera.GetViewMatrix();
        const int height = 10'000'000; // the sides of a view are whole numbers
        MultMatrixd(camera.GetProjectionMatrix(static_cast<int>(height * aspect), height), matrix,
                    matrix);
        for (TGLArrayd3 point : points) {
            const double w = Dotd(point, {matrix[0][3], matrix[1][3], matrix[2][3]}) + matrix[3][3];
            Xformd(matrix, point);
            MinBoundsd(Min, point / w);
            MaxBoundsd(Max, point / w);
            Behind = Behind || w <= 0;
        }
    }
    /// The farthest to any side.
    [[nodiscard]] double Reach() const { return std::max({Max[0], Max[1], -Min[0], -Min[1]}); }
    [[nodiscard]] bool IsBetweenPlanes() const { return Min[2] > -1 && Max[2] < 1 && !Behind; }

    TGLArrayd3 Min{Inf, Inf, Inf}, Max{-Inf, -Inf, -Inf};
    bool Behind = false;
};

class TRandom {
public:
    double Between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(m_engine);
    }
    TGLArrayd3 Point(double reach = 1) {
        return {Between(-reach, reach), Between(-reach, reach), Between(-reach, reach)};
    }

private:
    std::mt19937 m_engine{11};
};

TEST(Fitting, SomePointReachesTheMarginAndNoneIsOutside) {
    TRandom random;
    int narrow = 0;
    for (int i = 0; i < 400; ++i) {
        SCOPED_TRACE(i);
        TZEPNode carrier;
        for (TZEPVertex3* part : {carrier.XForm()->Translate(), carrier.XForm()->Rotate()}) {
            const auto [x, y, z] = random.Point(90);
            part->SetData(x, y, z);
        }
        auto* camera = Add<TZEPCamera>(&carrier);
        camera->SetOrthographic(i % 2);
        camera->SetFOVY(random.Between(5, 70));
        const auto [x, y, z] = random.Point();
        camera->Position()->SetData(x, y, z);
        if (i % 3 == 0) camera->Roll(30);
        const TGLArrayd3 middle = random.Point(1000);
        const double size = std::pow(10, random.Between(-3, 4));
        TPoints points;
        for (int k = 0; k <= i % 30; ++k) points.push_back(middle + random.Point(size));
        const double aspect = random.Between(0.3, 3);
        const double margin = random.Between(1, 1.5);
        if (i % 5) {
            ASSERT_TRUE(FitCamera(*camera, points, aspect, {.Margin = margin}));
        } else {
            points = CornersOf({middle, middle + size * TGLArrayd3{0.2, 1, 2}});
            const TZEPBounds box{points.front(), points.back()};
            ASSERT_TRUE(FitCamera(*camera, box, aspect, {.Margin = margin}));
        }
        const TSeen seen(*camera, points, aspect);
        EXPECT_TRUE(seen.IsBetweenPlanes());
        if (points.size() == 1) continue;
        EXPECT_LE(seen.Reach(), 1 / margin + Pixel);
        EXPECT_NEAR(seen.Min[0], -seen.Max[0], Pixel);
        EXPECT_NEAR(seen.Min[1], -seen.Max[1], Pixel);
        narrow += seen.Reach() < 1 / margin - Pixel ? 1 : 0; // the eye keeps clear of it
    }
    EXPECT_LT(narrow, 20);
}

/// Ends as the row says, and with true everything is before the eye and within the view.
TEST(Fitting, TakesWhateverItIsGiven) {
    struct TRow {
        const char* Name;
        TPoints Points;
        bool Fits;
        double Least = 0; ///< of the view that is covered
        TGLArrayd3 Eye{3, -4, 2}, Up{0, 0, 1};
        double Aspect = 1;
    };
    const TPoints cube = CornersOf({{-1, -1, -1}, {1, 1, 1}});
    const double nan = std::nan("");
    const TRow rows[] = {
        {"nothing", {}, false},
        {"no numbers", {{nan, 0, 0}, {0, Inf, 0}}, false},
        {"no numbers beside others", {{nan, 0, 0}, {1, 2, 3}, {4, 5, 6}}, true},
        {"out of range", {{-1.7e308, 0, 0}, {1.7e308, 1, 1}}, false},
        {"a point counts as a box of size 1", {{3, 3, 3}}, true},
        {"a point far away", {{1e15, 0, 0}}, true},
        {"twice the same", {{3, 3, 3}, {3, 3, 3}}, true},
        {"far away and tiny", {{1e6, 1e6, 0}, {1e6 + 0.01, 1e6 + 0.02, 0.005}}, true, 0.8},
        {"a line from its end", {{0, 0, 0}, {0, 7, 0}}, true, 0, {0, -5, 0}},
        {"a rectangle from its edge", {{0, 0, 0}, {100, 50, 0}}, true, 0.8, {0, -5, 0}},
        {"from above, up along the view", cube, true, 0.8, {0, 0, 5}},
        {"along another up", cube, true, 0.8, {0, -5, 0}, {0, 2, 0}},
        {"along a slanted up", cube, true, 0.8, {-4, -4, -4}, {1, 1, 1}},
        {"the eye in the target", cube, true, 0.8, {0, 0, 0}},
        {"no aspect", cube, true, 0.8, {3, -4, 2}, {0, 0, 1}, 0},
        {"no number as aspect", cube, true, 0.8, {3, -4, 2}, {0, 0, 1}, nan},
    };
    for (const TRow& row : rows)
        for (const bool parallel : {false, true}) {
            SCOPED_TRACE(testing::Message() << row.Name << (parallel ? ", parallel" : ""));
            TZEPCamera camera;
            camera.SetOrthographic(parallel);
            camera.Position()->SetData(row.Eye[0], row.Eye[1], row.Eye[2]);
            camera.Up()->SetData(row.Up[0], row.Up[1], row.Up[2]);
            camera.Roll(5);
            ASSERT_EQ(FitCamera(camera, row.Points, row.Aspect), row.Fits);
            EXPECT_EQ(camera.RollAngle(), row.Fits ? 0 : 5);
            if (!row.Fits) {
                EXPECT_EQ(camera.Position()->Data(), row.Eye);
                EXPECT_EQ(camera.FarClipPlane(), 100);
                continue;
            }
            EXPECT_NE(camera.GetPosition(), camera.GetTarget());
            TPoints points = row.Points;
            std::erase_if(points, [](const TGLArrayd3& point) { return !IsFinite(point); });
            const TSeen seen(camera, points, row.Aspect > 0 ? row.Aspect : 1);
            EXPECT_TRUE(seen.IsBetweenPlanes());
            EXPECT_LE(seen.Reach(), 1);
            EXPECT_GE(seen.Reach(), row.Least);
        }
}

TEST(Fitting, OfANodeCountsWhatCanBeSeen) {
    TZEPScene scene;
    const auto addLine = [](TZEPObject* parent, double x) {
        auto* line = Add<TZEPLine>(parent);
        line->P1()->SetData(x, 0, 0);
        line->P2()->SetData(x, 1, 2);
        return line;
    };
    auto* group = Add<TZEPNode>(&scene);
    group->XForm()->Translate()->SetData(10, 0, 0);
    addLine(group, 1);
    addLine(&scene, 3);
    addLine(&scene, -500)->SetVisible(false);
    auto* hidden = Add<TZEPNode>(&scene);
    hidden->SetVisible(false);
    addLine(hidden, 700);
    Add<TZEPLight>(&scene)->Position()->SetX(900);
    auto* camera = Add<TZEPCamera>(&scene);
    camera->Position()->SetData(0, -900, 0);
    const TPoints lines{{3, 0, 0}, {3, 1, 2}, {11, 0, 0}, {11, 1, 2}};
    ASSERT_TRUE(FitCamera(*camera, scene, 2));
    EXPECT_NEAR(TSeen(*camera, lines, 2).Reach(), 1 / 1.12, Pixel);
    ASSERT_TRUE(FitCamera(*camera, *group, 2));
    EXPECT_GT(TSeen(*camera, lines, 2).Reach(), 1);
    EXPECT_FALSE(FitCamera(*camera, *hidden, 2));
    group->SetVisible(false);
    EXPECT_TRUE(VisiblePoints(*group).empty());
}

TEST(Fitting, KeepsTheDepthWhereItIsAsked) {
    TZEPCamera camera;
    camera.SetFarClipPlane(1e6);
    const TZEPBounds box{{-1, -1, -1}, {1, 1, 1}};
    FitCamera(camera, box, 1, {.KeepsDepth = true});
    EXPECT_EQ(camera.FarClipPlane(), 1e6);
    camera.SetOrthographic(true);
    FitCamera(camera, box, 1, {.KeepsDepth = true});
    EXPECT_EQ(camera.NearClipPlane(), -1e6);
    FitCamera(camera, box, 1);
    EXPECT_LT(camera.FarClipPlane(), 1e4);
}

TEST(Fitting, CentredLeavesRoomToTurnAndEndsAllElse) {
    TZEPObject carrier;
    carrier.XForm()->Translate()->SetData(50, 0, 0);
    carrier.XForm()->Rotate()->SetData(0, 0, 90);
    auto* camera = Add<TZEPCamera>(&carrier);
    camera->SetTargetObject(&carrier);
    camera->Position()->SetData(2, -20, 1);
    camera->Orbit(30, 10);
    const TGLArrayd3 before = Unit(camera->GetPosition() - camera->GetTarget());
    const TZEPBounds box{{10, 20, 30}, {12, 22, 90}};
    camera->FitTo(box.Min, box.Max, 1.5);
    const TGLArrayd3 after = Unit(camera->GetPosition() - camera->GetTarget());
    EXPECT_LT(Distance(before, after), 1e-12);
    EXPECT_EQ(camera->TargetObject(), nullptr);
    TGLArrayd3 target;
    camera->ConvertToAbsolute(camera->GetTarget(), target);
    EXPECT_LT(Distance(target, {11, 21, 60}), 1e-9);
    EXPECT_GT(Distance(camera->GetPosition(), camera->GetTarget()), DiagonalOf(box) / 2);
    const double reach = TSeen(*camera, CornersOf(box), 1.5).Reach();
    EXPECT_GT(reach, 0.9);
    EXPECT_LT(reach, 1);
    camera->FitTo({1, 0, 0}, {0, 1, 1}, 1); // an empty box
    camera->ConvertToAbsolute(camera->GetTarget(), target);
    EXPECT_LT(Distance(target, {11, 21, 60}), 1e-9);
}

TEST(Directions, TheEyeComesToThatSideOfTheTarget) {
    TZEPCamera camera;
    camera.Position()->SetData(1, 2, 9);
    camera.Target()->SetData(1, 2, 3);
    for (const TDirection direction :
         {TDirection::Iso, TDirection::Top, TDirection::Front, TDirection::Right, TDirection::Left,
          TDirection::Back, TDirection::Bottom}) {
        camera.Orbit(10, 10);
        LookFrom(camera, direction);
        const TGLArrayd3 toEye = camera.GetPosition() - TGLArrayd3{1, 2, 3};
        EXPECT_NEAR(Length(toEye), 6, 1e-9);
        EXPECT_LT(Distance(Unit(toEye), Unit(ToEye(direction))), 1e-9);
        EXPECT_EQ(camera.GetPosition(), camera.Position()->Data());
    }
}

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
