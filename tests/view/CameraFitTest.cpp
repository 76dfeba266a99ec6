#include <zep/scene/Object.h>
#include <zep/scene/XForm.h>
#include <zep/view/Camera.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>

namespace ZEP {
namespace {

struct Row {
    const char* Name;
    TGLArrayd3 Min, Max;
    double Aspect = 1;
    std::function<void(TZEPCamera&)> Prepare = [](TZEPCamera&) {};
    double Fills = 0.9; ///< share of the view that the box reaches at least
};

/// Where a point in the camera's frame appears: -1 to 1 on both axes, and how far away.
TGLArrayd3 Seen(TZEPCamera& camera, const TGLArrayd3& point, double aspect) {
    const TGLArrayd3 eye = camera.GetPosition();
    TGLArrayd3 away = camera.GetTarget();
    TGLArrayd3 at = point;
    for (std::size_t k = 0; k < 3; ++k) {
        away[k] -= eye[k];
        at[k] -= eye[k];
    }
    const double distance = std::sqrt(Dotd(away, away));
    Normalized(away);
    TGLArrayd3 right;
    CrossProdd(away, camera.Up()->Data(), right);
    Normalized(right);
    TGLArrayd3 up;
    CrossProdd(right, away, up);
    const double depth = Dotd(at, away);
    const double slope = std::tan(camera.FieldOfView() / 360 * std::numbers::pi);
    const double halfWidth = camera.Orthographic() ? slope * distance : slope * depth * aspect;
    return {Dotd(at, right) / halfWidth, Dotd(at, up) / halfWidth * aspect, depth};
}

const std::vector<Row> Rows{
    {"cube", {-1, -1, -1}, {1, 1, 1}},
    {"wide view", {0, 0, 0}, {4, 2, 1}, 2.5},
    {"tall view", {0, 0, 0}, {4, 2, 1}, 0.4},
    {"far away and tiny", {1e6, 1e6, 0}, {1e6 + 0.01, 1e6 + 0.02, 0.005}},
    {"huge", {-1e9, -1e9, -1e9}, {2e9, 1e9, 1e9}},
    {"flat", {0, 0, 0}, {100, 50, 0}},
    {"flat, seen from its edge",
     {0, 0, 0},
     {100, 50, 0},
     1,
     [](TZEPCamera& c) { c.Position()->SetData(0, -5, 0); }},
    {"line across", {0, 0, 0}, {7, 0, 0}},
    {"line seen from its end",
     {0, 0, 0},
     {0, 7, 0},
     1,
     [](TZEPCamera& c) { c.Position()->SetData(0, -5, 0); },
     0},
    {"point", {3, 3, 3}, {3, 3, 3}, 1, [](TZEPCamera&) {}, 0},
    {"wide lens", {0, 0, 0}, {1, 2, 3}, 1, [](TZEPCamera& c) { c.SetFOVY(100); }, 0.5},
    {"long lens", {0, 0, 0}, {1, 2, 3}, 1, [](TZEPCamera& c) { c.SetFOVY(2); }},
    {"eye in the target",
     {0, 0, 0},
     {1, 2, 3},
     1,
     [](TZEPCamera& c) { c.Position()->SetData(0, 0, 0); }},
    {"after navigation",
     {0, 0, 0},
     {1, 2, 3},
     1,
     [](TZEPCamera& c) {
         c.Orbit(40, 20);
         c.FOV(60);
         c.SetViewOffset({9, 9, 9});
     }},
};

class CameraFit : public testing::TestWithParam<bool> {};

TEST_P(CameraFit, TheWholeBoxIsSeenAndFillsTheView) {
    for (const Row& row : Rows) {
        SCOPED_TRACE(row.Name);
        TZEPCamera camera;
        camera.SetOrthographic(GetParam());
        camera.Position()->SetData(3, -4, 2);
        row.Prepare(camera);
        camera.FitTo(row.Min, row.Max, row.Aspect);
        double reach = 0;
        for (unsigned i = 0; i < 8; ++i) {
            const TGLArrayd3 corner{i & 1U ? row.Max[0] : row.Min[0],
                                    i & 2U ? row.Max[1] : row.Min[1],
                                    i & 4U ? row.Max[2] : row.Min[2]};
            const TGLArrayd3 seen = Seen(camera, corner, row.Aspect);
            reach = std::max({reach, std::abs(seen[0]), std::abs(seen[1])});
            EXPECT_GT(seen[2], camera.NearClipPlane());
            EXPECT_LT(seen[2], camera.FarClipPlane());
        }
        EXPECT_LE(reach, 1);
        EXPECT_GE(reach, row.Fills);
    }
}

INSTANTIATE_TEST_SUITE_P(Projections, CameraFit, testing::Bool(),
                         [](const auto& row) { return row.param ? "Parallel" : "Perspective"; });

TEST(CameraFitTo, KeepsTheDirectionAndEndsOffsetsAndFollowing) {
    TZEPCamera camera;
    TZEPObject object;
    camera.SetTargetObject(&object);
    camera.Position()->SetData(2, -2, 1);
    camera.Orbit(30, 10);
    camera.Roll(20);
    TGLArrayd3 before = camera.GetPosition();
    Normalized(before);
    camera.FitTo({-1, -1, -1}, {1, 1, 1}, 1);
    TGLArrayd3 after = camera.Position()->Data();
    Normalized(after);
    for (std::size_t k = 0; k < 3; ++k) EXPECT_NEAR(after[k], before[k], 1e-12);
    EXPECT_EQ(camera.GetPosition(), camera.Position()->Data());
    EXPECT_EQ(camera.RollAngle(), 0);
    EXPECT_EQ(camera.TargetObject(), nullptr);
}

TEST(CameraFitTo, TakesTheBoxInAbsoluteCoordinates) {
    TZEPObject carrier;
    carrier.XForm()->Translate()->SetData(50, 0, 0);
    carrier.XForm()->Rotate()->SetData(0, 0, 90);
    auto* camera = new TZEPCamera;
    camera->SetParentComponent(&carrier);
    camera->Position()->SetData(0, -10, 0);
    camera->FitTo({10, 20, 30}, {12, 22, 32}, 1);
    TGLArrayd3 target;
    camera->ConvertToAbsolute(camera->GetTarget(), target);
    const TGLArrayd3 center{11, 21, 31};
    for (std::size_t k = 0; k < 3; ++k) EXPECT_NEAR(target[k], center[k], 1e-9);
}

TEST(CameraFitTo, IgnoresBoxesWithoutAnything) {
    constexpr double Inf = std::numeric_limits<double>::infinity();
    for (const auto& [min, max] : {std::pair<TGLArrayd3, TGLArrayd3>{{1, 0, 0}, {0, 1, 1}},
                                   {{1.7e308, 1.7e308, 1.7e308}, {-1.7e308, -1.7e308, -1.7e308}},
                                   {{-1.7e308, -1, -1}, {1.7e308, 1, 1}},
                                   {{-Inf, 0, 0}, {Inf, 1, 1}},
                                   {{std::nan(""), 0, 0}, {1, 1, 1}}}) {
        TZEPCamera camera;
        camera.Position()->SetData(2, -2, 1);
        camera.Roll(5);
        camera.FitTo(min, max, 1);
        EXPECT_EQ(camera.Position()->Data(), (TGLArrayd3{2, -2, 1}));
        EXPECT_EQ(camera.RollAngle(), 5);
        EXPECT_EQ(camera.FarClipPlane(), 100);
    }
}

TEST(CameraFitTo, TreatsANonsensicalAspectAsSquare) {
    TZEPCamera square;
    square.Position()->SetY(-1);
    square.FitTo({-1, -1, -1}, {1, 1, 1}, 1);
    for (const double aspect : {0.0, -2.0, std::nan("")}) {
        TZEPCamera camera;
        camera.Position()->SetY(-1);
        camera.FitTo({-1, -1, -1}, {1, 1, 1}, aspect);
        EXPECT_EQ(camera.Position()->Data(), square.Position()->Data()) << aspect;
    }
}

} // namespace
} // namespace ZEP
