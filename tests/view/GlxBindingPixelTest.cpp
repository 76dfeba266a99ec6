#include <zep/view/GlxBinding.h>

#include "tests/view/NativeWindow.h"
#include <zep/framework/Message.h>
#include <zep/gl/Names.h>
#include <zep/view/Context.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

class GlxBindingTest : public testing::Test {
protected:
    void SetUp() override {
        if (!NativeWindow::HasDisplay()) GTEST_SKIP() << "there is no X display";
    }
};

void Clear(float red, float green, float blue) {
    glClearColor(red, green, blue, 0);
    glClear(GL_COLOR_BUFFER_BIT);
}

unsigned int ReadPixel(int x, int y) {
    GLubyte rgb[3] = {};
    glReadPixels(x, y, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, rgb);
    return static_cast<unsigned int>(rgb[0] << 16 | rgb[1] << 8 | rgb[2]);
}

TEST_F(GlxBindingTest, SafeModeGetsTheBuffersThatEffectsNeed) {
    const NativeWindow window(64, 48);
    TZEPContext context;
    context.CreateContext(window.Handle());
    ASSERT_TRUE(context.IsCurrent());
    const TPixelFormat& format = context.PixelFormat();
    EXPECT_TRUE(format.Has(pfDoubleBuffer | pfDrawToWindow | pfSupportOpenGL));
    EXPECT_GE(format.StencilBits, 8);
    EXPECT_GE(format.DepthBits, 24);
    EXPECT_GE(format.AlphaBits, 8);
    EXPECT_EQ(format.AccumBits, 64);
    EXPECT_EQ(context.StencilBits(), format.StencilBits);
    EXPECT_EQ(format.Has(pfGenericFormat), context.Acceleration() == QStringLiteral("Software"));
    EXPECT_EQ(context.UseSoftwareRenderer(), format.Has(pfGenericFormat));
    if (context.Renderer().startsWith(QStringLiteral("LLVMPIPE"))) {
        EXPECT_TRUE(context.UseSoftwareRenderer());
    }
    GLint accum = 0;
    glGetIntegerv(GL_ACCUM_RED_BITS, &accum);
    EXPECT_EQ(accum, 16);
    EXPECT_TRUE(glIsEnabled(GL_NORMALIZE));
    EXPECT_EQ(context.MaxLights(), 8);
    EXPECT_TRUE(context.CheckExtention(QStringLiteral("GL_EXT_blend_subtract")));
    EXPECT_NE(BlendEquationEXT, nullptr);
    EXPECT_NE(BlendColorEXT, nullptr);
    EXPECT_EQ(context.Binding().EntryPoint("glBlendEquationEXT"),
              reinterpret_cast<TEntryPoint>(BlendEquationEXT));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(GlxBindingTest, PlainModeGetsTheNearestFormat) {
    const NativeWindow window(16, 16);
    TZEPContext context;
    context.SetSafeMode(false);
    context.CreateContext(window.Handle());
    ASSERT_TRUE(context.IsCurrent());
    EXPECT_TRUE(context.PixelFormat().Has(pfDoubleBuffer));
    EXPECT_GE(context.PixelFormat().StencilBits, 8);
    EXPECT_EQ(context.PixelFormat().AccumBits, 64);
    EXPECT_FALSE(context.UseSoftwareRenderer());
}

TEST_F(GlxBindingTest, NoFormatIsListedTwice) {
    const NativeWindow window(16, 16);
    const auto binding = CreateGlxBinding();
    binding->SetWindow(window.Handle());
    ASSERT_GT(binding->FormatCount(), 0);
    for (int i = 2; i <= binding->FormatCount(); ++i) {
        TPixelFormat former;
        TPixelFormat format;
        EXPECT_TRUE(binding->DescribeFormat(i - 1, former) && binding->DescribeFormat(i, format));
        EXPECT_NE(former, format) << i;
    }
    TPixelFormat untouched;
    EXPECT_FALSE(binding->DescribeFormat(0, untouched));
    EXPECT_FALSE(binding->DescribeFormat(binding->FormatCount() + 1, untouched));
    EXPECT_EQ(untouched, TPixelFormat());
}

TEST_F(GlxBindingTest, ListsAndTexturesOutliveTheContextThatMadeThem) {
    const NativeWindow window(32, 32);
    GLuint list = 0;
    GLuint texture = 0;
    {
        TZEPContext first;
        first.CreateContext(window.Handle());
        list = glGenLists(1);
        glNewList(list, GL_COMPILE);
        Clear(0, 1, 0);
        glEndList();
        glGenTextures(1, &texture);
        glBindTexture(GL_TEXTURE_2D, texture);
        const GLubyte texel[4] = {1, 2, 3, 4};
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, texel);
    }
    TZEPContext second;
    second.CreateContext(window.Handle());
    EXPECT_TRUE(glIsList(list));
    EXPECT_TRUE(glIsTexture(texture));
    glCallList(list);
    EXPECT_EQ(ReadPixel(3, 3), 0x00FF00U);
    ReleaseDisplayList(list);
    EXPECT_TRUE(glIsList(list)); // a host might have its own context current here
    DeleteReleasedNames();
    EXPECT_FALSE(glIsList(list));
    glDeleteTextures(1, &texture);
}

TEST_F(GlxBindingTest, RefusalsEndNothing) {
    const TMessageHandler former =
        SetMessageHandler([](const QString&, const QString&, TMessageIcon) {});
    NativeWindow window(32, 32);
    const TWindowHandle handle = window.Handle();
    TZEPContext context;
    context.CreateContext(handle);
    window.Destroy(); // its child goes with it
    context.Binding().Resize(10, 10);
    context.DestroyContext();
    context.CreateContext(handle);
    EXPECT_FALSE(context.HasContext());
    EXPECT_FALSE(context.MakeCurrent());
    context.Binding().SwapBuffers();
    SetMessageHandler(former);
}

} // namespace
} // namespace ZEP
