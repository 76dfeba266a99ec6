#include "tests/gl/CallRecorder.h"
#include <zep/appearance/effects/Jitter.h>
#include <zep/scene/XForm.h>
#include <zep/view/Camera.h>

#include <gtest/gtest.h>

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

} // namespace
} // namespace ZEP
