#include "tests/view/PanelFixture.h"
#include <zep/objects/Line.h>
#include <zep/scene/Vectors.h>

#include <QMouseEvent>

#include <cmath>
#include <numbers>

namespace ZEP {
namespace {

/// A red scene that is seen from the front: one unit is a twelfth of the height, and a thick black
/// line crosses the middle from left to right.
class OverScene : public Panel {
protected:
    void SetUp() override {
        Panel::SetUp();
        if (IsSkipped()) return;
        Camera->SetOrthographic(true);
        Camera->Position()->SetData(0, -10, 0);
        Camera->SetFOVY(2 * std::atan(0.8) * 180 / std::numbers::pi); // 8 units to each side
        m_line = AddLine({-4, 0, 0}, {4, 0, 0});
        m_view = View;
        Show();
    }
    bool IsSkipped() const { return !Scene; }

    TZEPLine* AddLine(const TGLArrayd3& from, const TGLArrayd3& to) {
        auto* line = Add<TZEPLine>(Scene.get());
        line->P1()->SetData(from);
        line->P2()->SetData(to);
        line->SetColor(clBlack);
        return line;
    }
    [[nodiscard]] QPointF At(double x, double z) const {
        const TGLArrayd3 place = *View->GetScreenCoords({x, 0, z});
        return QPointF(place[0], place[1]) / View->devicePixelRatioF();
    }
    void Send(QEvent::Type type, QPointF at, Qt::MouseButton button = Qt::NoButton,
              Qt::MouseButtons held = {}, Qt::KeyboardModifiers keys = {}) {
        if (!m_view) return;
        QMouseEvent event(type, at, m_view->mapToGlobal(at), button, held, keys);
        QCoreApplication::sendEvent(m_view, &event);
    }
    void Point(QPointF at) {
        Send(QEvent::MouseMove, at);
        Settle();
    }
    void Drag(QPointF from, QPointF to, Qt::MouseButton button = Qt::LeftButton) {
        Send(QEvent::MouseButtonPress, from, button, button);
        Send(QEvent::MouseMove, to, Qt::NoButton, button);
        Send(QEvent::MouseButtonRelease, to, button);
    }
    [[nodiscard]] unsigned int Pixel(QPointF at) const {
        return NativeWindow::ScreenPixel(View->winId(), qRound(at.x() * View->devicePixelRatioF()),
                                         qRound(at.y() * View->devicePixelRatioF()));
    }

    [[nodiscard]] bool Becomes(QPointF at, unsigned int color) const {
        return QTest::qWaitFor([&] { return Pixel(at) == color; }, 2000);
    }

    TZEPLine* m_line = nullptr;
    QPointer<TZEPPanel> m_view;
};

TEST_F(OverScene, HoverMarksWithoutAFrameWhatAClickWouldTake) {
    auto* hover = new TZEPHover(View);
    Point(At(0, 4));
    EXPECT_EQ(hover->Object(), nullptr);
    const int frames = View->FrameCount();
    const unsigned int bare = Pixel(At(2, 0));
    Point(At(0, 0));
    EXPECT_EQ(hover->Object(), m_line);
    EXPECT_TRUE(Becomes(At(2, 0), 0x78D2FF)) << "it is not marked";
    const int kept = View->FrameCount();
    EXPECT_LE(kept, frames + 1) << "the first one is drawn to be kept";
    EXPECT_EQ(Pixel(At(2, 4)), Red);
    Point(At(0, 4));
    EXPECT_EQ(hover->Object(), nullptr);
    EXPECT_TRUE(Becomes(At(2, 0), bare)) << "the mark has stayed";
    Point(At(1, 0));
    EXPECT_TRUE(Becomes(At(2, 0), 0x78D2FF));
    EXPECT_EQ(View->FrameCount(), kept) << "the scene was drawn";
    m_line->SetVisible(false);
    Settle();
    EXPECT_EQ(hover->Object(), nullptr) << "what is hidden";
    EXPECT_GT(View->FrameCount(), kept);
}

TEST_F(OverScene, WhatIsMarkedOrShowsItMayGo) {
    auto* hover = new TZEPHover(View);
    new TZEPGizmo(View);
    Point(At(0, 0));
    delete m_line;
    Settle();
    EXPECT_EQ(hover->Object(), nullptr);
    m_line = AddLine({-4, 0, 0}, {4, 0, 0});
    Settle();
    EXPECT_EQ(hover->Object(), m_line) << "what has come under the pointer";
    QObject::connect(hover, &TZEPHover::Changed, [this] { delete std::exchange(Camera, nullptr); });
    const auto middle = At(0, 0);
    Point(At(0, 4));
    EXPECT_EQ(View->Camera(), nullptr);
    Point(middle);
    Camera = Add<TZEPCamera>(Scene.get());
    View->SetCamera(Camera);
    Scene.reset();
    Point({20, 20});
    EXPECT_EQ(hover->Object(), nullptr);
}

TEST_F(OverScene, ThePanelMayGoWhileItIsHoveredOverOrZoomed) {
    View->PanelControl()->SetExtended(true);
    View->PanelControl()->SetMouseLeft(mmZoomWindow);
    auto* hover = new TZEPHover(View);
    QObject::connect(hover, &TZEPHover::Changed, View, [this] { delete View; });
    Point(At(0, 0));
    EXPECT_FALSE(m_view);
    View = new TZEPPanel(&Window);
    m_view = View;
    View->setGeometry(0, 0, 160, 120);
    View->SetCamera(Camera);
    View->PanelControl()->SetExtended(true);
    View->PanelControl()->SetMouseLeft(mmZoomWindow);
    View->show();
    Settle();
    Send(QEvent::MouseButtonPress, {30, 30}, Qt::LeftButton, Qt::LeftButton);
    Send(QEvent::MouseMove, {90, 90}, Qt::NoButton, Qt::LeftButton);
    QObject::connect(View, &TZEPPanel::BeforeMouseUp, [this] { delete Camera; });
    Send(QEvent::MouseButtonRelease, {90, 90}, Qt::LeftButton);
    EXPECT_EQ(View->Camera(), nullptr);
    QObject::connect(View, &TZEPPanel::DrawOver, [](TZEPPanel* sender) { sender->deleteLater(); });
    Camera = Add<TZEPCamera>(Scene.get());
    View->SetCamera(Camera);
    Settle();
    EXPECT_FALSE(m_view);
}

TEST_F(OverScene, OnlyARectangleToTheRightAsksForAllOfAnObject) {
    View->PanelControl()->SetExtended(true);
    View->PanelControl()->SetMouseLeft(mmSelect);
    auto* inner = AddLine({-1, 0, 2}, {1, 0, 3}); // its box is as large as it is
    auto* outer = AddLine({0, 0, 1.5}, {6, 0, 6});
    const QPointF low = At(-3, 1), high = At(3, 4);
    Drag(low, high);
    EXPECT_TRUE(inner->Selected() && !outer->Selected() && !m_line->Selected());
    Drag(high, low);
    EXPECT_TRUE(inner->Selected() && outer->Selected() && !m_line->Selected());
    Send(QEvent::MouseButtonPress, low, Qt::LeftButton, Qt::LeftButton);
    Send(QEvent::MouseMove, high, Qt::NoButton, Qt::LeftButton);
    QTest::qWait(100);
    EXPECT_EQ(Pixel({(low.x() + high.x()) / 2, high.y()}), 0x3B8EFFU) << "it is not blue";
    Scene.reset();
    Send(QEvent::MouseButtonRelease, high, Qt::LeftButton);
}

TEST_F(OverScene, ABallOfTheGizmoLooksFromThere) {
    auto* gizmo = new TZEPGizmo(View);
    std::vector<TDirection> turned;
    QObject::connect(gizmo, &TZEPGizmo::Turned, [&](TDirection to) { turned.push_back(to); });
    View->PanelControl()->SetMouseLeft(mmOrbit);
    Settle();
    for (const TDirection direction :
         {TDirection::Left, TDirection::Back, TDirection::Top, TDirection::Right}) {
        // Where it is hidden behind another one the view is turned a little first.
        Camera->Orbit(10, 10);
        const QPoint place = *gizmo->PlaceOf(direction);
        ASSERT_EQ(gizmo->At(place), direction);
        const QPointF at = QPointF(place) / View->devicePixelRatioF();
        Drag(at, at);
        const TGLArrayd3 toEye = Unit(Camera->GetPosition() - Camera->GetTarget());
        EXPECT_LT(Distance(toEye, Unit(ToEye(direction))), 1e-9);
        EXPECT_NEAR(Distance(Camera->GetPosition(), Camera->GetTarget()), 10, 1e-9);
        EXPECT_FALSE(View->MouseDowned());
    }
    EXPECT_EQ(turned.size(), 4U);
    EXPECT_FALSE(gizmo->At({View->Width() / 2, 5}));
}

} // namespace
} // namespace ZEP
