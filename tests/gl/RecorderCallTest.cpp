#include "tests/gl/CallRecorder.h"

#include <GL/glu.h>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace ZEP {
namespace {

TEST(Recorder, WritesArgumentsByTheirMeaning) {
    const GLfloat ambient[] = {0.25F, 0.25F, 0.25F, 0};
    const GLdouble plane[] = {-0.0, 1e-17, 1, -1.0 / 3};
    const GLuint names[] = {7, 9};
    const GLfloat exponent = 96;
    const GLdouble front[] = {GL_FRONT, GL_LIGHTING};
    const GlCalls calls;
    glMaterialfv(GL_FRONT, GL_AMBIENT, ambient);
    glMaterialfv(GL_BACK, GL_SHININESS, &exponent);
    glClipPlane(GL_CLIP_PLANE0, plane);
    glPushAttrib(GL_ENABLE_BIT | GL_LINE_BIT);
    glPopAttrib();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glBegin(GL_LINES);
    glVertex3d(1234567, 0.1, -2.5e-7);
    glVertex2dv(front);
    glEnd();
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    glStencilOp(GL_KEEP, GL_ZERO, GL_INCR);
    glStencilMask(~0U);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glDepthMask(GL_FALSE);
    glDeleteTextures(2, names);
    glTexImage2D(GL_TEXTURE_2D, 0, 3, 0, 0, 0, GL_RGB, GL_UNSIGNED_BYTE, nullptr);
    ExpectCalls(calls, {
                           "glMaterialfv(GL_FRONT, GL_AMBIENT, 0.25 0.25 0.25 0)",
                           "glMaterialfv(GL_BACK, GL_SHININESS, 96)",
                           "glClipPlane(GL_CLIP_PLANE0, 0 0 1 -0.333333)",
                           "glPushAttrib(GL_LINE_BIT | GL_ENABLE_BIT)",
                           "glPopAttrib()",
                           "glClear(GL_DEPTH_BUFFER_BIT | GL_COLOR_BUFFER_BIT)",
                           "glBegin(GL_LINES)",
                           "glVertex3d(1234567, 0.1, -2.5e-07)",
                           "glVertex2dv(1028 2896)",
                           "glEnd()",
                           "glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA)",
                           "glStencilOp(GL_KEEP, GL_ZERO, GL_INCR)",
                           "glStencilMask(0xffffffff)",
                           "glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE)",
                           "glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR)",
                           "glDepthMask(GL_FALSE)",
                           "glDeleteTextures(2, 7 9)",
                           "glTexImage2D(GL_TEXTURE_2D, 0, 3, 0, 0, 0, GL_RGB, "
                           "GL_UNSIGNED_BYTE, null)",
                       });
}

TEST(Recorder, LeavesOutQueriesAndWhatGluCallsInTurn) {
    const GlCalls calls;
    gluLookAt(0, 0, 5, 0, 0, 0, 0, 1, 0);
    GLint mode = 0;
    glGetIntegerv(GL_MATRIX_MODE, &mode);
    ExpectCalls(calls, {"gluLookAt(0, 0, 5, 0, 0, 0, 0, 1, 0)"});

    const GlCalls asked(GlCalls::Queries::Noted);
    glGetIntegerv(GL_MATRIX_MODE, &mode);
    ExpectCalls(asked, {"glGetIntegerv(GL_MATRIX_MODE, data)"});
}

TEST(Recorder, RecordsInTheInnermostScopeOnly) {
    const GlCalls outer;
    glPushMatrix();
    {
        const GlCalls inner;
        glPushName(1);
        ExpectCalls(inner, {"glPushName(1)"});
    }
    glPopMatrix();
    ExpectCalls(outer, {"glPushMatrix()", "glPopMatrix()"});
}

TEST(Recorder, PicksCallsByNameOrPrefix) {
    const GlCalls calls;
    glEnable(GL_LIGHTING);
    glEnableClientState(GL_VERTEX_ARRAY);
    glDisable(GL_LIGHTING);
    glEnable(GL_FOG);
    ExpectCalls(calls.Of({"glEnable"}), {"glEnable(GL_LIGHTING)", "glEnable(GL_FOG)"});
    EXPECT_EQ(calls.Of({"glEnable*"}).size(), 3U);
    EXPECT_EQ(calls.Count("glDisable"), 1U);
}

TEST(Recorder, AnEmptyRecordIsNoProof) {
    EXPECT_NONFATAL_FAILURE(ExpectCalls(std::vector<std::string>(), {}), "ExpectNoCalls");
    EXPECT_NONFATAL_FAILURE(ExpectCalls(std::vector<std::string>(), {"glEnd()"}), "glEnd");
    const GlCalls calls;
    ExpectNoCalls(calls);
}

} // namespace
} // namespace ZEP
