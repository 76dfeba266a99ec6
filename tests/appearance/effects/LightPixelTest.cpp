#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/objects/Box.h>

#include <cmath>

using namespace ZEP;

namespace {

/// A camera that looks along -z at a square of 2 by 2 in 64 by 64 pixels, without perspective, from
/// the origin: x and y of the scene are those of the picture from -1 to 1.
class Eye : public TZEPObject, public TZEPSceneCamera {
public:
    void Apply(int, int, int) override {
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-1, 1, -1, 1, 0, 100);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
    }
    void Pick(int, int, int, int, int, int) override {}
    TZEPObject* AsObject() override { return this; }
};

/// A plate of 4 by 4 that faces the eye at z = -10.
class LightPixel : public OffscreenTest {
protected:
    LightPixel() : OffscreenTest(64, 64) {}

    void SetUp() override {
        OffscreenTest::SetUp();
        if (IsSkipped()) return;
        glEnable(GL_LIGHTING);
        glEnable(GL_DEPTH_TEST);
        Scene.SetSceneAmbientColor(clBlack);
        Plate.SetParentComponent(&Scene);
        Plate.XForm()->Translate()->SetData(0, 0, -10.5);
        Plate.XForm()->Scale()->SetData(4, 4, 1);
        // Fine cells, since OpenGL lights corners and spreads the colours between them.
        Plate.SetSlicesX(128);
        Plate.SetSlicesY(128);
        TZEPFaceMaterial* face = Plate.Material()->FrontFace();
        face->SetAmbient(clBlack);
        face->SetDiffuse(clWhite);
    }
    TZEPLight& AddLight(TColor color = clWhite) {
        auto* light = new TZEPLight(&Scene);
        light->SetParentComponent(&Scene);
        light->SetColor(color);
        return *light;
    }
    void Render() { Scene.Render(&Camera, 64, 64, false); }
    /// Of the picture at x and y from -1 to 1, by 255.
    int Red(double x = 0, double y = 0) { return At(x, y).red(); }
    QColor At(double x, double y) {
        return Context().ReadPixel(static_cast<int>(32 + 32 * x), static_cast<int>(31 - 32 * y));
    }
    static int Byte(double value) {
        return static_cast<int>(std::lround(std::fmin(std::fmax(value, 0), 1) * 255));
    }

    TZEPScene Scene;
    Eye Camera;
    TZEPBox Plate{&Scene};
};

constexpr double PixelHalf = 1.0 / 64;

/// Where the centre of the pixel lies that is read at x.
double CenterOf(double x) {
    return (std::floor(32 + 32 * x) - 32) / 32 + PixelHalf;
}

} // namespace

// A light's diffuse part is its colour times the material's times the cosine between the normal,
// here +z, and the way to the light.
TEST_F(LightPixel, AFaceIsLitByTheCosineToALightAtInfinity) {
    TZEPLight& light = AddLight();
    for (const auto& [x, z, cosine] :
         {std::tuple{0., 1., 1.}, {3., 4., 0.8}, {4., 3., 0.6}, {1., 0., 0.}, {0., -1., 0.}}) {
        light.Position()->SetData(x, 0, z);
        Render();
        EXPECT_NEAR(Red(), Byte(cosine), 1) << x << ", " << z;
    }
}

TEST_F(LightPixel, AmbientOfSceneAndLightAndEmissionAdd) {
    TZEPFaceMaterial* face = Plate.Material()->FrontFace();
    face->SetDiffuse(clBlack);
    face->SetAmbient(TColor{0x000080});  // 0.502
    face->SetEmission(TColor{0x000033}); // 0.2
    Scene.SetSceneAmbientColor(TColor{0x00007F});
    Render();
    EXPECT_NEAR(Red(), Byte(0.2 + 0.502 * 0.498), 1);
    AddLight(TColor{0x00003F}).Position()->SetData(0, 0, -1); // from behind: ambient only
    Render();
    EXPECT_NEAR(Red(), Byte(0.2 + 0.502 * (0.498 + 0.247)), 1);
}

TEST_F(LightPixel, APositionedLightFadesWithAngleAndDistance) {
    TZEPLight& light = AddLight();
    light.SetDirectional(true);
    light.Position()->SetData(0, 0, -9); // one above the plate
    light.Target()->SetData(0, 0, -10);
    for (const double attenuation : {0.0, 0.5}) {
        light.SetAttenuation(static_cast<float>(attenuation));
        Render();
        for (const double x : {0.0, 0.25, 0.75}) {
            const double distance = std::hypot(CenterOf(x), PixelHalf, 1);
            EXPECT_NEAR(Red(x), Byte(1 / distance / (1 + attenuation * distance)), 2)
                << x << " with " << attenuation;
        }
    }
}

// Within the cone the light is multiplied by the cosine to its axis to the power of the exponent.
TEST_F(LightPixel, ASpotLightsItsConeOnly) {
    TZEPLight& light = AddLight();
    light.SetDirectional(true);
    light.Position()->SetData(0, 0, -9);
    light.Target()->SetData(0.5, 0, -10);
    light.SetCutoff(15);
    light.SetExponent(8);
    Render();
    const double axis = std::hypot(0.5, 1);
    for (const auto& [x, lit] :
         {std::pair{-0.1, false}, {0.3, true}, {0.5, true}, {0.7, true}, {0.99, false}}) {
        const double px = CenterOf(x);
        const double distance = std::hypot(px, PixelHalf, 1);
        const double spot = (0.5 * px + 1) / axis / distance;
        EXPECT_NEAR(Red(x), lit ? Byte(std::pow(spot, 8) / distance) : 0, 2) << x;
    }
    EXPECT_EQ(Red(0.5, 0.6), 0);
}

// Specular light is (normal * half vector) ^ shininess; the eye is taken to be at infinity.
TEST_F(LightPixel, AShinySurfaceShowsAHighlight) {
    TZEPFaceMaterial* face = Plate.Material()->FrontFace();
    face->SetDiffuse(clBlack);
    face->SetSpecular(clWhite);
    face->SetShininess(20);
    TZEPLight& light = AddLight();
    light.Position()->SetData(3, 0, 4);
    Render();
    const TGLArrayd3 half{0.6, 0, 0.8 + 1};
    EXPECT_NEAR(Red(), Byte(std::pow(half[2] / std::hypot(half[0], half[2]), 20)), 2);
}

TEST_F(LightPixel, ALightRidesOnItsParentAndAddsItsColour) {
    auto* turner = new TZEPObject(&Scene);
    turner->SetParentComponent(&Scene);
    TZEPLight& light = AddLight(clRed);
    light.SetParentComponent(turner);
    light.Position()->SetData(0, 0, 1);
    AddLight(clBlue).Position()->SetData(0, 0, 1);
    turner->XForm()->Rotate()->SetData(0, 60, 0);
    Render();
    EXPECT_NEAR(At(0, 0).red(), Byte(0.5), 1);
    EXPECT_EQ(At(0, 0).blue(), 255);
    EXPECT_EQ(At(0, 0).green(), 0);
    light.SetVisible(false);
    Render();
    EXPECT_EQ(At(0, 0).red(), 0);
}

// Fog leaves of a surface the part f of its mode and gives 1 - f of its own colour.
TEST_F(LightPixel, FogHidesByDistance) {
    struct Case {
        TFogMode Mode;
        double Start, End, Density, Seen;
    };
    AddLight().Position()->SetData(0, 0, 1);
    for (const Case& c : {Case{fmLinear, 5, 25, 0, 0.75},
                          {fmLinear, 12, 25, 0, 1},
                          {fmLinear, 1, 9, 0, 0},
                          {fmExp, 0, 0, 0.05, std::exp(-0.5)},
                          {fmExp2, 0, 0, 0.05, std::exp(-0.25)}}) {
        TZEPFog fog;
        fog.SetEnabled(true);
        fog.SetMode(c.Mode);
        fog.SetStart(c.Start);
        fog.SetEnd(c.End);
        fog.SetDensity(c.Density);
        fog.SetColor(clBlue);
        fog.Apply();
        Render();
        EXPECT_NEAR(Red(), Byte(c.Seen), 3) << c.Mode;
        EXPECT_EQ(At(0, 0).blue(), 255) << c.Mode;
    }
    TZEPFog().Apply();
    Render();
    EXPECT_EQ(Red(), 255);
}
