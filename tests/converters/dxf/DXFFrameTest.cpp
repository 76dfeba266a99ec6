#include <zep/converters/dxf/Frame.h>

#include <zep/scene/XForm.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace ZEP {
namespace {

using testing::DoubleNear;
using testing::Pointwise;

constexpr double Near = 1e-12;
constexpr double Huge = std::numeric_limits<double>::max();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

TEST(DXFFrame, StandsOnTheExtrusion) {
    const double h = std::sqrt(0.5);
    const struct {
        const char* Name;
        TGLArrayd3 Extrusion, X, Y, Z;
    } rows[] = {
        {"up", {0, 0, 2}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        {"down", {0, 0, -1}, {-1, 0, 0}, {0, 1, 0}, {0, 0, -1}},
        {"along x", {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}},
        {"along -x", {-1, 0, 0}, {0, -1, 0}, {0, 0, 1}, {-1, 0, 0}},
        {"along y", {0, 3, 0}, {-1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
        {"along -y", {0, -1, 0}, {1, 0, 0}, {0, 0, 1}, {0, -1, 0}},
        {"slanted", {0, 1, 1}, {-1, 0, 0}, {0, -h, h}, {0, h, h}},
        {"huge", {0, Huge, Huge}, {-1, 0, 0}, {0, -h, h}, {0, h, h}},
        {"tiny", {0, 1e-320, 0}, {-1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
        {"zero", {0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        {"infinite", {INFINITY, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        {"not a number", {0, NaN, 1}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        const TGLMatrixd4 m = ExtrusionFrame(row.Extrusion);
        const TGLArrayd3 expected[] = {row.X, row.Y, row.Z};
        for (std::size_t i = 0; i < 3; ++i) {
            TGLArrayd3 axis{};
            axis[i] = 1;
            Xformd(m, axis);
            EXPECT_THAT(axis, Pointwise(DoubleNear(Near), expected[i]));
        }
    }
}

TEST(DXFFrame, TakesYForTheXAxisNearTheUpright) {
    // Either side of 1/64: x = y axis × normal, or x = z axis × normal.
    const TGLMatrixd4 near = ExtrusionFrame({0.01, 0, 1});
    EXPECT_GT(near[0][0], 0.99);
    const TGLMatrixd4 off = ExtrusionFrame({0.02, 0, 1});
    EXPECT_THAT(off[0], Pointwise(DoubleNear(Near), TGLArrayd4{0, 1, 0, 0}));
}

TEST(DXFFrame, AnglesTurnATransformLikeTheMatrix) {
    const TGLArrayd3 extrusions[] = {{0, 0, 1},  {0, 0, -1}, {1, 0, 0},   {-1, 0, 0},   {0, 1, 0},
                                     {0, -1, 0}, {1, 2, 3},  {-3, 1, -2}, {0.01, 0, -1}};
    for (const TGLArrayd3& extrusion : extrusions)
        for (const double turn : {0.0, 30.0, -100.0, 180.0}) {
            TGLMatrixd4 m = ExtrusionFrame(extrusion);
            Rotated(turn, 0, 0, 1, m);
            TZEPXForm xform({}, nullptr);
            xform.Scale()->SetDataQuietly({1, 1, 1});
            xform.Rotate()->SetDataQuietly(RotationAngles(m));
            xform.PrepareMatrix();
            for (std::size_t i = 0; i < 4; ++i)
                EXPECT_THAT(xform.GetMatrix()[i], Pointwise(DoubleNear(1e-9), m[i]))
                    << testing::PrintToString(extrusion) << " " << turn << " row " << i;
        }
}

} // namespace
} // namespace ZEP
