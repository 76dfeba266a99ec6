#include <zep/objects/Polygon.h>

#include "tests/gl/CallRecorder.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/gl/Names.h>
#include <zep/scene/Vertex3.h>

#include <gmock/gmock.h>

using namespace ZEP;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using TCalls = std::vector<std::string>;
using TPoints = std::vector<TGLArrayd3>;

const TPoints Square{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
const TPoints Pentagon{{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {1, 3, 0}, {0, 2, 0}};

class PolygonCall : public OffscreenTest {
protected:
    ~PolygonCall() override { SetContextIsCurrent(false); }
    void SetUp() override {
        OffscreenTest::SetUp();
        SetContextIsCurrent(true);
        Polygon.SetUseDisplayList(false);
    }
    void Fill(const TPoints& points) {
        Polygon.Vertexes()->Clear();
        for (const TGLArrayd3& point : points) Polygon.Vertexes()->Add()->SetPoint(point);
    }
    TCalls Drawn(GLenum face, bool draft = false) {
        const GlCalls calls;
        Polygon.DrawSpecific(face, draft);
        return calls.List();
    }
    /// The places in the order that they are sent in.
    TCalls DrawnPlaces(GLenum face) {
        const GlCalls calls;
        Polygon.DrawSpecific(face, false);
        return calls.Of({"glVertex3dv"});
    }

    TZEPPolygon Polygon;
};

} // namespace

TEST_F(PolygonCall, APlainOneIsSentFromBothSides) {
    Fill({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    Polygon.SetConcave(false);
    Polygon.SetColorVertexes(false);
    Polygon.Vertexes()->Item(1)->SetTexX(0.5);
    ExpectCalls(Drawn(GL_FRONT_AND_BACK), {"glPushAttrib(GL_COLOR_BUFFER_BIT)",
                                           "glBegin(GL_TRIANGLE_FAN)",
                                           "glNormal3dv(0 0 1)",
                                           "glTexCoord2d(0, 0)",
                                           "glVertex3dv(0 0 0)",
                                           "glTexCoord2d(0.5, 0)",
                                           "glVertex3dv(1 0 0)",
                                           "glTexCoord2d(0, 0)",
                                           "glVertex3dv(0 1 0)",
                                           "glEnd()",
                                           "glBegin(GL_TRIANGLE_FAN)",
                                           "glNormal3dv(0 0 -1)",
                                           "glTexCoord2d(0, 0)",
                                           "glVertex3dv(0 1 0)",
                                           "glTexCoord2d(0.5, 0)",
                                           "glVertex3dv(1 0 0)",
                                           "glTexCoord2d(0, 0)",
                                           "glVertex3dv(0 0 0)",
                                           "glEnd()",
                                           "glPopAttrib()"});
}

TEST_F(PolygonCall, ThePrimitiveFollowsTheNumberOfVertexes) {
    const struct {
        TPoints Points;
        bool Draft;
        const char* Begin;
    } cases[]{{Square, false, "glBegin(GL_TRIANGLE_FAN)"},
              {Pentagon, false, "glBegin(GL_POLYGON)"},
              {Square, true, "glBegin(GL_LINE_LOOP)"},
              {Pentagon, true, "glBegin(GL_LINE_LOOP)"}};
    Polygon.SetConcave(false);
    for (const auto& [points, draft, begin] : cases) {
        Fill(points);
        for (const GLenum face : {GLenum{GL_FRONT}, GLenum{GL_BACK}}) {
            const GlCalls calls;
            Polygon.DrawSpecific(face, draft);
            EXPECT_THAT(calls.Of({"glBegin"}), ElementsAre(begin));
        }
    }
}

TEST_F(PolygonCall, TheAlphaOfVertexesIsTheTransparencyOfTheMaterial) {
    Fill(Square);
    Polygon.SetConcave(false);
    Polygon.Vertexes()->Item(2)->SetColor(clRed);
    Polygon.Material()->SetTransparency(0.25F);
    const GlCalls calls;
    Polygon.DrawSpecific(GL_FRONT, false);
    EXPECT_THAT(calls.Of({"glColor4fv"}),
                ElementsAre("glColor4fv(1 1 1 0.25)", "glColor4fv(1 1 1 0.25)",
                            "glColor4fv(1 0 0 0.25)", "glColor4fv(1 1 1 0.25)"));
    EXPECT_EQ(calls.Count("glPushAttrib"), 2U);
    EXPECT_EQ(calls.Count("glPopAttrib"), 2U);
    EXPECT_EQ(calls.Count("glEnable"), 1U);
}

TEST_F(PolygonCall, ItsNormalMayBeGiven) {
    Fill(Square);
    Polygon.SetConcave(false);
    Polygon.SetAutoNormal(false);
    Polygon.Normal()->SetData(0, 1, 0);
    const GlCalls calls;
    Polygon.DrawSpecific(GL_FRONT_AND_BACK, false);
    EXPECT_THAT(calls.Of({"glNormal3dv"}),
                ElementsAre("glNormal3dv(0 1 0)", "glNormal3dv(0 -1 0)"));
}

TEST_F(PolygonCall, AConcaveOneSendsNeitherNormalNorColour) {
    Fill({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {2, 1, 0}, {0, 4, 0}});
    const GlCalls calls;
    Polygon.DrawSpecific(GL_FRONT_AND_BACK, false);
    EXPECT_THAT(calls.Of({"glNormal*", "glColor*", "glPushAttrib", "glEnable"}), IsEmpty());
    EXPECT_GE(calls.Count("glVertex3dv"), 2U * 5U);
    EXPECT_EQ(calls.Count("glBegin"), calls.Count("glEnd"));
}

TEST_F(PolygonCall, TextureCoordinatesAreThoseOfTheFirstVertexThere) {
    Fill({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {1, 1, 5}, {0, 1, 0}, {0, 0, 0}});
    for (int i = 0; i < 6; ++i) Polygon.Vertexes()->Item(i)->SetTexX(i);
    const struct {
        TGLArrayd3 Place;
        const char* Call;
    } cases[]{{{0, 0, 0}, "glTexCoord2d(0, 0)"},
              {{1, 1, 5}, "glTexCoord2d(2, 0)"},
              {{0, 1, 9}, "glTexCoord2d(4, 0)"},
              {{-0.0, 0, 0}, "glTexCoord2d(0, 0)"},
              {{0.5, 0.5, 0}, "glTexCoord2d(5, 0)"}};
    for (const auto& [place, call] : cases) {
        const GlCalls calls;
        vertexCallbackData(place.data(), &Polygon);
        ASSERT_EQ(calls.List().size(), 2U);
        EXPECT_EQ(calls.List()[0], call);
    }
    Polygon.Vertexes()->Item(0)->SetX(7);
    EXPECT_EQ(Polygon.VertexAt(7, 0), Polygon.Vertexes()->Item(0)) << "after a change";
}

TEST_F(PolygonCall, ACombinedVertexIsThePlaceAndZeros) {
    const double place[3]{1, 2, 3};
    void* result = nullptr;
    combineCallback(place, nullptr, nullptr, &result);
    const auto* record = static_cast<const double*>(result);
    EXPECT_THAT(std::vector(record, record + 6), ElementsAre(1, 2, 3, 0, 0, 0));
}

TEST_F(PolygonCall, TheListIsCompiledOnceAndAgainAfterAChange) {
    Fill(Square);
    Polygon.SetUseDisplayList(true);
    const auto compiled = [&](bool draft = false) {
        const GlCalls calls;
        Polygon.DrawSpecific(GL_FRONT_AND_BACK, draft);
        EXPECT_EQ(calls.Count("glNewList"), calls.Count("glEndList"));
        EXPECT_EQ(calls.Count("glCallList"), draft ? 0U : 1U);
        return calls.Count("glNewList");
    };
    EXPECT_EQ(compiled(), 1U);
    EXPECT_EQ(compiled(), 0U);
    EXPECT_EQ(compiled(true), 0U);
    Polygon.Vertexes()->Item(0)->SetX(-1);
    EXPECT_EQ(compiled(), 1U) << "a vertex has moved, outside of a scene";
    Polygon.SetConcave(false);
    EXPECT_EQ(compiled(), 1U);
    Polygon.ClearDisplayList();
    EXPECT_EQ(compiled(), 1U);
    Polygon.Material()->SetTransparency(0.5F);
    EXPECT_EQ(compiled(), 1U);
    EXPECT_EQ(compiled(), 0U);
}

TEST_F(PolygonCall, FewerThanThreeVertexesDrawNothing) {
    for (const bool listed : {false, true})
        for (const bool concave : {false, true})
            for (const std::size_t count : {0U, 1U, 2U}) {
                Fill(Square);
                Polygon.SetUseDisplayList(listed);
                Polygon.SetConcave(concave);
                Drawn(GL_FRONT);
                Fill({Square.begin(), Square.begin() + static_cast<int>(count)});
                EXPECT_THAT(Drawn(GL_FRONT_AND_BACK), IsEmpty());
                EXPECT_THAT(Drawn(GL_FRONT_AND_BACK, true), IsEmpty());
            }
}
