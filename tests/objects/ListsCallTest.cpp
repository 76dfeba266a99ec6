#include "tests/gl/CallRecorder.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPObjects.h>
#include <zep/appearance/materials/Material.h>
#include <zep/gl/Names.h>
#include <zep/scene/Vertex3.h>

#include <gmock/gmock.h>

using namespace ZEP;
using testing::ElementsAre;

namespace {

/// When the lists of objects come and go, and what else a polygon keeps.
class ListsCall : public OffscreenTest {
protected:
    ~ListsCall() override { SetContextIsCurrent(false); }
    void SetUp() override {
        OffscreenTest::SetUp();
        SetContextIsCurrent(true);
    }
    template <class T>
    static void Fill(T& object) {
        for (const TGLArrayd3& point :
             {TGLArrayd3{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {1, 1, 5}, {0, 1, 0}, {0, 0, 0}})
            object.Vertexes()->Add()->SetPoint(point);
    }
};

/// A host's own kind of sphere.
class TOwnSphere : public TZEPSphere {
public:
    using TZEPSphere::TZEPSphere;
};

/// The lists that a drawing makes.
std::size_t MadeBy(TZEPObject& object) {
    const GlCalls calls;
    object.DrawSpecific(GL_FRONT_AND_BACK, false);
    return calls.Count("glNewList");
}

TEST_F(ListsCall, AreSharedWithinAClassAndMadeAnewAfterTheirContext) {
    std::optional<OffscreenContext> another; // goes after what is drawn in it
    TZEPSphere sphere, equal;
    TOwnSphere own, equalOwn;
    EXPECT_EQ(MadeBy(sphere), 1U);
    EXPECT_EQ(MadeBy(own), 1U);
    EXPECT_EQ(MadeBy(equal) + MadeBy(equalOwn), 0U);
    another.emplace();
    EXPECT_EQ(MadeBy(sphere), 1U);
    EXPECT_EQ(MadeBy(equal), 0U);
}

TEST_F(ListsCall, AreNotMadeWithinOneOfTheHost) {
    TZEPSphere sphere;
    glNewList(77, GL_COMPILE);
    EXPECT_EQ(MadeBy(sphere), 0U);
    glEndList();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    EXPECT_EQ(MadeBy(sphere), 1U);
    glDeleteLists(77, 1);
}

TEST_F(ListsCall, OfAPolylineGoForOneOfTheHost) {
    TZEPPolyline chain;
    Fill(chain);
    chain.SetUseDisplayList(true);
    chain.DrawShape(GL_FRONT_AND_BACK, false);
    const std::string list = std::to_string(chain.DisplayList());
    const GlCalls calls;
    chain.SetDisplayList(static_cast<int>(glGenLists(1)));
    EXPECT_THAT(calls.Of({"glDeleteLists"}), ElementsAre("glDeleteLists(" + list + ", 1)"));
}

TEST_F(ListsCall, APolygonFindsTheTextureCoordinatesOfTheFirstVertexThere) {
    TZEPPolygon polygon;
    Fill(polygon);
    for (int i = 0; i < 6; ++i) polygon.Vertexes()->Item(i)->SetTexX(i);
    const std::pair<TGLArrayd3, const char*> cases[]{{{0, 0, 0}, "glTexCoord2d(0, 0)"},
                                                     {{1, 1, 5}, "glTexCoord2d(2, 0)"},
                                                     {{0, 1, 9}, "glTexCoord2d(4, 0)"},
                                                     {{-0.0, 0, 0}, "glTexCoord2d(0, 0)"},
                                                     {{0.5, 0.5, 0}, "glTexCoord2d(5, 0)"}};
    for (const auto& [place, call] : cases) {
        const GlCalls calls;
        vertexCallbackData(place.data(), &polygon);
        EXPECT_EQ(calls.List().front(), call);
    }
    polygon.Vertexes()->Item(0)->SetX(7);
    EXPECT_EQ(polygon.VertexAt(7, 0), polygon.Vertexes()->Item(0)) << "after a change";
    void* combined = nullptr;
    combineCallback(cases[1].first.data(), nullptr, nullptr, &combined);
    const auto* record = static_cast<const double*>(combined);
    EXPECT_THAT(std::vector(record, record + 6), ElementsAre(1, 1, 5, 0, 0, 0));
}

} // namespace
