#include "tests/view/PanelFixture.h"
#include <zep/objects/Box.h>
#include <zep/objects/Line.h>
#include <zep/objects/User.h>
#include <zep/view/Hover.h>

#include <QPointer>

#include <stdexcept>

namespace ZEP {
namespace {

/// What a host does while a panel draws, finds, or hears of a change.
class PanelSeams : public Panel {
protected:
    void SetUp() override {
        Panel::SetUp();
        if (IsSkipped()) return;
        Camera->Position()->SetData(0, -8, 3);
        Box = Add<TZEPBox>(Scene.get());
        Show();
    }

    TZEPBox* Box = nullptr;
};

TEST_F(PanelSeams, AFrameGoesOnWhateverHappensToAnotherPanel) {
    TZEPUser* user = Add<TZEPUser>(Scene.get());
    const QPointer<TZEPPanel> other = new TZEPPanel(&Window);
    other->SetCamera(Camera);
    other->setGeometry(0, 0, 20, 20);
    other->show();
    Settle();
    const QImage before = View->GrabFrame();
    const std::function<void()> events[] = {
        [&] { other->resize(30, 30); },
        [&] { other->Context()->DestroyContext(); },
        [&] { (new TZEPPanel(&Window))->show(); },
        [&] { other->setParent(nullptr); },
        [&] { delete other.data(); },
    };
    for (const auto& event : events) {
        bool done = false;
        user->SetOnDraw([&](TZEPUser&, GLenum, bool) {
            if (!std::exchange(done, true)) event();
        });
        const auto place = &event - std::begin(events);
        EXPECT_EQ(View->GrabFrame(), before) << place;
        ASSERT_TRUE(View->MakeCurrent()) << place;
        for (const auto& [stack, expected] : {std::pair(GL_MODELVIEW_STACK_DEPTH, 1),
                                              {GL_ATTRIB_STACK_DEPTH, 0},
                                              {GL_CLIENT_ATTRIB_STACK_DEPTH, 0}}) {
            GLint depth = 0;
            glGetIntegerv(static_cast<GLenum>(stack), &depth);
            EXPECT_EQ(depth, expected) << place << ' ' << stack;
        }
        View->DoneCurrent();
    }
}

TEST_F(PanelSeams, AFrameMayBeDrawnWhileTheCameraGoes) {
    QObject::connect(View, &TZEPPanel::DrawOver, [] {});
    const TZEPObjectNotify paints{
        [](void* view, TZEPObject*, TZEPObjectAction action, const void*) {
            if (action == saRemove) static_cast<TZEPPanel*>(view)->Paint();
        },
        View};
    Scene->RegisterNotify(paints);
    delete Camera;
    EXPECT_EQ(View->Camera(), nullptr);
    ExpectShown(Black, "without a camera");
    Scene->UnregisterNotify(paints);
}

TEST_F(PanelSeams, WhatIsThrownWhileSomethingIsFoundIsTold) {
    struct TThrows : TZEPUser {
        using TZEPUser::TZEPUser;
        void DrawSpecific(GLenum, bool) override {
            GLint mode = 0;
            glGetIntegerv(GL_RENDER_MODE, &mode);
            if (mode == GL_SELECT) throw std::runtime_error("not to be found");
        }
    };
    Add<TThrows>(Scene.get());
    QStringList told;
    QObject::connect(View, &TZEPPanel::FrameFailed,
                     [&](TZEPPanel*, const QString& message) { told << message; });
    View->PanelControl()->SetMouseLeft(mmSelect);
    QTest::mouseClick(View, Qt::LeftButton, {}, {80, 60});
    TZEPHover hover(View);
    QTest::mouseMove(View, {81, 61});
    Settle();
    EXPECT_GE(told.size(), 2);
    EXPECT_EQ(told.value(0), QStringLiteral("not to be found"));
    EXPECT_EQ(View->GrabFrame().pixel(1, 1) & 0xFFFFFFU, Red) << "and frames are whole";
}

TEST_F(PanelSeams, WhoHearsThatNothingIsUnderThePointerMayFreeThePanel) {
    auto* hover = new TZEPHover(View);
    const QPointer<TZEPPanel> panel = View;
    QObject::connect(hover, &TZEPHover::Changed, [&panel](TZEPObject* object) {
        if (!object) delete panel.data();
    });
    hover->SetFind([this](const QPoint&) { return Box; });
    QTest::mouseMove(View, {80, 60});
    Settle();
    QEvent leave(QEvent::Leave);
    if (panel) QCoreApplication::sendEvent(panel.data(), &leave);
    EXPECT_EQ(panel, nullptr);
}

TEST_F(PanelSeams, ASceneWithinASceneIsFoundInPart) {
    auto* inner = new TZEPScene(Scene.get());
    inner->SetParentComponent(Scene.get());
    auto* found = Add<TZEPBox>(inner);
    delete Box;
    ASSERT_TRUE(View->MakeCurrent());
    const int width = View->Width(), height = View->Height();
    EXPECT_EQ(Scene->Pick(Camera, width, height, width / 2, height / 2, 4, 4, 9), found);
    View->DoneCurrent();
}

/// A smooth line has a texture while it is drawn.
TEST_F(PanelSeams, ASelectedUserHasAPlainBoxWhateverItDraws) {
    struct TUser : TZEPUser {
        using TZEPUser::TZEPUser;
        void DrawSelection() override {
            Textured = Textured || glIsEnabled(GL_TEXTURE_2D);
            TZEPUser::DrawSelection();
        }
        bool Textured = false;
    };
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::green);
    TZEPLine line;
    line.P2()->SetData(1, 1, 1);
    line.SetSmooth(true);
    line.Material()->Texture()->Image()->SetImage(picture);
    auto* user = Add<TUser>(Scene.get());
    user->SetSelected(true);
    user->SetOnDraw([&](TZEPUser&, GLenum, bool) { line.Draw(*Scene, dsTransparent, dkFull); });
    static_cast<void>(View->GrabFrame());
    EXPECT_FALSE(user->Textured);
}

} // namespace
} // namespace ZEP
