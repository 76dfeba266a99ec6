#include "tests/gl/FourColours.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/appearance/materials/Material.h>

using namespace ZEP;

namespace {

class TexturePixel : public OffscreenTest {
protected:
    TexturePixel() : OffscreenTest(64, 64) {}
};

void DrawFullSquare() {
    glClear(GL_COLOR_BUFFER_BIT);
    glBegin(GL_QUADS);
    for (const auto& [s, t] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}}) {
        glTexCoord2i(s, t);
        glVertex2i(2 * s - 1, 2 * t - 1);
    }
    glEnd();
}

} // namespace

TEST_F(TexturePixel, ThePictureStandsUprightUntilItIsTurned) {
    struct Case {
        float Angle, OffsetS;
        TZEPTextureMinFilter Filter;
        QColor UpperLeft, UpperRight, LowerLeft, LowerRight;
    };
    for (const Case& c :
         {Case{0, 0, mifLinear, Qt::red, Qt::green, Qt::blue, Qt::white},
          Case{0, 0, mifLinearMipmapLinear, Qt::red, Qt::green, Qt::blue, Qt::white},
          Case{90, 0, mifLinear, Qt::blue, Qt::red, Qt::white, Qt::green},
          Case{0, 0.5F, mifLinear, Qt::green, Qt::red, Qt::white, Qt::blue}}) {
        TZEPMaterial material({});
        TZEPTexture& texture = *material.Texture();
        texture.Image()->SetImage(FourColours());
        texture.SetEnvironment(teReplace);
        texture.SetMinFilter(c.Filter);
        texture.SetAngle(c.Angle);
        texture.SetOffsetS(c.OffsetS);
        material.ApplayMaterial(GL_FRONT_AND_BACK);
        DrawFullSquare();
        material.CancelMaterial();
        EXPECT_EQ(Context().ReadPixel(16, 16).rgb(), c.UpperLeft.rgb()) << c.Angle;
        EXPECT_EQ(Context().ReadPixel(48, 16).rgb(), c.UpperRight.rgb()) << c.Angle;
        EXPECT_EQ(Context().ReadPixel(16, 48).rgb(), c.LowerLeft.rgb()) << c.Angle;
        EXPECT_EQ(Context().ReadPixel(48, 48).rgb(), c.LowerRight.rgb()) << c.Angle;
        DrawFullSquare();
        EXPECT_EQ(Context().ReadPixel(16, 16).rgb(), 0xFFFFFFFF) << "off after cancelling";
    }
}
