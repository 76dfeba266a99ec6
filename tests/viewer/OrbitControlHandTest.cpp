#include "viewer/OrbitControl.h"

#include "view/Camera.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QWheelEvent>
#include <QWidget>

#include <cmath>

namespace ZEP {
namespace {

TGLArrayd3 Difference(const TGLArrayd3& a, const TGLArrayd3& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

double Length(const TGLArrayd3& v) {
    return std::sqrt(Dotd(v, v));
}

/// A camera 10 in front of the origin, at its height, in a view of 200 by 100 pixels.
class OrbitControl : public testing::Test {
protected:
    OrbitControl() : m_control(new TOrbitControl(&m_view, &m_camera)) {
        m_view.resize(200, 100);
        m_camera.Position()->SetData(0, -10, 0);
    }

    [[nodiscard]] double Distance() const {
        return Length(Difference(m_camera.GetPosition(), m_camera.GetTarget()));
    }

    void Drag(Qt::MouseButton button, const QPoint& by) {
        const QPoint start(50, 50);
        QTest::mousePress(&m_view, button, {}, start);
        const QPointF end = start + by;
        QMouseEvent move(QEvent::MouseMove, end, m_view.mapToGlobal(end), Qt::NoButton, button, {});
        QCoreApplication::sendEvent(&m_view, &move);
        QTest::mouseRelease(&m_view, button, {}, end.toPoint());
    }

    TZEPCamera m_camera;
    QWidget m_view;
    TOrbitControl* m_control;
};

TEST_F(OrbitControl, LeftButtonTurnsTheEyeAboutTheTarget) {
    Drag(Qt::LeftButton, {50, 0});
    EXPECT_NEAR(m_camera.GetPosition()[0], -10, 1e-9); // a quarter turn for half the height
    EXPECT_NEAR(m_camera.GetPosition()[1], 0, 1e-9);
    EXPECT_EQ(m_camera.GetTarget(), zero3d);
    Drag(Qt::LeftButton, {0, 10});
    EXPECT_GT(m_camera.GetPosition()[2], 0);
    EXPECT_NEAR(Distance(), 10, 1e-9);
}

TEST_F(OrbitControl, OrbitStopsAtThePoles) {
    for (const int sign : {1, -1}) {
        Drag(Qt::LeftButton, {0, sign * 1000});
        EXPECT_NEAR(m_camera.GetPosition()[2], sign * 10, 1e-4);
        EXPECT_LT(m_camera.GetPosition()[1], 0) << "went over the pole";
    }
}

TEST_F(OrbitControl, RightButtonMovesWhatIsSeenWithThePointer) {
    Drag(Qt::RightButton, {100, 50});
    // The height of the view, 100 pixels, is 2 tan(FOVY / 2) of the distance: 8 with this lens.
    EXPECT_NEAR(m_camera.GetTarget()[0], -8, 1e-6);
    EXPECT_NEAR(m_camera.GetTarget()[2], 4, 1e-6);
    const TGLArrayd3 toEye = Difference(m_camera.GetPosition(), m_camera.GetTarget());
    EXPECT_NEAR(Length(Difference(toEye, {0, -10, 0})), 0, 1e-9);
}

TEST_F(OrbitControl, TheWheelNeverPassesTheTarget) {
    m_control->Dolly(1);
    EXPECT_NEAR(Distance(), 8.5, 1e-9);
    m_control->Dolly(-1);
    EXPECT_NEAR(Distance(), 10, 1e-9);
    double last = Distance();
    for (int i = 0; i < 60; ++i, last = Distance()) {
        m_control->Dolly(1);
        ASSERT_LT(Distance(), last);
        ASSERT_LT(m_camera.GetPosition()[1], 0) << "went through the target";
    }
}

TEST_F(OrbitControl, OtherButtonsMoveNothing) {
    Drag(Qt::MiddleButton, {30, 30});
    EXPECT_EQ(m_camera.GetPosition(), (TGLArrayd3{0, -10, 0}));
}

} // namespace
} // namespace ZEP
