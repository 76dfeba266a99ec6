#include "viewer/window/Navigation.h"

#include "viewer/window/Selection.h"
#include <zep/ZEPClasses.h>
#include <zep/objects/Line.h>
#include <zep/scene/Vectors.h>

#include <gtest/gtest.h>

#include <QApplication>
#include <QMainWindow>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

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
        QMouseEvent event(type, at, m_panel->mapToGlobal(at), button, held, {});
        QCoreApplication::sendEvent(m_panel, &event);
    }

    void Drag(Qt::MouseButton button, const std::vector<QPointF>& way) {
        Send(QEvent::MouseButtonPress, way.front(), button, button);
        for (const QPointF& at : way) Send(QEvent::MouseMove, at, Qt::NoButton, button);
        Send(QEvent::MouseButtonRelease, way.back(), button, Qt::NoButton);
    }

    void Click(QPointF at, Qt::MouseButton button = Qt::LeftButton) { Drag(button, {at}); }

    [[nodiscard]] double ToTarget() const {
        return Distance(m_camera.GetPosition(), m_camera.GetTarget());
    }

    TZEPScene m_scene;
    TZEPCamera m_camera;
    QMainWindow m_window;
    TZEPPanel* m_panel = new TZEPPanel;
    TNavigation* m_navigation = new TNavigation(&m_window, m_panel);
};

TEST_F(Navigation, EveryButtonTakesEveryModeByItsKey) {
    struct TRow {
        Qt::Key Key;
        TZEPMouseMode Mode;
    };
    const TRow rows[] = {{Qt::Key_S, mmSelect}, {Qt::Key_T, mmTruck},      {Qt::Key_P, mmPan},
                         {Qt::Key_R, mmRoll},   {Qt::Key_D, mmDolly},      {Qt::Key_Z, mmFOV},
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

TEST_F(Navigation, TheMiddleButtonLeavesTheOthersAlone) {
    const double before = ToTarget();
    Drag(Qt::MiddleButton, {{100, 100}, {100, 160}});
    EXPECT_NEAR(ToTarget(), before * 1.2, 1e-6); // a fifth of the height
    const TGLMatrixd4 view = m_camera.GetViewMatrix();
    Send(QEvent::MouseMove, {10, 10}, Qt::NoButton, Qt::NoButton);
    EXPECT_EQ(m_camera.GetViewMatrix(), view) << "it went on after the release";
    EXPECT_EQ(m_navigation->Mode(TNavigation::Left), mmOrbit);
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
