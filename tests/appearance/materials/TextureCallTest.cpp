#include "tests/gl/CallRecorder.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/appearance/materials/Material.h>
#include <zep/gl/Names.h>

#include <gmock/gmock.h>

using namespace ZEP;
using testing::ElementsAre;
using testing::StartsWith;

namespace {

class TextureCall : public OffscreenTest {
protected:
    ~TextureCall() override { SetContextIsCurrent(false); }
    void SetUp() override {
        OffscreenTest::SetUp();
        SetContextIsCurrent(true);
    }
};

QImage Picture(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

std::string Name(GLint name) {
    return std::to_string(name);
}

GLint BoundTexture() {
    GLint name = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &name);
    return name;
}

} // namespace

TEST_F(TextureCall, WithoutAPictureItDoesNothing) {
    TZEPTexture texture;
    texture.SetAngle(5);
    const GlCalls calls;
    texture.ApplayMaterial();
    texture.CancelMaterial();
    texture.Image()->SetImage(Picture(4, 4));
    texture.Image()->Clear();
    texture.ApplayMaterial();
    texture.CancelMaterial();
    ExpectNoCalls(calls);
}

TEST_F(TextureCall, AppliesSettingsImageAndMatrixInOrder) {
    TZEPTexture texture;
    texture.Image()->SetImage(Picture(100, 60));
    texture.SetMagFilter(mafNearest);
    texture.SetMinFilter(mifNearest);
    texture.SetWrapS(twClamp);
    texture.SetWrapT(twClampToEdge);
    texture.SetEnvironment(teDecal);
    texture.SetAngle(30);
    texture.SetTilingS(2);
    texture.SetTilingT(3);
    texture.SetOffsetS(0.25F);
    texture.SetOffsetT(-0.25F);
    const GlCalls calls;
    texture.ApplayMaterial();
    const std::string name = Name(BoundTexture());
    ASSERT_NE(name, "0");
    ExpectCalls(calls,
                {
                    "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST)",
                    "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST)",
                    "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP)",
                    "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE)",
                    "glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, 1 1 1 1)",
                    "glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL)",
                    "glGenTextures(1, data)",
                    "glBindTexture(GL_TEXTURE_2D, " + name + ")",
                    "glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT)",
                    "glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT)",
                    "glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR)",
                    "glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)",
                    "glTexImage2D(GL_TEXTURE_2D, 0, 3, 128, 64, 0, GL_RGBA, GL_UNSIGNED_BYTE, "
                    "data)",
                    "glEnable(GL_TEXTURE_2D)",
                    "glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_FASTEST)",
                    "glMatrixMode(GL_TEXTURE)",
                    "glLoadIdentity()",
                    "glTranslatef(0.5, 0.5, 0)",
                    "glRotatef(30, 0, 0, 1)",
                    "glScalef(2, 3, 1)",
                    "glTranslatef(-0.75, -0.25, 0)",
                    "glMatrixMode(GL_MODELVIEW)",
                });
    EXPECT_FALSE(texture.Mipmapped());
}

TEST_F(TextureCall, EveryModeHasItsConstant) {
    struct Case {
        void (*Set)(TZEPTexture&);
        const char* Call;
    };
    using T = TZEPTexture;
    for (const Case& c : {
             Case{[](T& t) { t.SetEnvironment(teModulate); }, "ENV_MODE, GL_MODULATE)"},
             Case{[](T& t) { t.SetEnvironment(teReplace); }, "ENV_MODE, GL_REPLACE)"},
             Case{[](T& t) { t.SetEnvironment(teBlend); }, "ENV_MODE, GL_BLEND)"},
             Case{[](T& t) { t.SetMinFilter(mifLinear); }, "MIN_FILTER, GL_LINEAR)"},
             Case{[](T& t) { t.SetMinFilter(mifNearestMipmapNearest); },
                  "MIN_FILTER, GL_NEAREST_MIPMAP_NEAREST)"},
             Case{[](T& t) { t.SetMinFilter(mifLinearMipmapNearest); },
                  "MIN_FILTER, GL_LINEAR_MIPMAP_NEAREST)"},
             Case{[](T& t) { t.SetMinFilter(mifNearestMipmapLinear); },
                  "MIN_FILTER, GL_NEAREST_MIPMAP_LINEAR)"},
             Case{[](T& t) { t.SetMinFilter(mifLinearMipmapLinear); },
                  "MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR)"},
             Case{[](T& t) { t.SetMagFilter(mafLinear); }, "MAG_FILTER, GL_LINEAR)"},
             Case{[](T& t) { t.SetWrapS(twRepeat); }, "WRAP_S, GL_REPEAT)"},
             Case{[](T& t) { t.SetWrapT(twClamp); }, "WRAP_T, GL_CLAMP)"},
         }) {
        TZEPTexture texture;
        texture.Image()->SetImage(Picture(1, 1));
        c.Set(texture);
        const GlCalls calls;
        texture.ApplayMaterial();
        EXPECT_THAT(calls.Of({"glTexParameteri", "glTexEnvi"}),
                    testing::Contains(testing::EndsWith(c.Call)));
    }
}

TEST_F(TextureCall, MipmapsGoToTheBoundTextureWithoutAnObjectOfItsOwn) {
    TZEPTexture texture;
    texture.Image()->SetImage(Picture(4, 2));
    texture.SetMinFilter(mifLinearMipmapLinear);
    const GlCalls calls;
    texture.ApplayMaterial();
    EXPECT_TRUE(texture.Mipmapped());
    EXPECT_THAT(calls.Of({"gl*Texture*", "glu*", "glTexImage2D"}),
                ElementsAre("gluBuild2DMipmaps(GL_TEXTURE_2D, 3, 4, 2, GL_RGBA, "
                            "GL_UNSIGNED_BYTE, data)"));
    EXPECT_EQ(BoundTexture(), 0);
}

TEST_F(TextureCall, EveryApplicationReplacesTheObjectAndDestructionFreesIt) {
    std::string name;
    const GlCalls calls;
    {
        TZEPTexture texture;
        texture.Image()->SetImage(Picture(2, 2));
        texture.SetBorder(true);
        texture.ApplayMaterial();
        name = Name(BoundTexture());
        texture.CancelMaterial();
        texture.ApplayMaterial();
        EXPECT_THAT(calls.Of({"glGenTextures", "glDeleteTextures"}),
                    ElementsAre("glGenTextures(1, data)", "glDeleteTextures(1, " + name + ")",
                                "glGenTextures(1, data)"));
        EXPECT_THAT(calls.Of({"glTexImage2D"}),
                    testing::Each(StartsWith("glTexImage2D(GL_TEXTURE_2D, 0, 3, 2, 2, 1, ")));
        name = Name(BoundTexture());
    }
    EXPECT_EQ(calls.List().back(), "glDeleteTextures(1, " + name + ")");
}

TEST_F(TextureCall, CancellingSwitchesOffAndResetsTheMatrix) {
    TZEPMaterial material({});
    material.Texture()->Image()->SetImage(Picture(2, 2));
    material.ApplayMaterial(GL_FRONT_AND_BACK);
    const GlCalls calls;
    material.CancelMaterial();
    ExpectCalls(calls, {"glDisable(GL_TEXTURE_2D)", "glMatrixMode(GL_TEXTURE)", "glLoadIdentity()",
                        "glMatrixMode(GL_MODELVIEW)"});
}

TEST_F(TextureCall, AMaterialAppliesItsTextureAfterItsFaces) {
    TZEPMaterial material({});
    material.Texture()->Image()->SetImage(Picture(2, 2));
    const GlCalls calls;
    material.ApplayMaterial(GL_FRONT_AND_BACK);
    EXPECT_EQ(calls.Count("glMaterialfv"), 10U);
    EXPECT_THAT(calls.List()[9], StartsWith("glMaterialfv(GL_BACK, GL_SHININESS"));
    EXPECT_THAT(calls.List()[10], StartsWith("glTexParameteri"));
}

TEST_F(TextureCall, TheMatrixTurnsAboutTheCentre) {
    TZEPTexture texture;
    texture.Image()->SetImage(Picture(2, 2));
    texture.SetAngle(90);
    texture.ApplayMaterial();
    float m[16];
    glGetFloatv(GL_TEXTURE_MATRIX, m);
    const auto at = [&m](float s, float t) {
        return std::pair{m[0] * s + m[4] * t + m[12], m[1] * s + m[5] * t + m[13]};
    };
    const auto near = [](std::pair<float, float> p) {
        return testing::Pair(testing::FloatNear(p.first, 1e-6F),
                             testing::FloatNear(p.second, 1e-6F));
    };
    EXPECT_THAT(at(0.5F, 0.5F), near({0.5F, 0.5F}));
    EXPECT_THAT(at(1, 0.5F), near({0.5F, 1}));
    EXPECT_THAT(at(0, 0), near({1, 0}));
}
