#include "tests/ResidentMemory.h"
#include "tests/view/PanelFixture.h"
#include <zep/gl/Names.h>

#include <QBoxLayout>

#include <gmock/gmock.h>

namespace ZEP {
namespace {

TEST_F(Panel, ShowsTheScene) {
    Show();
    EXPECT_TRUE(View->Context()->HasContext());
    ExpectShown(Red, "scene");
    EXPECT_GT(View->LastRenderMilliseconds(), 0);
    const int total = TZEPPanel::TotalFrameCount();
    const int own = View->FrameCount();
    View->Paint();
    EXPECT_EQ(View->FrameCount(), own + 1);
    EXPECT_EQ(TZEPPanel::TotalFrameCount(), total + 1);
}

TEST_F(Panel, FillsItsWindowInDevicePixels) {
    Show();
    EXPECT_EQ(View->Width(), qRound(160 * Window.devicePixelRatioF()));
    EXPECT_EQ(View->Height(), qRound(120 * Window.devicePixelRatioF()));
    View->Context()->MakeCurrent();
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_THAT(viewport, testing::ElementsAre(0, 0, View->Width(), View->Height()));
    const QImage frame = View->GrabFrame();
    EXPECT_EQ(frame.size(), QSize(View->Width(), View->Height()));
    EXPECT_EQ(frame.pixel(frame.width() - 1, frame.height() - 1), 0xFFFF0000U);
}

TEST_F(Panel, FiresTheEventsOfAFrameInOrder) {
    Show();
    QStringList events;
    const auto note = [&](const char* name) {
        return [&events, name](TZEPPanel* sender) {
            events.append(QLatin1String(name) + (sender->Context()->IsCurrent() ? "" : "!"));
        };
    };
    QObject::connect(View, &TZEPPanel::BeforDraw, note("BeforDraw"));
    QObject::connect(View, &TZEPPanel::BeforFlush, note("BeforFlush"));
    QObject::connect(View, &TZEPPanel::AfterDraw, note("AfterDraw"));
    QObject::connect(Scene.get(), &TZEPScene::AfterCamera,
                     [&] { events.append(QStringLiteral("scene")); });
    View->Paint();
    const QStringList drawn = {"BeforDraw", "scene", "BeforFlush", "AfterDraw"};
    EXPECT_EQ(events, drawn);
    events.clear();
    View->SetCamera(nullptr);
    View->Paint();
    EXPECT_EQ(events, (QStringList{"BeforDraw", "BeforFlush", "AfterDraw"}));
}

TEST_F(Panel, IsBlackWithoutCameraOrSceneOrWhenDisabled) {
    Show();
    const int frames = View->FrameCount();
    View->SetEnabled(false);
    Settle();
    ExpectShown(Black, "disabled");
    View->SetEnabled(true);
    Settle();
    ExpectShown(Red, "enabled");
    EXPECT_EQ(View->FrameCount(), frames + 1); // black frames do not count
    View->SetCamera(nullptr);
    Settle();
    ExpectShown(Black, "no camera");
    View->SetCamera(Camera);
    Settle();
    ExpectShown(Red, "camera again");
    Camera->SetParentComponent(nullptr);
    Settle();
    ExpectShown(Black, "camera without scene");
}

TEST_F(Panel, ADisabledParentLeavesThePicture) {
    Show();
    Window.setEnabled(false);
    View->Paint();
    ExpectShown(Red, "parent disabled");
    EXPECT_TRUE(View->Enabled());
}

TEST_F(Panel, OptionsAreSetWhereTheyChanged) {
    Show();
    std::vector<bool> states;
    const auto read = [&] {
        GLint shade = 0;
        GLboolean twoSided = GL_FALSE;
        glGetIntegerv(GL_SHADE_MODEL, &shade);
        glGetBooleanv(GL_LIGHT_MODEL_TWO_SIDE, &twoSided);
        states = {shade == GL_FLAT, glIsEnabled(GL_DEPTH_TEST) == GL_TRUE, twoSided == GL_TRUE,
                  glIsEnabled(GL_CULL_FACE) == GL_TRUE, glIsEnabled(GL_LIGHTING) == GL_TRUE};
    };
    QObject::connect(View, &TZEPPanel::BeforFlush, read);
    View->Paint();
    EXPECT_THAT(states, testing::ElementsAre(false, true, true, true, true));
    for (int bit = 0; bit < 5; ++bit) {
        View->SetOptions(TZEPOptions::fromInt(1 << bit));
        View->Paint();
        for (int i = 0; i < 5; ++i) EXPECT_EQ(states[static_cast<std::size_t>(i)], i == bit) << bit;
    }
    // What a host sets stays as long as the options do.
    View->Context()->MakeCurrent();
    glShadeModel(GL_FLAT);
    View->Paint();
    EXPECT_TRUE(states[0]);
}

TEST_F(Panel, FogIsSetBeforeTheSceneIsDrawn) {
    Show();
    std::vector<bool> foggy;
    QObject::connect(Scene.get(), &TZEPScene::AfterCamera,
                     [&] { foggy.push_back(glIsEnabled(GL_FOG) == GL_TRUE); });
    View->Paint();
    View->Fog()->SetEnabled(true);
    EXPECT_EQ(foggy.size(), 1U) << "not at once";
    Settle();
    View->Fog()->SetEnabled(true); // as it is: no frame
    Settle();
    static_cast<void>(View->RenderToCanvas({20, 20}));
    TZEPPanel other;
    other.SetCamera(Camera);
    static_cast<void>(other.GrabFrame()); // has a fog of its own
    View->Fog()->SetEnabled(false);
    Settle();
    EXPECT_EQ(foggy, (std::vector<bool>{false, true, true, false, false}));
}

TEST_F(Panel, RepaintsOnceForWhatChangesAndNotForWhatDoesNot) {
    Show();
    Frames = 0;
    View->SetOptions(View->Options());
    View->SetEnabled(true);
    View->SetForceDraft(false);
    View->SetCamera(Camera);
    Scene->SetBackgroundColor(clRed);
    Settle();
    EXPECT_EQ(Frames, 0);
    for (int i = 0; i < 100; ++i) View->Invalidate();
    EXPECT_EQ(Frames, 0); // never at once
    Settle();
    EXPECT_EQ(Frames, 1);
    View->SetOptions(goFlatShadeModel);
    Scene->SetBackgroundColor(clLime);
    Settle();
    EXPECT_EQ(Frames, 2);
    ExpectShown(Green, "new background");
}

TEST_F(Panel, AFrameWithinAFrameIsNotDrawn) {
    Show();
    QObject::connect(View, &TZEPPanel::BeforFlush, [](TZEPPanel* panel) { panel->Paint(); });
    Frames = 0;
    View->Paint();
    EXPECT_EQ(Frames, 1);
}

TEST_F(Panel, KeepsDrawingThroughResizeHideShowAndReparent) {
    Show();
    Window.resize(300, 200);
    Settle();
    EXPECT_EQ(View->width(), 300);
    ExpectShown(Red, "larger");
    Window.resize(90, 70);
    Settle();
    ExpectShown(Red, "smaller");

    Window.hide();
    Settle();
    Window.show();
    Settle();
    ExpectShown(Red, "window shown again");
    View->hide();
    Settle();
    Scene->SetBackgroundColor(clLime);
    View->show();
    Settle();
    ExpectShown(Green, "panel shown again");

    QWidget other;
    other.setGeometry(300, 40, 200, 150);
    other.show();
    View->setParent(&other);
    View->show();
    Settle();
    EXPECT_EQ(View->size(), other.size());
    ExpectShown(Green, "in another window");
    View->setParent(nullptr);
    View->setGeometry(40, 250, 100, 100);
    View->show();
    Settle();
    ExpectShown(Green, "a window of its own");
    View->setParent(&Window);
    View->show();
    Settle();
    ExpectShown(Green, "back in its window");
    EXPECT_THAT(View->Options(), goDepthTest | goTwoSidedLightModel | goCullFace | goLighting);
    View->Context()->MakeCurrent();
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING)); // set again in the new context
}

TEST_F(Panel, NewHandlesLeaveNothingBehind) {
    Window.resize(500, 400);
    Show();
    const auto turn = [this] {
        View->setParent(nullptr);
        View->show();
        QTest::qWait(5);
        View->setParent(&Window);
        View->show();
        QTest::qWait(5);
    };
    for (int i = 0; i < 5; ++i) turn();
    Settle();
    const int windows = NativeWindow::WindowCount();
    const double memory = ResidentBytes();
    for (int i = 0; i < 30; ++i) turn();
    Settle();
    EXPECT_EQ(NativeWindow::WindowCount(), windows);
    EXPECT_EQ(NativeWindow::ChildCount(View->winId()), 1);
    ExpectShown(Red, "after all turns");
    // The buffers of one context have 2.4 MB and more: 60 kept ones would have 144 MB.
    EXPECT_LT(ResidentBytes() - memory, 20e6);
}

TEST_F(Panel, IsPaintedAgainWhenUncovered) {
    Show();
    int x = 0;
    int y = 0;
    NativeWindow::Origin(View->winId(), x, y);
    Frames = 0;
    {
        const NativeWindow cover(x + View->Width() / 2, y + View->Height() + 5);
        Settle();
        EXPECT_EQ(Shown(0.1, 0.5), Blue);
    }
    Settle();
    EXPECT_GE(Frames, 1);
    ExpectShown(Red, "uncovered");
}

TEST_F(Panel, LivesWithoutContext) {
    Show();
    View->Context()->DestroyContext();
    Frames = 0;
    View->Paint();
    View->SetOptions({});
    Window.resize(200, 100);
    Settle();
    EXPECT_EQ(Frames, 0);
    EXPECT_TRUE(View->GrabFrame().isNull());
    View->Context()->CreateContext(View->winId());
    EXPECT_EQ(NativeWindow::ChildCount(View->winId()), 1);
    View->Paint();
    EXPECT_EQ(Frames, 1);
}

TEST_F(Panel, GrabsAnUprightPictureWithoutBeingShown) {
    TZEPPanel hidden;
    hidden.resize(50, 40);
    hidden.SetCamera(Camera);
    QObject::connect(&hidden, &TZEPPanel::BeforFlush, [](TZEPPanel* panel) {
        glEnable(GL_SCISSOR_TEST); // the upper half, counted from below
        glScissor(0, panel->Height() / 2, panel->Width(), panel->Height());
        glClearColor(0, 1, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT);
        glDisable(GL_SCISSOR_TEST);
    });
    const QImage frame = hidden.GrabFrame();
    EXPECT_EQ(frame.size(), QSize(hidden.Width(), hidden.Height()));
    EXPECT_EQ(frame.pixel(0, 0), 0xFF00FF00U);
    EXPECT_EQ(frame.pixel(frame.width() - 1, frame.height() - 1), 0xFFFF0000U);
}

TEST_F(Panel, NamesFreedBetweenFramesGoAtTheNextOne) {
    Show();
    View->Context()->MakeCurrent();
    const GLuint list = glGenLists(1);
    glNewList(list, GL_COMPILE);
    glEndList();
    View->Paint();
    ReleaseDisplayList(list); // a host might have its own context current here
    ASSERT_TRUE(View->MakeCurrent());
    EXPECT_TRUE(glIsList(list));
    View->Paint();
    EXPECT_FALSE(View->Context()->IsCurrent()); // Qt's own may be needed now
    ASSERT_TRUE(View->MakeCurrent());
    EXPECT_FALSE(glIsList(list));
}

TEST_F(Panel, LivesInALayout) {
    auto* layout = new QVBoxLayout(&Window);
    layout->addWidget(View);
    Show();
    EXPECT_LT(View->width(), 160); // the layout's margins rule, not the alignment
    ExpectShown(Red, "in a layout");
}

TEST_F(Panel, KeepsToItsSide) {
    const std::vector<std::pair<TZEPPanel::TAlign, QRect>> cases = {
        {TZEPPanel::alNone, {5, 6, 40, 30}},     {TZEPPanel::alTop, {0, 0, 160, 30}},
        {TZEPPanel::alBottom, {0, 90, 160, 30}}, {TZEPPanel::alLeft, {0, 0, 40, 120}},
        {TZEPPanel::alRight, {120, 0, 40, 120}}, {TZEPPanel::alClient, {0, 0, 160, 120}},
    };
    Window.resize(100, 100);
    for (const auto& [align, place] : cases) {
        View->SetAlign(TZEPPanel::alNone);
        View->setGeometry(5, 6, 40, 30);
        View->SetAlign(align);
        Show();
        Window.resize(160, 120);
        Settle();
        EXPECT_EQ(View->geometry(), place) << align;
        Window.resize(100, 100);
    }
}

} // namespace
} // namespace ZEP
