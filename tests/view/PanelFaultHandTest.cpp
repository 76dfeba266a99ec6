#include "tests/view/PanelFixture.h"
#include <zep/appearance/effects/Light.h>
#include <zep/appearance/materials/Material.h>
#include <zep/objects/Box.h>

#include <stdexcept>

namespace ZEP {
namespace {

/// Leaves everything open that can be, and throws.
class TThrower : public TZEPObject {
public:
    using TZEPObject::TZEPObject;
    void DrawMain(bool) override {
        if (Fault == 0) return;
        glPushMatrix();
        glMatrixMode(GL_PROJECTION);
        glPushMatrix();
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
        glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
        if (Fault == 1) glNewList(glGenLists(1), GL_COMPILE);
        if (Fault == 2) glBegin(GL_TRIANGLES);
        if (Fault == 3) glRenderMode(GL_FEEDBACK);
        if (Fault == 4) throw 4;
        throw std::runtime_error("it breaks");
    }
    int Fault = 0;
};

class FaultyPanel : public Panel {
protected:
    void SetUp() override {
        Panel::SetUp();
        if (IsSkipped()) return;
        Thrower = Add<TThrower>(Scene.get());
        QObject::connect(View, &TZEPPanel::FrameFailed,
                         [this](TZEPPanel*, const QString& message) { Messages << message; });
        Show();
    }
    void Repaint() {
        View->Invalidate();
        Settle();
    }

    TThrower* Thrower = nullptr;
    QStringList Messages;
};

TEST_F(FaultyPanel, AFrameThatFailsIsToldOnceAndTheNextOneIsWhole) {
    GLint depth = 0;
    for (const int fault : {1, 2, 3, 4}) {
        Thrower->Fault = fault;
        Messages.clear();
        Scene->SetBackgroundColor(clBlack);
        Repaint();
        Repaint();
        EXPECT_EQ(Messages.join(u'|'),
                  fault == 4 ? "Something was thrown that is no exception." : "it breaks")
            << fault;
        Thrower->Fault = 0;
        Scene->SetBackgroundColor(clLime);
        Repaint();
        ExpectShown(Green, "the next frame");
        ASSERT_TRUE(View->MakeCurrent());
        for (const auto& [stack, expected] : {std::pair(GL_MODELVIEW_STACK_DEPTH, 1),
                                              {GL_PROJECTION_STACK_DEPTH, 1},
                                              {GL_ATTRIB_STACK_DEPTH, 0},
                                              {GL_CLIENT_ATTRIB_STACK_DEPTH, 0}}) {
            glGetIntegerv(static_cast<GLenum>(stack), &depth);
            EXPECT_EQ(depth, expected) << fault << ' ' << stack;
        }
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        EXPECT_EQ(Messages.size(), 1) << "told again for a frame that succeeds";
    }
}

TEST_F(FaultyPanel, AHandlerMayCloseTheWindow) {
    Thrower->Fault = 1;
    QObject::connect(View, &TZEPPanel::FrameFailed,
                     [this] { delete std::exchange(View, nullptr); });
    View->Invalidate();
    Settle();
    EXPECT_EQ(View, nullptr);
    EXPECT_EQ(Messages.size(), 1);
}

TEST_F(FaultyPanel, APictureThatFailsIsTheCallersFault) {
    Thrower->Fault = 2;
    EXPECT_THROW(static_cast<void>(View->RenderToCanvas({40, 30})), std::runtime_error);
    EXPECT_TRUE(Messages.isEmpty());
    Thrower->Fault = 0;
    Scene->SetBackgroundColor(clLime);
    Repaint();
    ExpectShown(Green, "the panel");
    EXPECT_EQ(View->RenderToCanvas({40, 30}).pixel(20, 15), 0xFF00FF00);
}

/// What subtracts light in one frame would take it off what blends in the next one, here and in
/// other panels.
TEST_F(FaultyPanel, AfterAFrameWithShadowsWhatIsTransparentBlendsAsBefore) {
    Scene->SetBackgroundColor(clWhite);
    auto* glass = Add<TZEPBox>(Scene.get());
    glass->Material()->SetTransparency(0.5F);
    glass->Material()->FrontFace()->SetEmission(clBlue);
    glass->Material()->FrontFace()->SetColor(10, clBlack);
    Camera->Position()->SetData(0, 0, 1);
    Camera->Up()->SetData(0, 1, 0);
    const auto seen = [this] { return View->GrabFrame().pixel(View->Width() / 2, 40); };
    const QRgb before = seen();
    EXPECT_EQ(before, 0xFF7F7FFF);
    auto* light = Add<TZEPLight>(Scene.get());
    light->SetColor(clBlack);
    light->SetCastShadows(true);
    light->AddShadowList(glGenLists(1));
    Scene->SetFShadows(true);
    EXPECT_EQ(seen(), before);
    Scene->SetFShadows(false);
    EXPECT_EQ(seen(), before);
}

} // namespace
} // namespace ZEP
