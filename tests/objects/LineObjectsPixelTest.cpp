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
            for (int x = 0; x < frame.width(); ++x) count += frame.pixel(x, y) == color;
        return count;
    }

    TZEPScene Scene;
};

} // namespace

// Random objects in turned and stretched groups, many of them out of view, in one walk, which
// shares state and passes over what is not seen, and each alone.
TEST_F(LineObjectsPixel, AViewInsideABigSceneLooksAsWithoutCulling) {
    std::mt19937 random(3);
    const auto number = [&](double size) {
        return (static_cast<int>(random() % 2001) * 0.001 - 1) * size;
    };
    std::vector<TZEPObject*> groups;
    for (int i = 0; i < 6; ++i) {
        auto* group = Add<TZEPObject>(&Scene);
        group->XForm()->Translate()->SetData(number(30), number(30), 0);
        group->XForm()->Rotate()->SetData(number(30), number(30), number(180));
        group->XForm()->Scale()->SetData(0.7 + i * 0.1, 1, 1.3);
        groups.push_back(group);
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
    for (const QRgb color : {0xFFFF0000, 0xFF0000FF, 0xFF000000}) EXPECT_GT(Count(color), 100);
}
