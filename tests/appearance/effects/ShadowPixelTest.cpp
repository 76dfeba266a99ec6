#include "tests/appearance/effects/ShadowFixture.h"

#include <cmath>

namespace ZEP {
namespace {

/// The ground from straight above, 10 away, with a plate halfway between the lamp over it and the
/// ground: its shadow is twice as large as itself.
class ShadowPixel : public ShadowScene {
protected:
    void SetUp() override {
        ShadowScene::SetUp();
        if (IsSkipped()) return;
        Camera->Position()->SetData(0, 0, 10);
        Camera->Up()->SetData(0, 1, 0);
        Scene.SetSceneAmbientColor(TColor{0x808080});
        Ground = AddGround();
        Ground->XForm()->Translate()->SetData(0, 0, -0.05);
        Ground->SetSlicesX(60);
        Ground->SetSlicesY(60);
        Plate = AddCaster<TZEPBox>({2, 0, 3});
        Plate->XForm()->Scale()->SetData(0.6, 0.6, 0.05);
        AddLight({3, 0, 6})->SetColor(TColor{0x404040});
        Scene.SetBackgroundColor(clRed);
    }
    /// Of the picture after a frame, at x and y on the ground.
    QColor At(double x, double y) {
        const double half = std::tan(Camera->FOVY() * 3.14159265358979 / 360) * 10;
        return Context().ReadPixel(static_cast<int>(32 + 32 * x / half),
                                   static_cast<int>(32 - 32 * y / half));
    }

    TZEPBox* Ground = nullptr;
    TZEPBox* Plate = nullptr;
};

constexpr double Shaded = 1; // where the plate's shadow is, on x

TEST_F(ShadowPixel, FogDimsTheShadowWithTheGround) {
    Render();
    const QColor clear = At(Shaded, 0);
    TZEPFog fog(nullptr);
    fog.SetEnabled(true);
    fog.SetEnd(20);
    fog.SetColor(TColor{0x40A080});
    fog.Apply();
    Render();
    const QColor seen = At(Shaded, 0);
    EXPECT_NEAR(seen.red(), (clear.red() + 0x80) / 2, 2);
    EXPECT_NEAR(seen.green(), (clear.green() + 0xA0) / 2, 2);
    EXPECT_NEAR(seen.blue(), (clear.blue() + 0x40) / 2, 2);
    std::array<float, 4> color{};
    glGetFloatv(GL_FOG_COLOR, color.data());
    EXPECT_NEAR(color[0], 0x80 / 255.0F, 0.01F) << "fog has its colour back";
}

/// Two boxes, of which one is carved, leave no counts behind for the next one.
TEST_F(ShadowPixel, LogicalObjectsBeginWithACleanStencilBuffer) {
    Scene.SetFShadows(false);
    const auto addCarved = [this] {
        auto* logical = Add<TZEPLogicalObject>();
        logical->SetOperation(loSUB);
        logical->XForm()->Translate()->SetData(0, 2, 0.6);
        auto* drill = Add<TZEPBox>(logical);
        drill->XForm()->Scale()->SetData(0.5, 0.5, 2);
        auto* block = Add<TZEPBox>(logical);
        block->SetColor(clLime);
    };
    Render();
    const QColor ground = At(0, 2);
    addCarved();
    Render();
    const QColor block = At(0.35, 2);
    EXPECT_EQ(At(0, 2), ground) << "through the hole";
    EXPECT_GT(block.green(), block.red() + 50);
    addCarved(); // the same once more
    glClearStencil(0x55);
    glClear(GL_STENCIL_BUFFER_BIT);
    Render();
    EXPECT_EQ(At(0, 2), ground);
    EXPECT_EQ(At(0.35, 2), block);
}

} // namespace
} // namespace ZEP
