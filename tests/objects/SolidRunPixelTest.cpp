#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

using namespace ZEP;

namespace {

class SolidRunPixel : public OffscreenTest {
protected:
    SolidRunPixel() : OffscreenTest(128, 128) {}
};

QImage Checks() {
    QImage image(8, 8, QImage::Format_RGB32);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x) image.setPixelColor(x, y, (x + y) % 2 ? Qt::red : Qt::green);
    return image;
}

/// One of each kind, in turn, so that each meets others before and after it.
TZEPColoredObject* Make(int kind, TZEPObject* owner) {
    if (kind == 0) {
        auto* line = new TZEPLine(owner);
        line->P1()->SetData(-0.5, -0.5, 0.6);
        line->P2()->SetData(0.5, 0.5, 0.6);
        line->SetWidth(5);
        line->SetSmooth(false);
        return line;
    }
    if (kind == 1) return new TZEPSphere(owner);
    auto* box = new TZEPBox(owner);
    if (kind == 3) box->SetParts(TZEPBoxParts(bpFront) | bpTop);
    if (kind == 4) box->SetDrawType(dtLine);
    if (kind == 5) box->SetSlices(0, 3);
    if (kind == 6) box->Material()->Texture()->Image()->SetImage(Checks());
    if (kind == 7) box->Material()->SetTransparency(0.5F);
    if (kind == 8) box->SetSelected(true);
    return box;
}

} // namespace

TEST_F(SolidRunPixel, MixedNeighboursLookAsTheyDoAlone) {
    TZEPScene scene;
    std::vector<TZEPColoredObject*> objects;
    constexpr int Side = 12;
    for (int i = 0; i < Side * Side; ++i) {
        TZEPColoredObject* object = Make(i * i % 11 % 9, &scene);
        object->SetParentComponent(&scene);
        object->SetColor(i % 3 == 0   ? clRed
                         : i % 3 == 1 ? clAqua
                                      : TColor{0x4080C0U + static_cast<unsigned>(i) * 16U});
        object->XForm()->Translate()->SetData(i % Side - 5.5, i / Side - 5.5, 0);
        object->XForm()->Scale()->SetData(0.8, 0.8, 0.8);
        object->XForm()->Rotate()->SetData(20, 30, 0);
        objects.push_back(object);
    }
    glEnable(GL_LIGHTING);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    glEnable(GL_LIGHT0);
    glOrtho(-6, 6, -6, 6, -10, 10);
    const auto clear = [] { glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT); };
    clear();
    scene.Draw(scene, dsAllObjects, dkFull);
    scene.Draw(scene, dsTransparent, dkFull);
    const QImage together = Context().ReadFrame();
    clear();
    const auto eachAlone = [&](TZEPDrawState state) {
        for (TZEPColoredObject* object : objects) {
            for (TZEPColoredObject* other : objects) other->SetVisible(other == object);
            scene.Draw(scene, state, dkFull);
        }
    };
    eachAlone(dsAllObjects);
    eachAlone(dsTransparent);
    EXPECT_EQ(Context().ReadFrame(), together);
    int drawn = 0;
    for (int y = 0; y < 128; ++y)
        for (int x = 0; x < 128; ++x) drawn += qGray(together.pixel(x, y)) > 0;
    EXPECT_GT(drawn, 128 * 128 / 4);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
