#include "tests/gl/FourColours.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

using namespace ZEP;

namespace {

using LabelPictureHand = OffscreenTest;

} // namespace

TEST_F(LabelPictureHand, CoversTheTextAndLeavesABitmapAlone) {
    TZEPScene scene;
    auto* label = Add<TZEPLabel>(&scene);
    label->SetCaption(QStringLiteral("MM"));
    label->SetColor(clWhite);
    label->Material()->Texture()->Image()->SetImage(FourColours());
    TGLArrayd3 min, max;
    label->GetSize(min, max);
    glMatrixMode(GL_PROJECTION);
    glOrtho(min[0], max[0], min[1], max[1], -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glEnable(GL_LIGHTING);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, TGLColor{1, 1, 1, 1}.data());
    const auto count = [&](QRgb color, bool right, bool below) {
        const QImage frame = Context().ReadFrame();
        int found = 0;
        for (int y = 4; y < 124; ++y)
            for (int x = 4; x < 124; ++x)
                found += frame.pixel(x + 128 * right, y + 128 * below) == color;
        return found;
    };
    const auto draw = [&] {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glTexCoord2f(0.1F, 0.9F); // of what was drawn before
        scene.Draw(scene, dsAllObjects, dkFull);
    };
    draw();
    EXPECT_GT(count(0xFFFF0000, false, false), 500);
    EXPECT_GT(count(0xFF00FF00, true, false), 500);
    EXPECT_GT(count(0xFF0000FF, false, true), 500);
    EXPECT_GT(count(0xFFFFFFFF, true, true), 500);
    label->SetBitmapFont(true);
    glTranslated((min[0] + max[0]) / 2, (min[1] + max[1]) / 2, 0);
    draw();
    EXPECT_GT(count(0xFFFFFFFF, true, false), 0);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
