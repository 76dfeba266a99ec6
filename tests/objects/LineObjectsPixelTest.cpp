#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/scene/Scene.h>

#include <random>

using namespace ZEP;

namespace {

/// Frames of 64 by 64 pixels; the scene's x and y run from -32 to 32.
class LineObjectsPixel : public OffscreenTest {
protected:
    LineObjectsPixel() : OffscreenTest(64, 64) {}

    void SetUp() override {
        OffscreenTest::SetUp();
        Scene.SetSceneAmbientColor(clWhite);
        glEnable(GL_LIGHTING);
        glOrtho(-32, 32, -32, 32, -10, 10);
    }
    void Draw() {
        glClear(GL_COLOR_BUFFER_BIT);
        constexpr TGLColor White{1, 1, 1, 1};
        glLightModelfv(GL_LIGHT_MODEL_AMBIENT, White.data());
        for (const TZEPDrawState state : {dsAllObjects, dsTransparent})
            Scene.Draw(Scene, state, dkFull);
    }
    /// Pixels of exactly that colour.
    int Count(QRgb color) {
        const QImage frame = Context().ReadFrame();
        int count = 0;
        for (int y = 0; y < frame.height(); ++y)
            for (int x = 0; x < frame.width(); ++x)
                if (frame.pixel(x, y) == color) ++count;
        return count;
    }
    QRgb At(double x, double y) {
        return Context().ReadPixel(static_cast<int>(32 + x), static_cast<int>(32 - y)).rgb();
    }
    template <class T>
    T& Add(TColor color) {
        auto* object = new T(&Scene);
        object->SetParentComponent(&Scene);
        object->SetColor(color);
        return *object;
    }

    static constexpr QRgb Red = 0xFFFF0000;
    static constexpr QRgb Blue = 0xFF0000FF;
    static constexpr QRgb Black = 0xFF000000;
    TZEPScene Scene;
};

} // namespace

TEST_F(LineObjectsPixel, LinesHaveWidthAndStyle) {
    auto& line = Add<TZEPLine>(clRed);
    line.SetSmooth(false);
    line.P1()->SetData(-20, 0.5, 0);
    line.P2()->SetData(20, 0.5, 0);
    Draw();
    EXPECT_EQ(Count(Red), 40);
    line.SetWidth(3);
    Draw();
    EXPECT_EQ(Count(Red), 120);
    line.SetWidth(1);
    line.SetStyle(psDot);
    Draw();
    EXPECT_EQ(Count(Red), 20) << "two pixels drawn, two left out";
    line.SetStyle(psClear);
    Draw();
    EXPECT_EQ(Count(Red), 0);
    line.SetStyle(psInsideFrame);
    Draw();
    EXPECT_EQ(Count(Red), 40);
}

TEST_F(LineObjectsPixel, ASmoothLineIsBlended) {
    auto& line = Add<TZEPLine>(clRed);
    line.P1()->SetData(-20, -13, 0);
    line.P2()->SetData(20, 10, 0);
    line.SetSmooth(false);
    Draw();
    const int jagged = Count(Red);
    EXPECT_EQ(jagged + Count(Black), 64 * 64);
    line.SetSmooth(true);
    Draw();
    EXPECT_LT(Count(Red) + Count(Black), 64 * 64 - jagged / 2);
    EXPECT_GT(qRed(At(0, -1.5)), 128);
}

TEST_F(LineObjectsPixel, NeighboursInOneWalkLookAsTheyDoAlone) {
    std::vector<TZEPShape*> shapes;
    for (int i = 0; i < 24; ++i) {
        const TColor color = i % 3 == 0 ? clRed : clBlue;
        const double y = i * 2.5 - 30;
        TZEPShape* shape = nullptr;
        if (i % 6 == 5) {
            auto& point = Add<TZEPPoint>(color);
            point.P()->SetData(0, y, 0);
            shape = &point;
        } else if (i % 6 == 3) {
            auto& polyline = Add<TZEPPolyline>(color);
            polyline.Vertexes()->Add()->SetPoint({-25, y, 0});
            polyline.Vertexes()->Add()->SetPoint({25, y + 1, 0});
            polyline.Vertexes()->Item(1)->SetColor(clLime);
            polyline.SetColorVertexes(i % 4 == 1);
            polyline.SetUseDisplayList(i % 4 == 3);
            shape = &polyline;
        } else {
            auto& line = Add<TZEPLine>(color);
            line.SetStyle(i % 7 == 0 ? psDash : psSolid);
            line.P1()->SetData(-30, y, 0);
            line.P2()->SetData(30, y + 2, 0);
            shape = &line;
        }
        shape->SetSmooth(i % 5 == 0);
        shape->SetWidth(i % 4 == 0 ? 3.0F : 1.0F);
        shapes.push_back(shape);
    }
    Draw();
    const QImage together = Context().ReadFrame();
    glClear(GL_COLOR_BUFFER_BIT);
    for (TZEPShape* shape : shapes) shape->QuickDraw();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    for (TZEPShape* shape : shapes) shape->DrawTransparent(false);
    glDisable(GL_BLEND);
    EXPECT_EQ(Context().ReadFrame(), together);
    EXPECT_GT(Count(Red) + Count(Blue), 500);
}

// Random objects in turned and stretched groups, many of them out of view, in one walk, which
// shares state and passes over what is not seen, and each alone.
TEST_F(LineObjectsPixel, AViewInsideABigSceneLooksAsWithoutCulling) {
    std::mt19937 random(3);
    const auto number = [&](double size) {
        return (static_cast<int>(random() % 2001) * 0.001 - 1) * size;
    };
    std::vector<TZEPObject*> groups;
    for (int i = 0; i < 6; ++i) {
        auto& group = Add<TZEPObject>(clRed);
        group.XForm()->Translate()->SetData(number(30), number(30), 0);
        group.XForm()->Rotate()->SetData(number(30), number(30), number(180));
        group.XForm()->Scale()->SetData(0.7 + i * 0.1, 1, 1.3);
        groups.push_back(&group);
    }
    constexpr TColor Colors[] = {clRed, clBlue, clLime, clYellow};
    for (int i = 0; i < 600; ++i) {
        const auto near = [&, x = number(90), y = number(90)](TZEPVertex3* point) {
            point->SetData(x + number(20), y + number(20), number(3));
        };
        TZEPShape* shape = nullptr;
        if (i % 5 == 0) {
            auto* point = new TZEPPoint(&Scene);
            near(point->P());
            shape = point;
        } else if (i % 5 == 1) {
            auto* arc = new TZEPArc(&Scene);
            near(arc->XForm()->Translate());
            arc->XForm()->Rotate()->SetData(number(90), number(90), 0);
            arc->XForm()->Scale()->SetData(30, 15, 10);
            arc->SetEndAngle(number(300));
            shape = arc;
        } else if (i % 5 == 2) {
            auto* polyline = new TZEPPolyline(&Scene);
            const double x = number(90), y = number(90);
            for (int k = 0; k < 4; ++k)
                polyline->Vertexes()->Add()->SetPoint({x + number(15), y + number(15), number(3)});
            polyline->SetOrigColor(Colors[random() % 4]);
            polyline->SetUseDisplayList(i % 2 == 0);
            shape = polyline;
        } else {
            auto* line = new TZEPLine(&Scene);
            near(line->P1());
            near(line->P2());
            line->SetStyle(i % 7 == 0 ? psDashDot : psSolid);
            shape = line;
        }
        shape->SetColor(Colors[random() % 4]);
        shape->SetSmooth(random() % 4 == 0);
        shape->SetWidth(random() % 4 == 0 ? 9.0F : 1.0F);
        shape->SetParentComponent(groups[random() % groups.size()]);
    }
    Draw(); // compiles the lists and marks the smooth ones
    Draw();
    const QImage together = Context().ReadFrame();
    glClear(GL_COLOR_BUFFER_BIT);
    for (TZEPObject* group : groups) group->Draw(Scene, dsAllObjects, dkFull);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    for (TZEPObject* group : groups) group->Draw(Scene, dsTransparent, dkFull);
    glDisable(GL_BLEND);
    EXPECT_EQ(Context().ReadFrame(), together);
    for (const QRgb color : {Red, Blue, Black}) EXPECT_GT(Count(color), 100);
}

TEST_F(LineObjectsPixel, PointsAndCirclesStandWhereTheirTransformPutsThem) {
    auto& point = Add<TZEPPoint>(clRed);
    point.SetWidth(4);
    point.P()->SetData(25, 25, 0);
    auto& circle = Add<TZEPCircle>(clBlue);
    circle.SetSmooth(false);
    circle.SetWidth(3);
    circle.SetSegments(60);
    circle.XForm()->Scale()->SetData(40, 40, 1);
    circle.XForm()->Translate()->SetData(-5, 0, 0);
    Draw();
    EXPECT_EQ(Count(Red), 16);
    EXPECT_EQ(At(25, 25), Red);
    for (const auto& [x, y] : {std::pair{15.0, 0.0}, {-25.0, 0.0}, {-5.0, 20.0}, {-5.0, -20.0}})
        EXPECT_EQ(At(x, y), Blue) << x << ", " << y;
    EXPECT_EQ(At(-5, 0), Black);
}

TEST_F(LineObjectsPixel, APolylineShowsInTheFrameThatCompilesItsList) {
    auto& polyline = Add<TZEPPolyline>(clLime);
    polyline.SetSmooth(false);
    polyline.SetWidth(3);
    polyline.SetUseDisplayList(true);
    polyline.Vertexes()->Add()->SetPoint({-10, 0, 0});
    polyline.Vertexes()->Add()->SetPoint({10, 0, 0});
    polyline.SetOrigColor(clRed);
    Draw();
    EXPECT_EQ(At(0, 0), Red);
    Draw();
    EXPECT_EQ(At(0, 0), Red);
    polyline.SetSelected(true);
    Draw();
    EXPECT_EQ(At(0, 0), 0xFFFFFFFF);
    polyline.SetColorVertexes(true);
    polyline.Vertexes()->Item(0)->SetColor(clBlue);
    polyline.Vertexes()->Item(1)->SetColor(clBlue);
    Draw();
    EXPECT_EQ(At(0, 0), Blue);
}
