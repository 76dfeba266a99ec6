#include "viewer/drawing/Framing.h"

#include <zep/view/Camera.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {
namespace {

struct TSeen {
    double Left = 1e9, Right = -1e9, Low = 1e9, High = -1e9; // -1 to 1 across the view
};

/// Where the points appear for a camera that looks along y.
TSeen Look(const TZEPCamera& camera, const std::vector<TGLArrayd3>& points, double aspect) {
    const double slope = std::tan(camera.FieldOfView() * std::numbers::pi / 360);
    const TGLArrayd3 eye = camera.GetPosition();
    TSeen seen;
    for (const TGLArrayd3& point : points) {
        const double away = point[1] - eye[1];
        const double x = (point[0] - eye[0]) / away / slope / aspect;
        const double y = (point[2] - eye[2]) / away / slope;
        seen = {std::min(seen.Left, x), std::max(seen.Right, x), std::min(seen.Low, y),
                std::max(seen.High, y)};
    }
    return seen;
}

TEST(Framing, PointsFillTheViewEvenly) {
    struct TRow {
        const char* Name;
        std::vector<TGLArrayd3> Points;
        double Aspect;
        bool AcrossDecides;
    };
    const TRow rows[] = {
        {"flat and wide", {{-25, 0, 0}, {45, 0, 0}, {0, 0, 1}}, 1, true},
        {"high", {{0, 0, -40}, {0, 0, 10}, {1, 2, 0}}, 2, false},
        {"near end larger", {{-40, -10, 0}, {40, -10, 0}, {0, 60, 20}, {0, 60, -1}}, 1.5, true},
        {"wide view", {{-10, 0, -25}, {10, 0, 25}}, 3, false},
    };
    for (const TRow& row : rows) {
        SCOPED_TRACE(row.Name);
        TZEPCamera camera;
        camera.Position()->SetData(0, -100, 0);
        FrameTightly(camera, row.Points, row.Aspect);
        const TSeen seen = Look(camera, row.Points, row.Aspect);
        EXPECT_NEAR(seen.Left, -seen.Right, 1e-6);
        EXPECT_NEAR(seen.Low, -seen.High, 1e-6);
        EXPECT_NEAR(row.AcrossDecides ? seen.Right : seen.High, 1 / 1.12, 1e-6);
        EXPECT_LE(std::max({seen.Right, seen.High, -seen.Left, -seen.Low}), 1 / 1.12 + 1e-6);
        EXPECT_NEAR(camera.GetTarget()[1], 0, 1e-9) << "the middle of orbits left its depth";
    }
}

TEST(Framing, TheEyeStaysClearOfWhatHasNoExtent) {
    for (const std::vector<TGLArrayd3>& points :
         {std::vector<TGLArrayd3>{}, {{3, 0, 4}}, {{0, -1, 0}, {0, 5, 0}}}) {
        TZEPCamera camera;
        camera.Position()->SetData(0, -10, 0);
        FrameTightly(camera, points, 1);
        const double distance = camera.GetTarget()[1] - camera.GetPosition()[1];
        EXPECT_GE(distance, 5);
        EXPECT_LE(distance, 10);
    }
}

} // namespace
} // namespace ZEP
