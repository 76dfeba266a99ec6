#include "tests/gl/OffscreenTest.h"
#include "tests/view/FakePanel.h"

#include <gmock/gmock.h>

#include <GL/glu.h>

namespace ZEP {
namespace {

/// A panel whose place is a buffer of 400 by 200.
class PanelControlDrawn : public OffscreenTest, public FakePanel {
protected:
    PanelControlDrawn() : OffscreenTest(400, 200) {
        HasContext = true;
        View->SetFarClipPlane(1000);
    }

    TZEPLine* AddLine(const TGLArrayd3& from, const TGLArrayd3& to) {
        auto* line = new TZEPLine(&Scene);
        line->P1()->SetData(from);
        line->P2()->SetData(to);
        line->SetParentComponent(&Scene);
        return line;
    }
};

TEST_F(PanelControlDrawn, TrucksByWhatTheWindowLiesOverAtHalfTheDepth) {
    Control.SetMouseLeft(mmTruck);
    for (const bool orthographic : {false, true}) {
        View->Reset();
        View->SetOrthographic(orthographic);
        View->Apply(400, 200, -1);
        GLdouble model[16], projection[16];
        GLint viewport[4];
        glGetDoublev(GL_MODELVIEW_MATRIX, model);
        glGetDoublev(GL_PROJECTION_MATRIX, projection);
        glGetIntegerv(GL_VIEWPORT, viewport);
        const double s = orthographic ? 1 : 5;
        const double k = orthographic ? -1 : -10;
        TGLArrayd3 from, to;
        gluUnProject(s * 50, s * -60, 0.5, model, projection, viewport, &from[0], &from[1],
                     &from[2]);
        gluUnProject(s * 90, s * -40, 0.5, model, projection, viewport, &to[0], &to[1], &to[2]);
        const ViewState before(*View);
        Press(50, 60);
        Move(300, 10);
        Move(90, 40);
        Release(90, 40);
        const ViewState after(*View);
        for (std::size_t i = 0; i < 2; ++i) {
            EXPECT_NEAR(after.Position[i] - before.Position[i], k * (to[i] - from[i]), 1e-9);
            EXPECT_NEAR(after.Target[i] - before.Target[i], k * (to[i] - from[i]), 1e-9);
            EXPECT_GT(std::abs(to[i] - from[i]), 1e-4) << "moves at all";
        }
        EXPECT_EQ(after.Position[2], before.Position[2]);
    }
}

TEST_F(PanelControlDrawn, ATruckBackToItsStartGivesTheVeryViewBackThroughAllFrames) {
    Control.SetMouseLeft(mmTruck);
    View->Orbit(12.3, 4.5);
    const ViewState before(*View);
    Press(50, 60);
    for (const QPoint at : {QPoint(80, 60), {7, 199}, {-30, 500}, {50, 60}}) {
        View->Apply(400, 200, -1); // a frame
        Move(at.x(), at.y());
    }
    EXPECT_EQ(ViewState(*View), before);
}

TEST_F(PanelControlDrawn, ClicksAndRectanglesSelectAsTheKeysSay) {
    View->SetOrthographic(true);
    View->Position()->SetData(0, 0, 10);
    View->Target()->SetData(0, 0, 0);
    View->Up()->SetData(0, 1, 0);
    View->SetFOVY(90); // 20 pixels to a unit, the origin at (200, 100)
    Control.SetMouseLeft(mmSelect);
    TZEPLine* left = AddLine({-5, -1, 0}, {-5, 1, 0});
    TZEPLine* right = AddLine({5, -1, 0}, {5, 1, 0});
    struct Case {
        const char* Name;
        std::vector<TZEPLine*> Before;
        QPoint Press, Release;
        TShiftState Shift;
        std::vector<TZEPLine*> After;
    };
    const std::vector<TZEPLine*> none, l{left}, r{right}, both{left, right};
    const QPoint onLeft(100, 90), beside(200, 20);
    const Case cases[] = {
        {"click", r, onLeft, onLeft, {}, l},
        {"click on empty space", both, beside, beside, {}, none},
        {"ctrl adds", r, onLeft, onLeft, ssCtrl, both},
        {"ctrl takes away", both, onLeft, onLeft, ssCtrl, r},
        {"shift is no ctrl", both, onLeft, onLeft, ssShift, l},
        {"rectangle", r, {80, 60}, {120, 130}, {}, l},
        {"rectangle from right to left", r, {120, 130}, {80, 60}, {}, l},
        {"ctrl adds by rectangle", r, {120, 60}, {80, 130}, ssCtrl, both},
        {"shift adds by rectangle", r, {120, 130}, {80, 60}, ssShift, both},
        {"over all", none, {390, 10}, {10, 190}, {}, both},
        {"beyond the panel", none, {110, 100}, {-300, 700}, {}, l},
        {"empty rectangle", both, {180, 10}, {220, 190}, {}, none},
    };
    for (const Case& c : cases) {
        for (TZEPLine* line : both) line->SetSelected(std::ranges::count(c.Before, line) > 0);
        Press(c.Press.x(), c.Press.y());
        Move(c.Release.x(), c.Release.y());
        Release(c.Release.x(), c.Release.y(), mbLeft, c.Shift);
        std::vector<TZEPLine*> after;
        for (TZEPLine* line : both)
            if (line->Selected()) after.push_back(line);
        EXPECT_EQ(after, c.After) << c.Name;
    }
}

} // namespace
} // namespace ZEP
