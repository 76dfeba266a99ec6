#include "tests/view/FakePanel.h"
#include "tests/view/PanelFixture.h"
#include <zep/objects/Line.h>
#include <zep/view/RubberBand.h>

#include <QMouseEvent>
#include <QWheelEvent>

#include <random>

namespace ZEP {
namespace {

/// Sends mouse events of its own making: the buttons held are what they say.
class Mouse {
public:
    explicit Mouse(QWidget* widget) : m_widget(widget) {}

    void Press(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
        m_held |= button;
        Send(QEvent::MouseButtonPress, x, y, button);
    }
    void Move(int x, int y) { Send(QEvent::MouseMove, x, y, Qt::NoButton); }
    void Release(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
        m_held &= ~Qt::MouseButtons(button);
        Send(QEvent::MouseButtonRelease, x, y, button);
    }
    void DoubleClick(int x, int y, Qt::MouseButton button) {
        m_held |= button;
        Send(QEvent::MouseButtonDblClick, x, y, button);
    }
    void Wheel(int delta) {
        if (!m_widget) return;
        QWheelEvent event({5, 5}, {5, 5}, {}, {0, delta}, m_held, Keys, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_widget, &event);
    }
    Qt::KeyboardModifiers Keys;

private:
    void Send(QEvent::Type type, int x, int y, Qt::MouseButton button) {
        if (!m_widget || !m_widget->isVisible()) return;
        QMouseEvent event(type, QPointF(x, y), m_widget->mapToGlobal(QPointF(x, y)), button, m_held,
                          Keys);
        QCoreApplication::sendEvent(m_widget, &event);
    }

    QPointer<QWidget> m_widget;
    Qt::MouseButtons m_held;
};

TEST_F(Panel, ADragMovesTheCameraOfAllPanelsThatShowIt) {
    TZEPPanel second;
    second.setGeometry(300, 30, 100, 100);
    second.SetCamera(Camera);
    second.show();
    Show();
    Camera->Position()->SetData(0, -5, 0);
    View->PanelControl()->SetMouseLeft(mmOrbit);
    Settle();
    const int frames = second.FrameCount();
    Mouse mouse(View);
    mouse.Press(10, 10);
    EXPECT_TRUE(View->MouseDowned());
    EXPECT_EQ(QWidget::mouseGrabber(), View);
    mouse.Move(170 + 10, 10); // beyond the panel's edge, which it knows through the capture
    const int turned = qRound(170 * View->devicePixelRatioF());
    TZEPCamera expected;
    expected.Position()->SetData(0, -5, 0);
    expected.Orbit(-turned / 4., 0);
    EXPECT_EQ(ViewState(*Camera), ViewState(expected));
    EXPECT_EQ(View->cursor().shape(), Qt::SizeAllCursor);
    Settle();
    EXPECT_GT(second.FrameCount(), frames);
    mouse.Release(180, 10);
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    EXPECT_EQ(View->cursor().shape(), Qt::ArrowCursor);
    EXPECT_FALSE(View->MouseDowned());
}

TEST_F(Panel, HoweverADragEndsTheMouseIsFree) {
    const std::pair<const char*, std::function<void()>> endings[] = {
        {"disable", [this] { View->SetEnabled(false); }},
        {"focus", [this] { Window.setFocus(); }},
        {"hide", [this] { View->hide(); }},
        {"close", [this] { Window.close(); }},
        {"other window",
         [this] {
             QEvent event(QEvent::WindowDeactivate);
             QCoreApplication::sendEvent(View, &event);
         }},
        {"camera gone", [this] { delete Camera; }},
    };
    Show();
    Window.setFocusPolicy(Qt::StrongFocus);
    Window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Window));
    View->PanelControl()->SetMouseLeft(mmSelect);
    for (const auto& [name, end] : endings) {
        Window.show();
        View->show();
        View->SetEnabled(true);
        View->setFocus();
        Settle();
        Scene->SetAnimation(true);
        Mouse mouse(View);
        mouse.Press(10, 10);
        mouse.Move(40, 40);
        EXPECT_EQ(QWidget::mouseGrabber(), View) << name;
        EXPECT_FALSE(Scene->Animation()) << name;
        EXPECT_TRUE(View->findChild<TZEPRubberBand*>()) << name;
        end();
        EXPECT_EQ(QWidget::mouseGrabber(), nullptr) << name;
        EXPECT_FALSE(View->MouseDowned()) << name;
        EXPECT_TRUE(Scene->Animation()) << name;
        EXPECT_FALSE(View->findChild<TZEPRubberBand*>()) << name;
    }
}

TEST_F(Panel, ThePanelOrTheSceneMayGoDuringADrag) {
    Show();
    View->PanelControl()->SetMouseLeft(mmOrbit);
    Scene->SetAnimation(true);
    auto* second = new TZEPPanel(&Window);
    second->SetCamera(Camera);
    second->setGeometry(0, 0, 50, 50);
    second->show();
    Settle();
    Mouse mouse(second);
    mouse.Press(10, 10);
    EXPECT_EQ(QWidget::mouseGrabber(), second);
    delete second;
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    EXPECT_TRUE(Scene->Animation());
    Mouse other(View);
    other.Press(10, 10);
    Scene.reset();
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    other.Move(50, 50);
    other.Release(50, 50);
    EXPECT_FALSE(View->MouseDowned());
}

/// Frees the panel at that signal.
constexpr auto FreeAt = [](auto signal) -> std::function<void(TZEPPanel*)> {
    return [signal](TZEPPanel* panel) {
        QObject::connect(panel, signal, [](TZEPPanel* sender) { delete sender; });
    };
};

TEST_F(Panel, AHandlerOfTheMouseMayFreeThePanel) {
    using P = TZEPPanel;
    for (const auto& connect :
         {FreeAt(&P::BeforSelect), FreeAt(&P::AfterSelect), FreeAt(&P::BeforeMouseDown),
          FreeAt(&P::AfterMouseDown), FreeAt(&P::BeforeMouseMove), FreeAt(&P::AfterMouseMove),
          FreeAt(&P::BeforeMouseUp), FreeAt(&P::AfterMouseUp), FreeAt(&P::AfterMouseDblClick),
          FreeAt(&P::BeforeMouseWheel), FreeAt(&P::AfterMouseWheel)}) {
        Show();
        QPointer<TZEPPanel> panel = new TZEPPanel(&Window);
        panel->SetCamera(Camera);
        panel->setGeometry(0, 0, 50, 50);
        panel->PanelControl()->SetMouseLeft(mmSelect);
        panel->show();
        connect(panel);
        Mouse mouse(panel);
        mouse.Press(10, 10);
        mouse.Move(11, 10);
        mouse.Release(11, 10);
        mouse.DoubleClick(10, 10, Qt::LeftButton);
        mouse.Wheel(120);
        EXPECT_FALSE(panel);
        EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    }
}

TEST_F(Panel, TheRubberBandIsSeenOverTheScene) {
    Show();
    View->PanelControl()->SetMouseLeft(mmSelect);
    Mouse mouse(View);
    mouse.Press(20, 20);
    mouse.Move(100, 80);
    Settle();
    const auto shown = [this](int x, int y) {
        const double ratio = View->devicePixelRatioF();
        return NativeWindow::ScreenPixel(View->winId(), int(x * ratio), int(y * ratio));
    };
    EXPECT_NE(shown(20, 50), Red) << "its left side";
    EXPECT_NE(shown(60, 20), Red) << "its upper side";
    EXPECT_EQ(shown(60, 50), Red) << "the scene shines through";
    EXPECT_EQ(shown(10, 10), Red);
    mouse.Release(100, 80);
    Settle();
    ExpectShown(Red, "gone");
    EXPECT_EQ(shown(20, 50), Red);
}

TEST_F(Panel, ClicksSelectWhatIsUnderTheMouse) {
    Show();
    Camera->SetOrthographic(true);
    Camera->Position()->SetData(0, 0, 10);
    Camera->Up()->SetData(0, 1, 0);
    Camera->SetFOVY(90); // 8 to a unit, the origin in the middle of 160 by 120
    auto* line = Add<TZEPLine>(Scene.get());
    line->P1()->SetData(-5, 4, 0);
    line->P2()->SetData(5, 4, 0);
    View->PanelControl()->SetMouseLeft(mmSelect);
    QStringList events;
    QObject::connect(View, &TZEPPanel::BeforSelect, [&](TZEPPanel* p) {
        events << (p->Context()->IsCurrent() ? "befor" : "no context");
    });
    QObject::connect(Scene.get(), &TZEPScene::AfterSelect, [&] { events << "object"; });
    QObject::connect(View, &TZEPPanel::AfterSelect, [&] { events << "after"; });
    QObject::connect(View, &TZEPPanel::BeforeMouseUp, [&] { events << "before up"; });
    QObject::connect(View, &TZEPPanel::AfterMouseUp, [&] { events << "after up"; });
    Mouse mouse(View);
    mouse.Press(90, 28);
    mouse.Release(90, 28);
    EXPECT_TRUE(line->Selected());
    EXPECT_EQ(events, (QStringList{"before up", "befor", "object", "after", "after up"}));
    mouse.Press(90, 92); // as far below the middle
    mouse.Release(90, 92);
    EXPECT_FALSE(line->Selected());
}

TEST_F(Panel, TheWheelRepaintsInFullWhileAButtonIsHeld) {
    auto* probe = Add<DraftProbe>(Scene.get());
    Scene->SetQuickMouse(true);
    Show();
    View->PanelControl()->SetMouseWheel(mmRoll);
    Mouse mouse(View);
    mouse.Press(10, 10);
    Settle();
    probe->Drafts.clear();
    mouse.Wheel(120);
    Settle();
    View->Paint();
    EXPECT_EQ(probe->Drafts, (std::vector<bool>{false, true}));
    mouse.Release(10, 10);
}

TEST_F(Panel, KeysAreHandedOn) {
    struct Listener : QWidget {
        void keyPressEvent(QKeyEvent* event) override { Keys.push_back(event->key()); }
        std::vector<int> Keys;
    } listener;
    View->setParent(&listener);
    listener.show();
    QTest::keyClick(View, Qt::Key_F);
    EXPECT_EQ(listener.Keys, std::vector<int>{Qt::Key_F});
    View->setParent(&Window);
}

TEST_F(Panel, APanelWithoutSizeTakesItAll) {
    View->SetAlign(TZEPPanel::alNone);
    Show();
    View->resize(0, 0);
    Settle();
    for (int mode = mmNone; mode <= mmPerspective; ++mode) {
        View->PanelControl()->SetMouseLeft(static_cast<TZEPMouseMode>(mode));
        Mouse mouse(View);
        mouse.Press(0, 0);
        mouse.Move(30, 40);
        mouse.Release(30, 40);
        View->Paint();
        for (const double value : Camera->GetPosition()) EXPECT_TRUE(std::isfinite(value)) << mode;
    }
    EXPECT_EQ(View->GetWorldCoords(0, 0, 0.5), std::nullopt);
    EXPECT_EQ(View->GetScreenCoords({1, 2, 3}), std::nullopt);
}

/// Everything that a user and a host may do to a panel, in any order.
class Chaos {
public:
    Chaos(QWidget& window, TZEPPanel& panel, std::unique_ptr<TZEPScene>& scene)
        : m_window(window), m_panel(panel), m_scene(scene), m_mouse(&panel) {}

    void Step() {
        const Qt::MouseButton buttons[] = {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton,
                                           Qt::BackButton};
        const Qt::MouseButton button = buttons[Int(0, 3)];
        m_mouse.Keys = Qt::KeyboardModifiers(Int(0, 3) << 25); // shift and control
        const int x = Int(-50, 250), y = Int(-50, 200);
        QWidget* either[] = {&m_window, &m_panel};
        const std::pair<int, std::function<void()>> acts[] = {
            {30, [&] { m_mouse.Press(x, y, button); }},
            {20, [&] { m_mouse.Release(x, y, button); }},
            {60, [&] { m_mouse.Move(x, y); }},
            {10, [&] { m_mouse.DoubleClick(x, y, button); }},
            {10, [&] { m_mouse.Wheel(Int(-300, 300)); }},
            {20, [&] { ChangeModes(); }},
            {1, [&] { m_panel.setVisible(!m_panel.isVisible()); }},
            {1, [&] { m_panel.SetEnabled(!m_panel.Enabled()); }},
            {1, [&] { m_panel.resize(Int(0, 2) * 80, Int(0, 2) * 60); }},
            {1, [&] { delete m_panel.Camera(); }},
            {1, [&] { m_scene.reset(); }},
            {1, [&] { either[Int(0, 1)]->setFocus(); }},
            {10, [&] { ChangeScene(); }},
            {10, [&] { m_panel.SetSelectInMouseUp(Int(0, 3) == 0); }},
            {10, [&] { m_panel.Paint(); }},
            {10, [&] { QTest::keyClick(&m_panel, Qt::Key_A); }},
        };
        int die = Int(0, 249);
        for (const auto& [sides, act] : acts)
            if ((die -= sides) < 0) return act();
    }
    /// Seen again, with a scene, a camera and some objects where there are none.
    void Repair() {
        m_panel.show();
        m_panel.SetEnabled(true);
        if (m_panel.size().isEmpty()) m_panel.resize(160, 120);
        if (!m_scene) m_scene = std::make_unique<TZEPScene>();
        if (m_panel.Camera()) return;
        auto* camera = Add<TZEPCamera>(m_scene.get());
        camera->Position()->SetData(3, -9, 4);
        m_panel.SetCamera(camera);
        for (int i = 0; i < 20; ++i)
            Add<TZEPLine>(m_scene.get())->P2()->SetData(Int(-5, 5), Int(-5, 5), Int(-5, 5));
    }
    void LetGo() {
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
            m_mouse.Release(1, 1, button);
    }
    int Int(int from, int to) { return std::uniform_int_distribution(from, to)(m_random); }

private:
    void ChangeModes() {
        TZEPPanelControl* control = m_panel.PanelControl();
        control->SetMouseLeft(static_cast<TZEPMouseMode>(Int(0, 10)));
        control->SetMouseRight(static_cast<TZEPMouseMode>(Int(0, 10)));
        control->SetMouseWheel(static_cast<TZEPMouseMode>(Int(0, 10)));
    }
    void ChangeScene() {
        if (!m_scene) return;
        m_scene->SetAnimation(Int(0, 1));
        m_scene->SetQuickMouse(Int(0, 1));
        m_scene->SetManualUpdate(Int(0, 3) == 0);
        m_scene->SetSelectionEnabled(Int(0, 3) != 0);
        m_scene->SetLimitCameraMovement(Int(0, 1));
        if (m_panel.Camera()) m_panel.Camera()->SetOrthographic(Int(0, 1));
        if (m_panel.Camera() && Int(0, 5) == 0) m_panel.Camera()->Reset();
    }

    std::mt19937 m_random{20'260'701};
    QWidget& m_window;
    TZEPPanel& m_panel;
    std::unique_ptr<TZEPScene>& m_scene;
    Mouse m_mouse;
};

TEST_F(Panel, TenThousandEventsInAnyOrderLeaveItSound) {
    View->SetAlign(TZEPPanel::alNone);
    View->setGeometry(0, 0, 160, 120);
    Show();
    Chaos chaos(Window, *View, Scene);
    int selections = 0;
    QObject::connect(View, &TZEPPanel::AfterSelect, [&] { ++selections; });
    for (int i = 0; i < 10'000; ++i) {
        if (i % 20 == 0) chaos.Repair();
        chaos.Step();
        if (i % 40 == 0) QCoreApplication::processEvents();
        ASSERT_EQ(QWidget::mouseGrabber() == View, View->MouseDowned() && View->isVisible()) << i;
        if (!View->Camera()) {
            EXPECT_FALSE(View->MouseDowned()) << i;
        }
    }
    EXPECT_GT(selections, 100) << "too little happened";
    chaos.Repair();
    View->show();
    View->resize(160, 120);
    chaos.LetGo();
    EXPECT_FALSE(View->MouseDowned());
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    EXPECT_FALSE(View->findChild<TZEPRubberBand*>());
    View->Context()->MakeCurrent();
    for (const auto& [name, expected] : {std::pair(GL_RENDER_MODE, GL_RENDER),
                                         {GL_PROJECTION_STACK_DEPTH, 1},
                                         {GL_MODELVIEW_STACK_DEPTH, 1}}) {
        GLint value = 0;
        glGetIntegerv(static_cast<GLenum>(name), &value);
        EXPECT_EQ(value, expected) << name;
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    View->Camera()->Reset();
    Scene->SetManualUpdate(false);
    Scene->SetAnimation(false);
    Scene->SetBackgroundColor(clLime);
    View->SetEnabled(true);
    Settle();
    EXPECT_EQ(Shown(0, 0), Green) << "it still follows the scene";
}

} // namespace
} // namespace ZEP
