#include "tests/gl/FourColours.h"
#include "tests/gl/OffscreenTest.h"
#include "tests/objects/TextScene.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/framework/Exception.h>

#include <QTemporaryDir>

#include <cmath>

using namespace ZEP;

namespace {

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

/// Does something before it draws itself.
class TBusy : public TZEPObject {
public:
    using TZEPObject::TZEPObject;
    void Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override {
        WasTextured = glIsEnabled(GL_TEXTURE_2D);
        if (Do) Do();
        TZEPObject::Draw(scene, state, kind);
    }
    std::function<void()> Do;
    bool WasTextured = true;
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

TEST_F(TexturedSolidPixel, EverySolidShowsItsPicture) {
    TTextScene solids("object S: TZEPScene object TZEPBox end object TZEPBox SlicesX = 3 end "
                      "object TZEPSphere end object TZEPCone Radius1 = 0.4 end "
                      "object TZEPTorus Radius1 = 0.3 Radius2 = 0.2 end object TZEPTeapot end "
                      "object TZEPOctahedron end object TZEPIcosahedron end "
                      "object TZEPDodecahedron end object TZEPHeightField end end");
    QImage image(64, 64, QImage::Format_RGB32); // many small checks
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x)
            image.setPixelColor(x, y, (x / 8 + y / 8) % 2 ? Qt::red : Qt::green);
    ASSERT_EQ(solids.Scene.GetItemsCount(), 10);
    for (int i = 0; i < 10; ++i) {
        TZEPObject* solid = solids.Scene.GetItem(i);
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

// A material of the library waits, applied, for the box that comes after one of the host's.
TEST_F(TexturedSolidPixel, OfNeighboursWhatHasChangedBetweenThemIsSeen) {
    TZEPMaterialLibrary library;
    Scene.SetMaterialLibrary(&library);
    auto& busy = *Add<TBusy>(&Scene);
    auto& second = *Add<TZEPBox>(&Scene);
    second.XForm()->Translate()->SetZ(1);
    TZEPTexture* texture = nullptr;
    const QImage turned = FourColours().mirrored(true, false);
    const std::pair<std::function<void()>, const char*> rows[] = {
        {{}, "RGBW"},
        {[&] { texture->SetAngle(180); }, "WBGR"},
        {[&] { texture->Image()->SetImage(turned); }, "GRWB"},
        {[&] { texture->SetResident(false); }, "RGBW"},
        {[&] { texture->Image()->Clear(); }, "WWWW"},
        {[&] { library.Materials()->Clear(); }, "WWWW"},
    };
    for (const auto& [change, quarters] : rows) {
        library.Materials()->Clear();
        TZEPMaterial* material = library.Materials()->Add()->Material();
        material->FrontFace()->SetEmission(clWhite);
        texture = material->Texture();
        texture->Image()->SetImage(FourColours());
        texture->SetResident(true);
        for (TZEPBox* box : {&Box, &second}) {
            box->SetMaterialIndex(0);
            Face(*box).SetEmission(clWhite);
        }
        busy.Do = {};
        Draw();
        busy.Do = change;
        Draw();
        EXPECT_EQ(Quarters(), quarters) << "row " << (&change - &rows[0].first);
        EXPECT_FALSE(busy.WasTextured || glIsEnabled(GL_TEXTURE_2D));
    }
}
