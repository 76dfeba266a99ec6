#include "tests/gl/Feedback.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

#include <cmath>
#include <stdexcept>

using namespace ZEP;

namespace {

class HeightFieldPixel : public OffscreenTest {};
class UserPixel : public OffscreenTest {};

std::vector<TDrawnPolygon> Drawn(TZEPObject& object) {
    return DrawnPolygons(4, [&] { object.DrawSpecific(GL_FRONT_AND_BACK, false); });
}

void SetRange(TZEPHeightField& field, std::pair<double, double> x, std::pair<double, double> y) {
    field.SetMinX(x.first);
    field.SetMaxX(x.second);
    field.SetMinY(y.first);
    field.SetMaxY(y.second);
}

struct Failures {
    int Count = 0;
    QString Last;

    template <class T>
    explicit Failures(T& object) {
        QObject::connect(&object, &T::Failed, [this](TZEPObject*, const QString& error) {
            ++Count;
            Last = error;
        });
    }
};

} // namespace

TEST_F(HeightFieldPixel, PointsNormalsAndBoundsFollowTheFunction) {
    TZEPHeightField field;
    SetRange(field, {-1, 3}, {-2, 0});
    field.SetSlicesX(4);
    field.SetSlicesY(3);
    field.SetOnHeight([](double x, double y) { return 0.5 * x - 0.25 * y; });
    TGLArrayd3 slope{-0.5, 0.25, 1};
    Normalized(slope);
    for (const bool smooth : {false, true}) {
        field.SetSmooth(smooth);
        int corners = 0;
        for (const TDrawnPolygon& polygon : Drawn(field))
            for (const TDrawnVertex& vertex : polygon) {
                EXPECT_NEAR(vertex.Point[2], 0.5 * vertex.Point[0] - 0.25 * vertex.Point[1], 1e-5);
                EXPECT_NEAR(Dotd(vertex.Normal, slope), 1, 1e-5) << smooth;
                ++corners;
            }
        EXPECT_GE(corners, 4 * 3 * 4);
    }
    TGLArrayd3 min, max;
    field.GetSize(min, max);
    EXPECT_EQ(min, (TGLArrayd3{-1, -2, -0.5}));
    EXPECT_EQ(max, (TGLArrayd3{3, 0, 2}));
}

TEST_F(HeightFieldPixel, SmoothNormalsFollowTheSlopeOnBothSidesAndAtAnEdgeOnOne) {
    TZEPHeightField field;
    field.SetSmooth(true);
    SetRange(field, {-1, 1}, {-1, 1});
    field.SetSlicesX(4);
    field.SetSlicesY(4);
    field.SetOnHeight([](double x, double y) { return x * x - 0.5 * y * y; });
    // Of a parabola: 2 x between its neighbours, and half a step less at the end.
    const auto slope = [](float at) { return std::abs(at) < 0.9F ? 2 * at : at > 0 ? 1.5 : -1.5; };
    for (const TDrawnPolygon& polygon : Drawn(field))
        for (const TDrawnVertex& vertex : polygon) {
            const auto x = static_cast<float>(vertex.Point[0]);
            const auto y = static_cast<float>(vertex.Point[1]);
            TGLArrayd3 expected{-slope(x), 0.5 * slope(y), 1};
            Normalized(expected);
            EXPECT_NEAR(Dotd(vertex.Normal, expected), 1, 1e-5) << x << ", " << y;
        }
}

TEST_F(HeightFieldPixel, TheHostsNormalsAreUsedWhereItIsSmooth) {
    TZEPHeightField field;
    field.SetSlicesX(1);
    field.SetSlicesY(1);
    field.SetOnNormal([](double x, double) { return TGLArrayd3{x < 0 ? -1.0 : 1.0, 0, 0}; });
    for (const bool smooth : {false, true}) {
        field.SetSmooth(smooth);
        for (const TDrawnPolygon& polygon : Drawn(field))
            for (const TDrawnVertex& vertex : polygon)
                EXPECT_NEAR(vertex.Normal[0], smooth ? 2 * vertex.Point[0] : 0, 1e-5);
    }
}

TEST_F(HeightFieldPixel, HeightsThatAreNoNumbersLeaveHoles) {
    TZEPHeightField field;
    field.SetSlicesX(4);
    field.SetSlicesY(4);
    for (const double bad : {std::nan(""), HUGE_VAL}) {
        field.SetOnHeight([bad](double x, double y) { return x == 0 && y == 0 ? bad : x; });
        double area = 0;
        for (const TDrawnPolygon& polygon : Drawn(field))
            for (std::size_t i = 2; i < polygon.size(); ++i) {
                const auto &a = polygon[0].Point, &b = polygon[i - 1].Point, &c = polygon[i].Point;
                area += ((b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0])) / 2;
            }
        EXPECT_NEAR(area, 12.0 / 16, 1e-5) << "the four cells around the point are left out";
        EXPECT_EQ(field.GetMax()[2], 0.5);
    }
}

TEST_F(HeightFieldPixel, ItAsksOnceUntilSomethingChanges) {
    TZEPHeightField field;
    int asked = 0;
    field.SetSlicesX(9);
    field.SetSlicesY(4);
    field.SetOnHeight([&](double, double) { return static_cast<double>(++asked) * 0; });
    for (int i = 0; i < 3; ++i) {
        Drawn(field);
        static_cast<void>(field.GetMax());
    }
    EXPECT_EQ(asked, 10 * 5);
    field.Refresh();
    Drawn(field);
    EXPECT_EQ(asked, 2 * 10 * 5);
    field.SetSlicesX(9);
    Drawn(field);
    EXPECT_EQ(asked, 2 * 10 * 5);
}

TEST_F(HeightFieldPixel, ColoursComeByHeight) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    TZEPHeightField field;
    SetRange(field, {-1, 1}, {-1, 1});
    field.SetOnHeight([](double x, double) { return x > 0 ? 0.5 : -0.5; });
    field.SetOnColor([](double height) { return height > 0 ? clRed : clBlue; });
    const TGLColor white{1, 1, 1, 1};
    glEnable(GL_LIGHTING);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, white.data());
    for (const bool colored : {false, true}) {
        field.SetColorVertexes(colored);
        field.SetColor(clLime);
        field.DrawMain(false);
        EXPECT_EQ(Context().ReadPixel(10, 128).rgb(), colored ? 0xFF0000FF : 0xFF00FF00);
        EXPECT_EQ(Context().ReadPixel(246, 128).rgb(), colored ? 0xFFFF0000 : 0xFF00FF00);
        EXPECT_FALSE(glIsEnabled(GL_COLOR_MATERIAL));
    }
}

TEST_F(HeightFieldPixel, ACallbackThatThrowsIsReportedOnceAndEmptiesTheField) {
    TZEPHeightField field;
    const Failures failures(field);
    int asked = 0;
    field.SetOnHeight([&](double x, double) -> double {
        ++asked;
        if (x > 0) throw std::runtime_error("out of data");
        return 1;
    });
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(Drawn(field).empty());
    EXPECT_EQ(failures.Count, 1);
    EXPECT_EQ(failures.Last, QStringLiteral("out of data"));
    EXPECT_EQ(field.GetMax(), (TGLArrayd3{0.5, 0.5, 0}));
    const int before = asked;
    Drawn(field);
    EXPECT_EQ(asked, before);
    field.SetOnHeight({});
    EXPECT_FALSE(Drawn(field).empty());
    EXPECT_EQ(field.Error(), QString());
}

TEST_F(HeightFieldPixel, AnEmptyOrEndlessRangeCountsAsTheUnitSquare) {
    for (const auto& [min, max] :
         {std::pair{0.0, 0.0}, {2.0, 1.0}, {0.0, HUGE_VAL}, {std::nan(""), 1.0}, {-1e308, 1e308}}) {
        TZEPHeightField field;
        field.SetMinX(min);
        field.SetMaxX(max);
        EXPECT_EQ(field.GetMin()[0], -0.5) << min << " to " << max;
        EXPECT_EQ(field.GetMax()[0], 0.5) << min << " to " << max;
    }
}

TEST_F(UserPixel, UserObjectsAreDrawnAndMeasuredByTheHost) {
    TZEPUser user;
    EXPECT_EQ(user.GetMax(), (TGLArrayd3{0.5, 0.5, 0.5}));
    user.SetOnDraw([](TZEPUser&, GLenum, bool) { glRectd(-1, -1, 1, 2); });
    user.SetOnGetSize([](const TZEPUser&, TGLArrayd3& min, TGLArrayd3& max) {
        min = {-1, -1, 0};
        max = {1, 2, 0};
    });
    EXPECT_EQ(user.GetMax(), (TGLArrayd3{1, 2, 0}));
    const std::vector<TDrawnPolygon> polygons = Drawn(user);
    ASSERT_FALSE(polygons.empty());
    EXPECT_NEAR(polygons[0][2].Point[1], 2, 1e-5);
}

TEST_F(UserPixel, AUserObjectThatFailsLeavesNothingBehind) {
    TZEPScene scene;
    auto* user = new TZEPUser(&scene);
    user->SetParentComponent(&scene);
    const Failures failures(*user);
    user->SetOnDraw([](TZEPUser&, GLenum, bool) {
        glPushMatrix();
        glTranslated(9, 9, 9);
        glPushAttrib(GL_ENABLE_BIT);
        glEnable(GL_FOG);
        glBegin(GL_LINES);
        throw std::runtime_error("no more");
    });
    for (int i = 0; i < 3; ++i) scene.Draw(scene, dsAllObjects, dkFull);
    EXPECT_EQ(failures.Count, 1);
    EXPECT_EQ(user->Error(), QStringLiteral("no more"));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    EXPECT_FALSE(glIsEnabled(GL_FOG));
    GLint depth = 0;
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth);
    EXPECT_EQ(depth, 1);
    user->SetOnGetSize([](const TZEPUser&, TGLArrayd3& min, TGLArrayd3&) {
        min = {-9, -9, -9};
        throw 7;
    });
    EXPECT_EQ(user->GetMin(), (TGLArrayd3{-0.5, -0.5, -0.5}));
    EXPECT_EQ(failures.Count, 2);
}

TEST_F(UserPixel, WhatAHostForgetsToPopIsPopped) {
    TZEPUser user;
    user.SetOnDraw([](TZEPUser&, GLenum, bool) {
        glPushMatrix();
        glPushAttrib(GL_LIGHTING_BIT);
        glMatrixMode(GL_TEXTURE);
    });
    for (int i = 0; i < 100; ++i) user.DrawSpecific(GL_FRONT_AND_BACK, false);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    GLint mode = 0;
    glGetIntegerv(GL_MATRIX_MODE, &mode);
    EXPECT_EQ(mode, GL_MODELVIEW);
}
