#include "ZEPClasses.h"
#include "ZEPObjects.h"
#include "scene/Scene.h"
#include "tests/gl/OffscreenTest.h"

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
    int Count(QRgb color) const {
        const QImage frame = const_cast<LineObjectsPixel*>(this)->Context().ReadFrame();
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
    constexpr int Lines = 24;
    std::vector<TZEPLine*> lines;
    for (int i = 0; i < Lines; ++i) {
        auto& line = Add<TZEPLine>(i % 3 == 0 ? clRed : clBlue);
        line.SetSmooth(i % 5 == 0);
        line.SetWidth(i % 4 == 0 ? 2.0F : 1.0F);
        line.SetStyle(i % 7 == 0 ? psDash : psSolid);
        line.P1()->SetData(-30, i * 2.5 - 30, 0);
        line.P2()->SetData(30, i * 2.5 - 28, 0);
        lines.push_back(&line);
    }
    Draw();
    const QImage together = Context().ReadFrame();
    QImage alone(together.size(), together.format());
    alone.fill(Qt::black);
    glClear(GL_COLOR_BUFFER_BIT);
    for (TZEPLine* line : lines) line->QuickDraw();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    for (TZEPLine* line : lines) line->DrawTransparent(false);
    glDisable(GL_BLEND);
    EXPECT_EQ(Context().ReadFrame(), together);
}

TEST_F(LineObjectsPixel, PointsAndCirclesStandWhereTheirTransformPutsThem) {
    auto& point = Add<TZEPPoint>(clRed);
    point.SetWidth(4);
    point.P()->SetData(10, 10, 0);
    auto& circle = Add<TZEPCircle>(clBlue);
    circle.SetSmooth(false);
    circle.SetWidth(3);
    circle.SetSegments(60);
    circle.XForm()->Scale()->SetData(40, 40, 1);
    circle.XForm()->Translate()->SetData(-5, 0, 0);
    Draw();
    EXPECT_EQ(Count(Red), 16);
    EXPECT_EQ(At(10, 10), Red);
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
