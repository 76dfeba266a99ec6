#include "tests/gl/FourColours.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/framework/Exception.h>

#include <QTemporaryDir>

#include <cmath>

using namespace ZEP;

namespace {

QImage Filled(QColor color) {
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

/// The front of a box fills the view of 64 by 64 pixels. It shines by itself in its own colour.
class TexturedSolidPixel : public OffscreenTest {
protected:
    TexturedSolidPixel() : OffscreenTest(64, 64) {}

    void SetUp() override {
        OffscreenTest::SetUp();
        if (IsSkipped()) return;
        glEnable(GL_LIGHTING);
        glEnable(GL_CULL_FACE);
        glOrtho(-0.5, 0.5, -0.5, 0.5, -2, 2);
        Box.SetParentComponent(&Scene);
        Face(Box).SetEmission(clWhite);
        Face(Box).SetAmbient(clBlack);
    }
    static TZEPFaceMaterial& Face(TZEPObject& object) { return *object.Material()->FrontFace(); }
    TZEPTexture& Texture() { return *Box.Material()->Texture(); }
    void Draw() {
        glClear(GL_COLOR_BUFFER_BIT);
        Scene.Draw(Scene, dsAllObjects, dkFull);
    }
    QColor At(int x, int y) { return Context().ReadPixel(x, y); }
    /// The middles of the four quarters, from the upper left, as letters.
    std::string Quarters() {
        std::string letters;
        for (const auto& [x, y] : {std::pair{16, 16}, {48, 16}, {16, 48}, {48, 48}})
            letters += Letter(At(x, y));
        return letters;
    }
    static char Letter(const QColor& color) {
        const bool red = color.red() > 200, green = color.green() > 200, blue = color.blue() > 200;
        if (red && green && blue) return 'W';
        return red ? 'R' : green ? 'G' : blue ? 'B' : '?';
    }

    TZEPScene Scene;
    TZEPBox& Box = *new TZEPBox(&Scene);
};

} // namespace

TEST_F(TexturedSolidPixel, PicturesOfAllFormatsStandUprightOnAFace) {
    const QTemporaryDir folder;
    for (const char* format : {"png", "jpg", "bmp"}) {
        const QString file = folder.filePath(QStringLiteral("picture.") + QLatin1String(format));
        ASSERT_TRUE(FourColours().save(file, nullptr, 100));
        Texture().Image()->LoadFromFile(file);
        Draw();
        EXPECT_EQ(Quarters(), "RGBW") << format;
    }
}

TEST_F(TexturedSolidPixel, WhatIsNoPictureRaisesAnErrorAndKeepsTheOldOne) {
    Texture().Image()->SetImage(FourColours());
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("text.png"));
    QFile text(file);
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("no picture");
    text.close();
    EXPECT_THROW(Texture().Image()->LoadFromFile(file), Exception);
    EXPECT_THROW(Texture().Image()->LoadFromFile(folder.filePath(QStringLiteral("none.png"))),
                 Exception);
    Draw();
    EXPECT_EQ(Quarters(), "RGBW");
    Texture().Image()->SetImage(QImage(0, 0, QImage::Format_RGB32));
    EXPECT_TRUE(Texture().Empty());
    Draw();
    EXPECT_EQ(Quarters(), "WWWW") << "the surface itself";
}

TEST_F(TexturedSolidPixel, AHugePictureOfTwoColoursIsDrawnThinned) {
    QImage huge(20'000, 20'000, QImage::Format_Mono);
    huge.setColorTable({0xFFFF0000, 0xFF00FF00});
    huge.fill(0);
    for (int y = 10'000; y < 20'000; ++y) std::memset(huge.scanLine(y), 0xFF, 2500);
    Texture().Image()->SetImage(huge);
    EXPECT_EQ(Texture().Width(), 1024);
    EXPECT_EQ(Texture().Height(), 1024);
    Draw();
    EXPECT_EQ(Quarters(), "RRGG");
}

// Texel t, surface f, environment colour white: modulate f t, replace and decal t, blend
// f (1 - t) + t.
TEST_F(TexturedSolidPixel, EnvironmentsMixSurfaceAndPicture) {
    Texture().Image()->SetImage(Filled(QColor(51, 102, 255))); // 0.2, 0.4, 1
    Face(Box).SetEmission(TColor{0x80CC40});                   // 0.25, 0.8, 0.5
    for (const auto& [environment, red, green, blue] : {std::tuple{teModulate, 0.05, 0.32, 0.5},
                                                        {teReplace, 0.2, 0.4, 1.0},
                                                        {teDecal, 0.2, 0.4, 1.0},
                                                        {teBlend, 0.4, 0.88, 1.0}}) {
        Texture().SetEnvironment(environment);
        Draw();
        EXPECT_NEAR(At(32, 32).redF(), red, 0.01) << environment;
        EXPECT_NEAR(At(32, 32).greenF(), green, 0.01) << environment;
        EXPECT_NEAR(At(32, 32).blueF(), blue, 0.01) << environment;
    }
}

TEST_F(TexturedSolidPixel, TilingTurnAndOffsetActAboutThePicturesCentre) {
    Texture().Image()->SetImage(FourColours());
    struct Case {
        float TilingS, TilingT, OffsetS, OffsetT, Angle;
        const char* Quarters;
    };
    for (const Case& c : {Case{1, 1, 0, 0, 0, "RGBW"},
                          {1, 1, 0.5F, 0, 0, "GRWB"},
                          {1, 1, 0, 0.5F, 0, "BWRG"},
                          {1, 1, 0, 0, 180, "WBGR"},
                          {2, 1, 0.125F, 0, 0, "GGWW"},
                          {0.25F, 0.25F, 0, 0, 0, "RGBW"},
                          {-1, 1, 0, 0, 0, "GRWB"}}) {
        Texture().SetTilingS(c.TilingS);
        Texture().SetTilingT(c.TilingT);
        Texture().SetOffsetS(c.OffsetS);
        Texture().SetOffsetT(c.OffsetT);
        Texture().SetAngle(c.Angle);
        Draw();
        EXPECT_EQ(Quarters(), c.Quarters) << c.TilingS << ' ' << c.OffsetS << ' ' << c.Angle;
    }
}

// The texture object that is made for each application repeats and filters linearly; the settings
// reach only the mipmaps, which go to the texture that is bound.
TEST_F(TexturedSolidPixel, WrapsShowWhereMipmapsAreBuilt) {
    QImage image = Filled(Qt::red);
    for (int y = 0; y < 8; ++y)
        for (int x = 4; x < 8; ++x) image.setPixelColor(x, y, Qt::green);
    Texture().Image()->SetImage(image);
    Texture().SetOffsetS(0.5F); // the left half of the face lies left of the picture
    for (const auto& [filter, wrap, left] : {std::tuple{mifLinear, twRepeat, 'G'},
                                             {mifLinear, twClampToEdge, 'G'},
                                             {mifNearestMipmapNearest, twRepeat, 'G'},
                                             {mifNearestMipmapNearest, twClampToEdge, 'R'}}) {
        Texture().SetMinFilter(filter);
        Texture().SetWrapS(wrap);
        Draw();
        EXPECT_EQ(Letter(At(16, 32)), left) << filter << ' ' << wrap;
        EXPECT_EQ(Letter(At(48, 32)), 'R') << filter << ' ' << wrap;
    }
}

// Clamping without regard to the edge mixes the border colour, black, in.
TEST_F(TexturedSolidPixel, ClampingShowsTheBorderHalfWay) {
    Texture().Image()->SetImage(Filled(Qt::red));
    Texture().SetOffsetS(0.5F);
    Texture().SetMinFilter(mifLinearMipmapLinear);
    Texture().SetWrapS(twClamp);
    Draw();
    EXPECT_NEAR(At(4, 32).redF(), 0.5, 0.02);
    EXPECT_NEAR(At(60, 32).redF(), 1, 0.02);
}

TEST_F(TexturedSolidPixel, FiltersBlurOrNot) {
    QImage image = Filled(Qt::black);
    for (int y = 0; y < 8; ++y)
        for (int x = 4; x < 8; ++x) image.setPixelColor(x, y, Qt::white);
    Texture().Image()->SetImage(image);
    Texture().SetMinFilter(mifNearestMipmapNearest);
    for (const auto& [filter, mixed] : {std::pair{mafNearest, false}, {mafLinear, true}}) {
        Texture().SetMagFilter(filter);
        Draw();
        const int value = At(31, 32).red(); // just left of the step
        EXPECT_EQ(value > 20 && value < 235, mixed) << value;
    }
}

// Fine stripes drawn far smaller than they are become their mean with mipmaps of any kind.
TEST_F(TexturedSolidPixel, MipmapsAverageWhatIsDrawnSmall) {
    QImage image(512, 512, QImage::Format_RGB32);
    for (int y = 0; y < 512; ++y)
        for (int x = 0; x < 512; ++x) image.setPixelColor(x, y, x % 2 ? Qt::white : Qt::black);
    Texture().Image()->SetImage(image);
    for (const TZEPTextureMinFilter filter : {mifNearestMipmapNearest, mifLinearMipmapNearest,
                                              mifNearestMipmapLinear, mifLinearMipmapLinear}) {
        Texture().SetMinFilter(filter);
        Draw();
        for (int x = 4; x < 60; x += 7) EXPECT_NEAR(At(x, 30).red(), 128, 4) << filter;
    }
}

TEST_F(TexturedSolidPixel, NeighboursWithAndWithoutPicturesDoNotMixThem) {
    Texture().Image()->SetImage(Filled(Qt::red));
    Box.XForm()->Translate()->SetData(-0.5, 0, 0);
    auto* plain = new TZEPBox(&Scene);
    plain->SetParentComponent(&Scene);
    plain->XForm()->Translate()->SetData(0.5, 0.5, 0);
    Face(*plain).SetEmission(clLime);
    auto* other = new TZEPBox(&Scene);
    other->SetParentComponent(&Scene);
    other->XForm()->Translate()->SetData(0.5, -0.5, 0);
    Face(*other).SetEmission(clWhite);
    other->Material()->Texture()->Image()->SetImage(Filled(Qt::blue));
    for (int frame = 0; frame < 3; ++frame) {
        Draw();
        EXPECT_EQ(Quarters(), "RGRB");
    }
}

TEST_F(TexturedSolidPixel, EverySolidShowsItsPicture) {
    std::vector<std::unique_ptr<TZEPShadowedObject>> solids;
    solids.push_back(std::make_unique<TZEPBox>());
    auto sliced = std::make_unique<TZEPBox>();
    sliced->SetSlices(0, 3);
    solids.push_back(std::move(sliced));
    solids.push_back(std::make_unique<TZEPSphere>());
    auto cone = std::make_unique<TZEPCone>();
    cone->SetRadius1(0.4);
    solids.push_back(std::move(cone));
    auto torus = std::make_unique<TZEPTorus>();
    torus->SetRadius1(0.3);
    torus->SetRadius2(0.2);
    solids.push_back(std::move(torus));
    solids.push_back(std::make_unique<TZEPTeapot>());
    solids.push_back(std::make_unique<TZEPOctahedron>());
    solids.push_back(std::make_unique<TZEPIcosahedron>());
    solids.push_back(std::make_unique<TZEPDodecahedron>());
    solids.push_back(std::make_unique<TZEPHeightField>());
    QImage image(64, 64, QImage::Format_RGB32); // many small checks
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x)
            image.setPixelColor(x, y, (x / 8 + y / 8) % 2 ? Qt::red : Qt::green);
    for (const auto& solid : solids) {
        Face(*solid).SetEmission(clWhite);
        solid->Material()->Texture()->Image()->SetImage(image);
        glClear(GL_COLOR_BUFFER_BIT);
        solid->DrawMain(false);
        int red = 0, green = 0;
        for (int y = 0; y < 64; ++y)
            for (int x = 0; x < 64; ++x) {
                red += Letter(At(x, y)) == 'R';
                green += Letter(At(x, y)) == 'G';
            }
        EXPECT_GT(red, 30) << solid->ClassName().toStdString();
        EXPECT_GT(green, 30) << solid->ClassName().toStdString();
    }
}
