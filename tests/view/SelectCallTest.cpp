#include "tests/gl/CallRecorder.h"
#include "tests/view/SelectFixture.h"

namespace ZEP {
namespace {

using Calls = std::vector<std::string>;

TEST_F(SelectTest, SetsUpThePickingProjectionAsTheViewIsDrawn) {
    Camera.SetOrthographic(false);
    Camera.Roll(30);
    const auto callsOf = [](auto&& set) {
        const GlCalls calls;
        set();
        return calls.List();
    };
    const Calls apply = callsOf([this] { Camera.Apply(200, 100, -1); });
    Calls pick = callsOf([this] { Camera.Pick(200, 100, 30, 40, 5, 6); });
    const auto extra = std::find_if(pick.begin(), pick.end(), [](const std::string& call) {
        return call.starts_with("gluPickMatrix(30, 40, 5, 6");
    });
    ASSERT_NE(extra, pick.end());
    ASSERT_NE(extra, pick.begin());
    EXPECT_EQ(*(extra - 1), "glLoadIdentity()");
    EXPECT_TRUE((extra + 1)->starts_with("gluPerspective(")) << *(extra + 1);
    pick.erase(extra);
    EXPECT_EQ(pick, apply);
}

TEST_F(SelectTest, DrawsOnceMoreForEachGrowthOfTheBuffer) {
    const auto calls = [this] {
        const GlCalls recorded;
        Click(0, 0);
        Calls list = recorded.Of({"glSelectBuffer", "glRenderMode", "glInitNames"});
        for (std::string& call : list) call = call.substr(0, call.find(", "));
        return list;
    };
    const auto passes = [](std::initializer_list<const char*> sizes) {
        Calls list;
        for (const char* size : sizes) {
            list.push_back(std::string("glSelectBuffer(") + size);
            for (const char* call :
                 {"glRenderMode(GL_SELECT)", "glInitNames()", "glRenderMode(GL_RENDER)"})
                list.emplace_back(call);
        }
        return list;
    };
    const auto fill = [this](int count) {
        while (Scene.GetItemsCount() <= count) AddTile(0, 0, 0);
    };
    fill(125);
    EXPECT_EQ(calls(), passes({"500"}));
    fill(126);
    EXPECT_EQ(calls(), passes({"500", "1000"}));
    EXPECT_EQ(calls(), passes({"1000"})) << "it keeps its size";
    fill(700);
    EXPECT_EQ(calls(), passes({"1000", "1500", "3000"})) << "then it holds all that is drawn";
}

TEST_F(SelectTest, NamesEachObjectAroundItsOwnDrawing) {
    Tile* parent = AddTile(0, 0, 0);
    AddTile(0, 0, 0)->SetParentComponent(parent);
    AddTile(50, 0, 0);
    const GlCalls calls;
    Click(0, 0);
    ExpectCalls(calls.Of({"glPushName", "glPopName", "glBegin"}),
                {"glPushName(0)", "glPopName()", // the camera, of whose drawing nobody knows
                 "glPushName(1)", "glBegin(GL_QUADS)", "glPopName()", "glPushName(2)",
                 "glBegin(GL_QUADS)", "glPopName()"});
}

TEST_F(SelectTest, LeavesTheMatricesAsTheyWere) {
    AddTile(0, 0, 0);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glScaled(2, 3, 4);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslated(5, 6, 7);
    Click(0, 0);
    static_cast<void>(PickAt(0, 0));
    TGLMatrixd4 projection, modelView;
    glGetDoublev(GL_PROJECTION_MATRIX, projection[0].data());
    glGetDoublev(GL_MODELVIEW_MATRIX, modelView[0].data());
    GLint mode = 0, depth = 0;
    glGetIntegerv(GL_MATRIX_MODE, &mode);
    glGetIntegerv(GL_PROJECTION_STACK_DEPTH, &depth);
    EXPECT_EQ(projection[2][2], 4);
    EXPECT_EQ(modelView[3][1], 6);
    EXPECT_EQ(mode, GL_MODELVIEW);
    EXPECT_EQ(depth, 1);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

} // namespace
} // namespace ZEP
