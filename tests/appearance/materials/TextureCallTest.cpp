#include "tests/gl/CallRecorder.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
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

TEST_F(TextureCall, AResidentOneIsLoadedWhereItHasChangedOnly) {
    TZEPTexture texture, other;
    texture.Image()->SetImage(Picture(2, 2));
    texture.SetResident(true);
    other.Assign(&texture);
    const std::pair<std::function<void()>, bool> rows[] = {
        {[] {}, true},
        {[] {}, false},
        {[&] { texture.SetMagFilter(mafNearest); }, false},
        {[&] { texture.Image()->SetImage(Picture(4, 4)); }, true},
        {[&] { texture.SetBorder(true); }, true},
        {[&] { texture.SetBorder(false); }, true},
        {[&] { texture.SetMinFilter(mifLinearMipmapLinear); }, true},
        {[&] { other.ApplayMaterial(); }, false},
        {[] { TZEPTexture::ForgetBound(); }, true},
        {[&] { texture.SetMinFilter(mifLinear); }, true},
        {[&] { // in a list it stands as it is now
             glNewList(77, GL_COMPILE);
             texture.ApplayMaterial();
             glEndList();
             glDeleteLists(77, 1);
         },
         true}};
    for (const auto& [change, loads] : rows) {
        change();
        const GlCalls calls;
        texture.ApplayMaterial();
        EXPECT_EQ(calls.Count("glTexImage2D") + calls.Count("gluBuild2DMipmaps"), loads)
            << "row " << (&change - &rows[0].first);
        EXPECT_TRUE(glIsTexture(static_cast<GLuint>(BoundTexture())));
    }
}

TEST_F(TextureCall, NeighboursShareResidentOnesAndSetWhatDiffers) {
    TZEPMaterialLibrary library;
    TZEPScene scene;
    scene.SetMaterialLibrary(&library);
    for (int i = 0; i < 3; ++i) {
        TZEPTexture& texture = *library.Materials()->Add()->Material()->Texture();
        texture.Image()->SetImage(Picture(2, 2));
        texture.SetResident(true);
    }
    (*library.Materials())[2].Material()->Texture()->SetAngle(90);
    for (const int material : {0, 0, 1, 1, 2, 2}) Add<TZEPBox>(&scene)->SetMaterialIndex(material);
    scene.Draw(scene, dsAllObjects, dkFull);
    const GlCalls calls;
    scene.Draw(scene, dsAllObjects, dkFull);
    EXPECT_EQ(calls.Count("glBindTexture"), 3U);
    EXPECT_EQ(calls.Count("glRotatef"), 2U) << "the first and the turned one";
    EXPECT_THAT(calls.Of({"glEnable", "glDisable"}),
                ElementsAre("glEnable(GL_TEXTURE_2D)", "glDisable(GL_TEXTURE_2D)"));
    EXPECT_EQ(calls.Count("glDrawArrays"), 6U);
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
