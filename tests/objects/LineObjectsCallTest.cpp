#include "tests/gl/CallRecorder.h"
#include <zep/ZEPObjects.h>

#include <gmock/gmock.h>

using namespace ZEP;
using testing::ElementsAre;

TEST(LineObjectsCall, ALineDrawnAloneMakesTheseCalls) {
    TZEPLine line;
    line.SetColor(clLime);
    line.SetSmooth(false);
    line.SetWidth(2);
    line.P1()->SetData(1, 2, 3);
    line.P2()->SetX(-4.5);
    const GlCalls calls;
    line.DrawMain(false);
    ExpectCalls(calls, {"glMaterialfv(GL_FRONT, GL_AMBIENT, 0 1 0 0)",
                        "glMaterialfv(GL_FRONT, GL_DIFFUSE, 0 1 0 0)",
                        "glMaterialfv(GL_FRONT, GL_SPECULAR, 0 0 0 0)",
                        "glMaterialfv(GL_FRONT, GL_EMISSION, 0 0 0 0)",
                        "glMaterialfv(GL_FRONT, GL_SHININESS, 0)",
                        "glMaterialfv(GL_BACK, GL_AMBIENT, 0 1 0 0)",
                        "glMaterialfv(GL_BACK, GL_DIFFUSE, 0 1 0 0)",
                        "glMaterialfv(GL_BACK, GL_SPECULAR, 0 0 0 0)",
                        "glMaterialfv(GL_BACK, GL_EMISSION, 0 0 0 0)",
                        "glMaterialfv(GL_BACK, GL_SHININESS, 0)", "glPushAttrib(GL_LINE_BIT)",
                        "glLineWidth(2)", "glNormal3b(127, 0, 0)", "glBegin(GL_LINES)",
                        "glVertex3dv(1 2 3)", "glVertex3dv(-4.5 0 0)", "glEnd()", "glPopAttrib()"});
}

TEST(LineObjectsCall, APointIsRoundWhenSmoothed) {
    for (const bool smooth : {false, true}) {
        TZEPPoint point;
        point.SetSmooth(smooth);
        point.SetWidth(5);
        point.P()->SetData(1, 2, 3);
        std::vector<std::string> expected{"glPushAttrib(GL_POINT_BIT)", "glPointSize(5)"};
        if (smooth) expected.emplace_back("glEnable(GL_POINT_SMOOTH)");
        for (const char* call : {"glBegin(GL_POINTS)", "glNormal3b(127, 0, 0)",
                                 "glVertex3dv(1 2 3)", "glEnd()", "glPopAttrib()"})
            expected.emplace_back(call);
        const GlCalls calls;
        point.DrawSpecific(GL_FRONT_AND_BACK, false);
        ExpectCalls(calls, expected);
    }
}

TEST(LineObjectsCall, ACircleIsALoopOfItsSegments) {
    TZEPCircle circle;
    circle.SetSegments(4);
    const GlCalls calls;
    circle.DrawShape(GL_FRONT_AND_BACK, false);
    ExpectCalls(calls, {"glBegin(GL_LINE_LOOP)", "glNormal3b(127, 0, 0)", "glVertex3f(0.5, 0, 0)",
                        "glVertex3f(0, 0.5, 0)", "glVertex3f(-0.5, 0, 0)", "glVertex3f(0, -0.5, 0)",
                        "glEnd()"});
}

TEST(LineObjectsCall, AnArcRunsCounterClockwiseAndTheLongWayRound) {
    struct Case {
        double Start, End;
        std::vector<std::string> Points;
    };
    for (const Case& c : {
             Case{0, 90, {"0.5, 0", "0.433013, 0.25", "0.25, 0.433013", "0, 0.5"}},
             Case{90, 0, {"0, 0.5", "-0.5, 0", "0, -0.5", "0.5, 0"}},
             Case{0, 0, {"0.5, 0", "-0.25, 0.433013", "-0.25, -0.433013", "0.5, 0"}},
             Case{345,
                  15,
                  {"0.482963, -0.12941", "0.498097, -0.0435779", "0.498097, 0.0435779",
                   "0.482963, 0.12941"}},
         }) {
        TZEPArc arc;
        arc.SetSegments(3);
        arc.SetStartAngle(c.Start);
        arc.SetEndAngle(c.End);
        std::vector<std::string> expected{"glBegin(GL_LINE_STRIP)", "glNormal3b(127, 0, 0)"};
        for (const std::string& point : c.Points)
            expected.push_back("glVertex3f(" + point + ", 0)");
        expected.emplace_back("glEnd()");
        const GlCalls calls;
        arc.DrawShape(GL_FRONT_AND_BACK, false);
        ExpectCalls(calls, expected);
    }
}
