#include "tests/gl/CallRecorder.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/gl/Names.h>
#include <zep/objects/Polyline.h>

#include <gmock/gmock.h>

using namespace ZEP;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using TLines = std::vector<std::string>;

void AddCorner(TZEPPolyline& polyline) {
    polyline.Vertexes()->Add()->SetPoint({0, 0, 0});
    polyline.Vertexes()->Add()->SetPoint({1, 0, 0});
    polyline.Vertexes()->Add()->SetPoint({1, 1, 2});
    polyline.Vertexes()->Item(1)->SetColor(clRed);
}

TLines DrawnShape(TZEPPolyline& polyline, bool draft = false) {
    const GlCalls calls;
    polyline.DrawShape(GL_FRONT_AND_BACK, draft);
    return calls.List();
}

std::string DiffuseColor(TZEPPolyline& polyline) {
    const GlCalls calls;
    polyline.DrawMain(false);
    const TLines materials = calls.Of({"glMaterialfv"});
    return materials.size() == 10 ? materials[1] : "nothing drawn";
}

class PolylineCall : public OffscreenTest {
protected:
    ~PolylineCall() override { SetContextIsCurrent(false); }
    void SetUp() override {
        OffscreenTest::SetUp();
        SetContextIsCurrent(true);
        AddCorner(Chain);
        Chain.SetSmooth(false);
    }
    std::string List() const { return std::to_string(Chain.DisplayList()); }

    const TLines Vertexes{"glBegin(GL_LINE_STRIP)", "glVertex3dv(0 0 0)", "glVertex3dv(1 0 0)",
                          "glVertex3dv(1 1 2)", "glEnd()"};
    TZEPPolyline Chain;
};

} // namespace

TEST_F(PolylineCall, SendsItsVertexesInOrder) {
    ExpectCalls(DrawnShape(Chain), Vertexes);
    Chain.SetClosed(true);
    EXPECT_EQ(DrawnShape(Chain).front(), "glBegin(GL_LINE_LOOP)");
}

TEST_F(PolylineCall, ColouredVertexesSaveWhatTheyChange) {
    Chain.SetColorVertexes(true);
    const GlCalls calls;
    Chain.DrawShape(GL_FRONT_AND_BACK, false);
    const TLines all = calls.List();
    EXPECT_EQ(all.front(), "glPushAttrib(GL_CURRENT_BIT | GL_POINT_BIT | GL_LINE_BIT | "
                           "GL_POLYGON_STIPPLE_BIT | GL_LIGHTING_BIT | GL_DEPTH_BUFFER_BIT | "
                           "GL_ACCUM_BUFFER_BIT | GL_VIEWPORT_BIT)");
    ExpectCalls({all.begin() + 1, all.end()},
                {"glEnable(GL_COLOR_MATERIAL)", "glBegin(GL_LINE_STRIP)", "glColor4fv(1 1 1 1)",
                 "glVertex3dv(0 0 0)", "glColor4fv(1 0 0 1)", "glVertex3dv(1 0 0)",
                 "glColor4fv(1 1 1 1)", "glVertex3dv(1 1 2)", "glEnd()", "glPopAttrib()"});
    EXPECT_FALSE(glIsEnabled(GL_COLOR_MATERIAL));
}

TEST_F(PolylineCall, FewerThanTwoVertexesDrawNothingAndOpenNoList) {
    for (const bool listed : {false, true}) {
        TZEPPolyline polyline;
        polyline.SetUseDisplayList(listed);
        EXPECT_THAT(DrawnShape(polyline), IsEmpty());
        polyline.Vertexes()->Add();
        EXPECT_THAT(DrawnShape(polyline), IsEmpty());
        EXPECT_EQ(polyline.DisplayList(), 0);
    }
}

TEST_F(PolylineCall, SmoothedItFollowsTheSpline) {
    Chain.SetSmooth(true);
    Chain.SetSegments(4);
    ExpectCalls(DrawnShape(Chain),
                {"glBegin(GL_LINE_STRIP)", "glVertex3dv(0 0 0)",
                 "glVertex3dv(0.59375 -0.09375 -0.1875)", "glVertex3dv(1 0 0)",
                 "glVertex3dv(1.09375 0.40625 0.8125)", "glVertex3dv(1 1 2)", "glEnd()"});
    Chain.SetColorVertexes(true);
    Chain.SetSegments(30);
    const GlCalls calls;
    Chain.DrawShape(GL_FRONT_AND_BACK, false);
    EXPECT_EQ(calls.Count("glVertex3dv"), 31U);
    EXPECT_EQ(calls.Count("glColor3dv"), 31U);
    EXPECT_THAT(calls.Of({"glColor3dv"}), Contains("glColor3dv(1 0 0)"));
}

TEST_F(PolylineCall, TheSplineStaysWithinTheBoundsOfZ) {
    Chain.SetSmooth(true);
    Chain.Vertexes()->Item(1)->SetZ(5000000);
    Chain.Vertexes()->Item(2)->SetZ(-5000000);
    const GlCalls calls;
    Chain.DrawShape(GL_FRONT_AND_BACK, false);
    EXPECT_THAT(calls.List(), Contains("glVertex3dv(1 0 1000000)").Times(1));
    EXPECT_THAT(calls.List(), Contains("glVertex3dv(1 1 -1000000)").Times(1));
    EXPECT_THAT(calls.List(), testing::Not(Contains(testing::HasSubstr("000000 "))));
    Chain.SetMaxZValue(3);
    Chain.SetMinZValue(-2);
    EXPECT_THAT(DrawnShape(Chain), Contains("glVertex3dv(1 0 3)"));
    EXPECT_THAT(DrawnShape(Chain), Contains("glVertex3dv(1 1 -2)"));
    Chain.SetSmooth(false);
    EXPECT_THAT(DrawnShape(Chain), Contains("glVertex3dv(1 0 5000000)"));
}

TEST_F(PolylineCall, ItsStateShowsInTheSameFrame) {
    Chain.SetOrigColor(clBlue);
    EXPECT_EQ(DiffuseColor(Chain), "glMaterialfv(GL_FRONT, GL_DIFFUSE, 0 0 1 0)");
    Chain.SetInError(true);
    EXPECT_EQ(DiffuseColor(Chain), "glMaterialfv(GL_FRONT, GL_DIFFUSE, 1 0 0 0)");
    Chain.SetSelected(true);
    EXPECT_EQ(DiffuseColor(Chain), "glMaterialfv(GL_FRONT, GL_DIFFUSE, 1 1 1 0)");
    Chain.SetSelected(false);
    EXPECT_EQ(DiffuseColor(Chain), "glMaterialfv(GL_FRONT, GL_DIFFUSE, 1 0 0 0)");
    Chain.SetInError(false);
    EXPECT_EQ(DiffuseColor(Chain), "glMaterialfv(GL_FRONT, GL_DIFFUSE, 0 0 1 0)");
}

TEST_F(PolylineCall, TheListIsCompiledOnceAndCalledInEveryFrame) {
    Chain.SetUseDisplayList(true);
    TLines first = DrawnShape(Chain);
    ASSERT_GT(Chain.DisplayList(), 0);
    TLines expected{"glGenLists(1)", "glNewList(" + List() + ", GL_COMPILE)"};
    expected.insert(expected.end(), Vertexes.begin(), Vertexes.end());
    expected.emplace_back("glEndList()");
    expected.push_back("glCallList(" + List() + ")");
    ExpectCalls(first, expected);
    ExpectCalls(DrawnShape(Chain), {"glCallList(" + List() + ")"});
    ExpectCalls(DrawnShape(Chain, true), Vertexes);
}

TEST_F(PolylineCall, AChangeAndTheEndDeleteTheList) {
    const auto release = [&](auto&& change) {
        const std::string list = List();
        EXPECT_NE(list, "0");
        const GlCalls calls;
        change();
        EXPECT_THAT(calls.Of({"glDeleteLists"}), ElementsAre("glDeleteLists(" + list + ", 1)"));
    };
    Chain.SetUseDisplayList(true);
    DrawnShape(Chain);
    release([&] { Chain.SetSelected(true); });
    EXPECT_THAT(DrawnShape(Chain), Contains("glEndList()"));
    release([&] { Chain.SetInError(true); });
    DrawnShape(Chain);
    release([&] { Chain.Vertexes()->Delete(0); });
    DrawnShape(Chain);
    release([&] { Chain.SetDisplayList(static_cast<int>(glGenLists(1))); });

    auto doomed = std::make_unique<TZEPPolyline>();
    AddCorner(*doomed);
    doomed->SetUseDisplayList(true);
    DrawnShape(*doomed);
    const std::string list = std::to_string(doomed->DisplayList());
    const GlCalls calls;
    doomed.reset();
    ExpectCalls(calls, {"glDeleteLists(" + list + ", 1)"});
}
