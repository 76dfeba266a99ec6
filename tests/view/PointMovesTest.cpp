#include <zep/ZEPClasses.h>
#include <zep/scene/Vectors.h>

#include <gtest/gtest.h>

#include <functional>

namespace ZEP {
namespace {

/// A camera that rides on a turned parent and is rolled, and a point beside its target.
class PointMoves : public testing::Test {
protected:
    PointMoves() {
        m_parent.XForm()->Rotate()->SetData(20, 30, 40);
        m_parent.XForm()->Translate()->SetData(3, 2, 1);
        m_camera.SetParentComponent(&m_parent);
        m_camera.Position()->SetData(4, -9, 5);
        m_camera.Target()->SetData(0, 1, 0);
        m_camera.SetExtended(true);
        m_camera.Roll(15);
    }
    [[nodiscard]] TGLArrayd3 Seen() const { return *ToView(m_camera, {400, 300}, m_point); }
    [[nodiscard]] double ToTarget() const {
        return Distance(m_camera.GetPosition(), m_camera.GetTarget());
    }

    TZEPObject m_parent;
    TZEPCamera m_camera;
    const TGLArrayd3 m_point{3.5, 2.5, 0.5};
};

TEST_F(PointMoves, ThePointStaysWhereItIsSeen) {
    const std::pair<const char*, std::function<void(double)>> moves[] = {
        {"orbit", [this](double by) { OrbitAbout(m_camera, m_point, 30 * by, -10 * by); }},
        {"over the pole", [this](double by) { OrbitAbout(m_camera, m_point, 0, -500 * by); }},
        {"nearer", [this](double by) { DollyAbout(m_camera, m_point, -0.5 * by); }},
        {"much too near", [this](double by) { DollyAbout(m_camera, m_point, -3 * by); }}};
    for (const bool parallel : {false, true})
        for (const auto& [name, move] : moves) {
            SCOPED_TRACE(name);
            m_camera.SetOrthographic(parallel);
            const TGLArrayd3 before = Seen();
            const TGLMatrixd4 view = m_camera.GetViewMatrix();
            m_camera.Store();
            move(0);
            EXPECT_EQ(m_camera.GetViewMatrix(), view) << "by nothing";
            move(1);
            EXPECT_NE(m_camera.GetViewMatrix(), view);
            EXPECT_NEAR(Seen()[0], before[0], 1e-6);
            EXPECT_NEAR(Seen()[1], before[1], 1e-6);
            m_camera.Restore();
        }
}

TEST_F(PointMoves, WhatIsZoomedIntoFillsTheView) {
    for (const bool parallel : {false, true}) {
        m_camera.SetOrthographic(parallel);
        const double before = ToTarget();
        ZoomInto(m_camera, m_point, 0.25);
        EXPECT_NEAR(Seen()[0], 200, 1e-6);
        EXPECT_NEAR(Seen()[1], 150, 1e-6);
        if (parallel) {
            EXPECT_NEAR(ToTarget(), before / 4, 1e-9);
        }
        const TGLMatrixd4 view = m_camera.GetViewMatrix();
        ZoomInto(m_camera, m_point, 0);
        ZoomInto(m_camera, m_point, std::nan(""));
        EXPECT_EQ(m_camera.GetViewMatrix(), view);
        m_camera.Reset();
        m_camera.Roll(15);
    }
}

} // namespace
} // namespace ZEP
