#include "viewer/window/Navigation.h"

#include "viewer/window/Selection.h"
#include <zep/ZEPClasses.h>
#include <zep/objects/Line.h>
#include <zep/scene/Vectors.h>

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QMainWindow>
#include <QMouseEvent>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

namespace ZEP {
namespace {

/// A window whose camera looks at the origin from the front and above, in a view 300 pixels high.
class Navigation : public testing::Test {
protected:
    Navigation() {
        m_camera.SetParentComponent(&m_scene);
        m_camera.SetExtended(true);
        m_camera.Position()->SetData(0, -80, 60);
        m_camera.SetNearClipPlane(0.1);
        m_camera.SetFarClipPlane(10'000);
        m_panel->SetCamera(&m_camera);
        m_window.setCentralWidget(m_panel);
        m_panel->setFixedSize(400, 300);
        m_window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_window));
        QTest::qWait(50);
    }
    ~Navigation() override { m_panel->SetCamera(nullptr); }

    void Send(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, at, m_panel->mapToGlobal(at), button, held, m_keys);
        QCoreApplication::sendEvent(m_panel, &event);
    }

    void Wheel(QPointF at, int delta) {
        QWheelEvent event(at, m_panel->mapToGlobal(at), {}, {0, delta}, {}, {}, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(m_panel, &event);
    }

    void Drag(Qt::MouseButton button, const std::vector<QPointF>& way,
              Qt::KeyboardModifiers keys = {}) {
        m_keys = keys;
        Send(QEvent::MouseButtonPress, way.front(), button, button);
        for (const QPointF& at : way) Send(QEvent::MouseMove, at, Qt::NoButton, button);
        Send(QEvent::MouseButtonRelease, way.back(), button, Qt::NoButton);
    }

    void Click(QPointF at, Qt::MouseButton button = Qt::LeftButton) { Drag(button, {at}); }

    /// Where a point of the scene is seen.
    [[nodiscard]] QPointF Seen(const TGLArrayd3& point) const {
        const TGLArrayd3 place = *m_panel->GetScreenCoords(point);
        return {place[0], place[1]};
    }

    TZEPLine* AddLine(const TGLArrayd3& from, const TGLArrayd3& to) {
        auto* line = Add<TZEPLine>(&m_scene);
        line->P1()->SetData(from);
        line->P2()->SetData(to);
        return line;
    }

    [[nodiscard]] double ToTarget() const {
        return Distance(m_camera.GetPosition(), m_camera.GetTarget());
    }

    static void ForgetChoices() {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QDir::tempPath());
        QSettings().clear();
    }

    const int m_forgotten = (ForgetChoices(), 0);
    TZEPScene m_scene;
    TZEPCamera m_camera;
    QMainWindow m_window;
    TZEPPanel* m_panel = new TZEPPanel;
    TNavigation* m_navigation = new TNavigation(&m_window, m_panel);
    Qt::KeyboardModifiers m_keys;
};

TEST_F(Navigation, EveryButtonTakesEveryModeByItsKey) {
    struct TRow {
        Qt::Key Key;
        TZEPMouseMode Mode;
    };
    const TRow rows[] = {{Qt::Key_S, mmSelect}, {Qt::Key_P, mmTruck},      {Qt::Key_L, mmPan},
                         {Qt::Key_R, mmRoll},   {Qt::Key_D, mmDolly},      {Qt::Key_E, mmFOV},
                         {Qt::Key_O, mmOrbit},  {Qt::Key_V, mmPerspective}};
    struct TButtonRow {
        TNavigation::TButton Button;
        Qt::KeyboardModifiers Keys;
    };
    const TButtonRow buttons[] = {{TNavigation::Left, {}},
                                  {TNavigation::Right, Qt::ShiftModifier},
                                  {TNavigation::Middle, Qt::AltModifier | Qt::ShiftModifier}};
    QApplication::setActiveWindow(&m_window);
    for (const TButtonRow& button : buttons)
        for (const TRow& row : rows) {
            QTest::keyClick(&m_window, row.Key, button.Keys);
            EXPECT_EQ(m_navigation->Mode(button.Button), row.Mode) << row.Key;
        }
}

TEST_F(Navigation, WhatIsShiftedStaysUnderThePointer) {
    for (const bool parallel : {false, true}) {
        SCOPED_TRACE(parallel);
        SwitchProjection(m_camera, parallel, 4.0 / 3);
        m_panel->Paint();
        const TGLArrayd3 held = m_camera.GetTarget();
        const auto before = m_panel->GetScreenCoords(held);
        Drag(Qt::RightButton, {{100, 100}, {170, 60}});
        const auto after = m_panel->GetScreenCoords(held);
        ASSERT_TRUE(before && after);
        EXPECT_NEAR((*after)[0] - (*before)[0], 70, 0.5);
        EXPECT_NEAR((*after)[1] - (*before)[1], -40, 0.5);
    }
}

// A fault of a preset: a button that does what another one should, or a wheel that goes away.
TEST_F(Navigation, PresetsAreWhatTheyAreCalled) {
    const TGLArrayd3 near{-20, -30, 5};
    AddLine(near - TGLArrayd3{0, 0, 5}, near + TGLArrayd3{0, 0, 5});
    m_panel->Paint();
    const QPointF held = Seen(near);
    const auto off = [&](const TGLArrayd3& point, QPointF place) {
        const QPointF by = Seen(point) - place;
        return std::hypot(by.x(), by.y());
    };
    for (const auto& [keys, button] :
         {std::pair{Qt::NoModifier, Qt::LeftButton}, {Qt::ShiftModifier, Qt::MiddleButton}}) {
        const TGLArrayd3 eye = m_camera.GetPosition();
        Drag(button, {held, held + QPointF(70, 20)}, keys);
        EXPECT_LT(off(near, held), 0.5) << "orbits about what is under the pointer";
        EXPECT_GT(Distance(m_camera.GetPosition(), eye), 10);
        m_camera.Reset();
    }
    Drag(Qt::MiddleButton, {held, held + QPointF(70, -40)});
    EXPECT_LT(off(near, held + QPointF(70, -40)), 0.5) << "pans with the pointer";
    m_camera.Reset();
    const double before = ToTarget();
    Wheel(held, 120);
    EXPECT_NEAR(ToTarget(), before / 1.2, 1e-6) << "nearer";
    EXPECT_LT(off(near, held), 0.5) << "to the pointer";
    Wheel(held, -120);
    EXPECT_NEAR(ToTarget(), before, 1e-6) << "and back";
    m_camera.Reset();

    m_navigation->SetPreset(TZEPMousePreset::Modeller);
    Drag(Qt::MiddleButton, {held, held + QPointF(70, -40)}, Qt::ShiftModifier);
    EXPECT_LT(off(near, held + QPointF(70, -40)), 0.5);
    m_camera.Reset();
    EXPECT_EQ(m_navigation->Mode(TNavigation::Left), mmSelect);

    m_navigation->SetPreset(TZEPMousePreset::Plain);
    Drag(Qt::MiddleButton, {{100, 100}, {100, 160}});
    EXPECT_NEAR(ToTarget(), before * 1.2, 1e-6); // a fifth of the height
    m_camera.Reset();
    Wheel(held, 120);
    EXPECT_GT(ToTarget(), before);
    m_camera.Reset();
    const TGLMatrixd4 view = m_camera.GetViewMatrix();
    Send(QEvent::MouseMove, {10, 10}, Qt::NoButton, Qt::NoButton);
    EXPECT_EQ(m_camera.GetViewMatrix(), view) << "it went on after the release";

    QMainWindow next;
    EXPECT_EQ((new TNavigation(&next, m_panel))->Preset(), TZEPMousePreset::Plain) << "remembered";
}

TEST_F(Navigation, ALockedViewPansUntilShiftOrbitsOutOfIt) {
    m_navigation->SetFlatView(true);
    const auto look = [this] { return m_camera.GetPosition() - m_camera.GetTarget(); };
    const TGLArrayd3 before = look();
    const TGLArrayd3 target = m_camera.GetTarget();
    Drag(Qt::LeftButton, {{100, 100}, {150, 120}});
    EXPECT_LT(Distance(look(), before), 1e-9);
    EXPECT_GT(Distance(m_camera.GetTarget(), target), 1);
    Drag(Qt::LeftButton, {{100, 100}, {150, 120}}, Qt::ShiftModifier);
    EXPECT_GT(Distance(look(), before), 1);
    const TGLArrayd3 turned = look();
    Drag(Qt::LeftButton, {{100, 100}, {150, 120}});
    EXPECT_GT(Distance(look(), turned), 1) << "it is locked again";
}

TEST_F(Navigation, ARectangleIsZoomedInto) {
    const TGLArrayd3 corners[] = {{-10, -3.6, -4.8}, {10, 3.6, 4.8}}; // across the view
    AddLine(corners[0], corners[1]);
    QApplication::setActiveWindow(&m_window);
    for (const bool parallel : {true, false})
        for (const bool byKey : {true, false}) {
            SwitchProjection(m_camera, parallel, 4.0 / 3);
            m_panel->Paint();
            const QPointF from = Seen(corners[0]), to = Seen(corners[1]);
            if (byKey) QTest::keyClick(&m_window, Qt::Key_Z);
            EXPECT_EQ(m_panel->cursor().shape() == Qt::CrossCursor, byKey);
            Drag(byKey ? Qt::LeftButton : Qt::MiddleButton, {from, to},
                 byKey ? Qt::NoModifier : Qt::ControlModifier);
            EXPECT_NE(m_panel->cursor().shape(), Qt::CrossCursor);
            EXPECT_NEAR(std::abs(Seen(corners[1]).x() - Seen(corners[0]).x()), 400, 14);
            const QPointF middle = (Seen(corners[0]) + Seen(corners[1])) / 2;
            EXPECT_NEAR(middle.x(), 200, 7);
            EXPECT_NEAR(middle.y(), 150, 7);
            m_camera.Reset();
        }
    QTest::keyClick(&m_window, Qt::Key_Z);
    QTest::keyClick(m_panel, Qt::Key_Escape);
    const double before = ToTarget();
    Drag(Qt::LeftButton, {{100, 100}, {150, 120}});
    EXPECT_NEAR(ToTarget(), before, 1e-6) << "called off";
}

TEST_F(Navigation, OrbitsStopAtThePoles) {
    for (const int sign : {1, -1}) {
        Drag(Qt::LeftButton, {{100, 100}, {100, 100.0 + sign * 900}});
        EXPECT_NEAR(m_camera.GetPosition()[2], sign * 100, 1e-3);
        EXPECT_LT(m_camera.GetPosition()[1], 0) << "went over the pole";
    }
}

TEST_F(Navigation, TheProjectionKeepsTheSizeOfWhatIsInTheMiddle) {
    const TGLArrayd3 right{5, 0, 0};
    const auto before = m_panel->GetScreenCoords(right);
    SwitchProjection(m_camera, true, 4.0 / 3);
    const auto parallel = m_panel->GetScreenCoords(right);
    SwitchProjection(m_camera, false, 4.0 / 3);
    const auto after = m_panel->GetScreenCoords(right);
    ASSERT_TRUE(before && parallel && after);
    EXPECT_NEAR((*parallel)[0], (*before)[0], 0.01);
    EXPECT_NEAR((*after)[0], (*before)[0], 0.01);
}

TEST_F(Navigation, AClickSelectsWhateverTheLeftButtonDoes) {
    auto* selection = new TSelection(m_panel, &m_scene);
    std::vector<TZEPLine*> lines;
    for (const double x : {-20., 20.}) {
        auto* line = new TZEPLine(&m_scene);
        line->P1()->SetData(x, 0, -10);
        line->P2()->SetData(x, 0, 10);
        line->SetParentComponent(&m_scene);
        lines.push_back(line);
    }
    const auto at = [&](std::size_t i) {
        const TGLArrayd3 place = *m_panel->GetScreenCoords({i == 0 ? -20. : 20., 0, 0});
        return QPointF(place[0] + 4, place[1]); // near by is near enough
    };
    QSignalSpy changed(selection, &TSelection::Changed);
    for (const TZEPMouseMode mode : {mmOrbit, mmDolly, mmSelect}) {
        SCOPED_TRACE(mode);
        m_panel->PanelControl()->SetMouseLeft(mode);
        const double off = mode == mmSelect ? 4 : 0;
        Click(at(0) - QPointF(off, 0));
        EXPECT_EQ(selection->Only(), lines[0]);
        Click(at(1) - QPointF(off, 0));
        EXPECT_EQ(selection->Only(), lines[1]);
        Click({3, 3});
        EXPECT_EQ(selection->Count(), 0U);
    }
    QTest::qWait(1);
    EXPECT_EQ(changed.count(), 1) << "it is told once";
    m_panel->PanelControl()->SetMouseLeft(mmOrbit);
    Drag(Qt::LeftButton, {at(0), at(0) + QPointF(60, 0)});
    EXPECT_EQ(selection->Count(), 0U) << "a drag selected";
}

} // namespace
} // namespace ZEP
