#include "tests/gl/CallRecorder.h"
#include <zep/appearance/effects/Jitter.h>
#include <zep/scene/XForm.h>
#include <zep/view/Camera.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace ZEP {
namespace {

/// Looks along y from (0, -10, 0) with a right angle of view.
class CameraCalls : public testing::Test {
protected:
    CameraCalls() {
        Lens.Position()->SetY(-10);
        Lens.SetFOVY(90);
        Lens.SetNearClipPlane(1);
    }

    std::vector<std::string> CallsOf(int width, int height, int jitter) {
        const GlCalls calls;
        Lens.Apply(width, height, jitter);
        return calls.List();
    }

    static std::vector<std::string> Frame(const std::vector<std::string>& projection,
                                          const std::vector<std::string>& view) {
        std::vector<std::string> calls{"glMatrixMode(GL_MODELVIEW)", "glLoadIdentity()",
                                       "glMatrixMode(GL_PROJECTION)", "glLoadIdentity()"};
        calls.insert(calls.end(), projection.begin(), projection.end());
        calls.emplace_back("glMatrixMode(GL_MODELVIEW)");
        calls.insert(calls.end(), view.begin(), view.end());
        return calls;
    }

    const std::vector<std::string> PlainView{
        "glRotated(0, 0, 0, 1)", "gluLookAt(0, -10, 0, 0, 0, 0, 0, 0, 1)", "glTranslatef(0, 0, 0)",
        "glMultMatrixd(1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1)"};
    TZEPCamera Lens;
};

TEST_F(CameraCalls, PerspectiveTakesTheVerticalAngle) {
    ExpectCalls(CallsOf(400, 200, -1), Frame({"gluPerspective(90, 2, 1, 100)"}, PlainView));
}

TEST_F(CameraCalls, ParallelProjectionTakesTheHorizontalExtentAtTheTarget) {
    Lens.SetOrthographic(true);
    ExpectCalls(CallsOf(400, 200, -1), Frame({"glOrtho(-10, 10, -5, 5, 1, 100)"}, PlainView));
    ExpectCalls(CallsOf(400, 200, 3), Frame({"glOrtho(-10, 10, -5, 5, 1, 100)"}, PlainView));
}

TEST_F(CameraCalls, OffsetsAndParentsComeIn) {
    TZEPObject root;
    root.XForm()->Translate()->SetData(0, 0, 7);
    auto* carrier = new TZEPObject;
    carrier->SetParentComponent(&root);
    carrier->XForm()->Rotate()->SetZ(90);
    auto* lens = new TZEPCamera;
    lens->SetParentComponent(carrier);
    lens->XForm()->Translate()->SetX(2);
    lens->Position()->SetY(-10);
    lens->Roll(30);
    lens->FOV(10);
    lens->Move(0, 1, 0, 3, 0, 0);
    lens->SetViewOffset({4, 5, 6});
    lens->SetFOVY(60);
    const GlCalls calls;
    lens->Apply(100, 100, -1);
    // From absolute coordinates to its own: up by -7, turned back, shifted by -2.
    ExpectCalls(calls, Frame({"gluPerspective(70, 1, 0.1, 100)"},
                             {"glRotated(30, 0, 0, 1)", "gluLookAt(0, -9, 0, 3, 0, 0, 0, 0, 1)",
                              "glTranslatef(4, 5, 6)",
                              "glMultMatrixd(0 -1 0 0 1 0 0 0 0 0 1 0 -2 0 -7 1)"}));
}

TEST_F(CameraCalls, JitterShiftsTheEyeAndHoldsTheTargetStill) {
    const TZEPJitter table[] = {{0.5F, -0.25F}};
    SetCurrentJitter(table);
    // The eye moves by 0.2 times the sample; in the near plane, a tenth of the way to the target,
    // the frustum moves back by a tenth of that.
    ExpectCalls(CallsOf(400, 200, 0),
                Frame({"glFrustum(-2.01, 1.99, -0.995, 1.005, 1, 100)",
                       "glMatrixMode(GL_MODELVIEW)", "glTranslated(-0.1, 0.05, 0)"},
                      PlainView));
    for (const int outside : {1, -2})
        ExpectCalls(CallsOf(400, 200, outside),
                    Frame({"gluPerspective(90, 2, 1, 100)"}, PlainView));
    SetCurrentJitter(j8);
}

TEST_F(CameraCalls, DegenerateViewsStayNumbers) {
    struct Row {
        const char* Name;
        std::function<void(TZEPCamera&)> Do;
        int Width, Height;
        const char* Projection;
    };
    for (const Row& row :
         {Row{"no size", [](TZEPCamera&) {}, 0, 0, "gluPerspective(90, 1, 1, 100)"},
          {"no height", [](TZEPCamera&) {}, 5, 0, "gluPerspective(90, 5, 1, 100)"},
          {"no width, parallel", [](TZEPCamera& c) { c.SetOrthographic(true); }, 0, 10,
           "glOrtho(-10, 10, -100, 100, 1, 100)"},
          {"parallel with the eye in the target", [](TZEPCamera& c) { c.Position()->SetY(0); }, 10,
           10, "glOrtho(-1, 1, -1, 1, 1, 100)"},
          {"lens closed", [](TZEPCamera& c) { c.SetOrthographic(false), c.SetFOVY(-5); }, 10, 10,
           "gluPerspective(0.1, 1, 1, 100)"},
          {"lens wide open", [](TZEPCamera& c) { c.SetFocalLength(0); }, 10, 10,
           "gluPerspective(175, 1, 1, 100)"},
          {"lens undefined", [](TZEPCamera& c) { c.SetFOVY(std::nan("")); }, 10, 10,
           "gluPerspective(0.1, 1, 1, 100)"}}) {
        row.Do(Lens);
        const std::vector<std::string> calls = CallsOf(row.Width, row.Height, -1);
        ASSERT_GT(calls.size(), 4U);
        EXPECT_EQ(calls[4], row.Projection) << row.Name;
    }
}

} // namespace
} // namespace ZEP
