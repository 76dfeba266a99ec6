#include "tests/gl/CallRecorder.h"
#include <zep/appearance/effects/Jitter.h>
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
