#include "tests/gl/CallRecorder.h"
#include <zep/scene/Frame.h>
#include <zep/scene/XForm.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

const char* const Quarter = "glMultMatrixd(0 1 0 0 -1 0 0 0 0 0 1 0 5 0 0 1)";

void Turn(TZEPXForm& x) {
    x.Scale()->SetData(1, 1, 1);
    x.Translate()->SetX(5);
    x.Rotate()->SetZ(90);
}

TEST(XFormCalls, ScopesPopWhatTheyPushed) {
    TZEPXForm x({}, nullptr);
    Turn(x);
    TZEPFrame frame;
    const GlCalls calls;
    {
        const TZEPXFormScope scope(frame, &x);
        x.Translate()->SetX(0);
        x.Rotate()->SetZ(0);
        ASSERT_FALSE(x.IsActive());
    }
    {
        const TZEPXFormScope scope(frame, &x);
        Turn(x);
    }
    ExpectCalls(calls, {"glPushMatrix()", Quarter, "glPopMatrix()"});
}

} // namespace
} // namespace ZEP
