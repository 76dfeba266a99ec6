#include "tests/gl/CallRecorder.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

#include <gmock/gmock.h>

#include <functional>
#include <limits>

using namespace ZEP;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using TCalls = std::vector<std::string>;

void AddVertex(TZEPMesh& mesh, const TGLArrayd3& point) {
    mesh.Vertexes()->Add()->SetPoint(point);
}

void AddFace(TZEPMesh& mesh, int a, int b, int c, int material = -1) {
    TZEPFace3CI* face = mesh.Faces()->Add();
    face->SetA(a);
    face->SetB(b);
    face->SetC(c);
    face->SetMaterialIndex(material);
}

/// A corner of a room: the floor (0 1 2) looks up, the wall (0 3 1) along y.
class MeshCall : public OffscreenTest {
protected:
    MeshCall() {
        for (const TGLArrayd3& point :
             {TGLArrayd3{0, 0, 0}, TGLArrayd3{2, 0, 0}, TGLArrayd3{0, 2, 0}, TGLArrayd3{0, 0, 2}})
            AddVertex(Mesh, point);
        AddFace(Mesh, 0, 1, 2);
    }

    TCalls Drawn(bool draft = false) {
        const GlCalls calls;
        Mesh.DrawSpecific(GL_FRONT_AND_BACK, draft);
        return calls.List();
    }
    /// The third coordinates of what is drawn tell the faces apart.
    TCalls DrawnFaces(const std::function<void()>& draw) {
        const GlCalls calls;
        draw();
        return calls.Of({"glNormal3fv"});
    }

    TZEPMesh Mesh;
};

/// Faces of three materials, the second one transparent, and of one that the library lacks.
class MeshMaterialCall : public MeshCall {
protected:
    MeshMaterialCall() {
        Scene.SetMaterialLibrary(&Library);
        for (int i = 0; i < 3; ++i) Library.Materials()->Add();
        Library.Materials()->Item(1)->Material()->SetTransparency(0.5F);
        Mesh.Faces()->Clear();
        Mesh.SetAutoNormal(true);
        AddFace(Mesh, 0, 1, 2, 2);
        AddFace(Mesh, 0, 3, 1, 0);
        AddFace(Mesh, 0, 2, 3, 5);
        AddFace(Mesh, 0, 2, 1, 1);
        AddFace(Mesh, 0, 1, 3, 2);
        Mesh.SetParentComponent(&Scene);
    }
    ~MeshMaterialCall() override { Mesh.SetParentComponent(nullptr); }

    TZEPMaterialLibrary Library;
    TZEPScene Scene;
};

} // namespace

TEST_F(MeshCall, NormalsFollowEveryChangeOfVertexesAndFaces) {
    EXPECT_EQ(Drawn()[1], "glNormal3fv(0 0 1)");
    Mesh.Faces()->Item(0)->SetB(2);
    Mesh.Faces()->Item(0)->SetC(1);
    EXPECT_EQ(Drawn()[1], "glNormal3fv(0 0 -1)");
    Mesh.Vertexes()->Item(2)->SetPoint({0, 0, 2});
    EXPECT_EQ(Drawn()[1], "glNormal3fv(0 1 0)");
    Mesh.Faces()->BeginUpdate();
    AddFace(Mesh, 0, 1, 2);
    EXPECT_EQ(Drawn()[5], "glNormal3fv(0 -1 0)") << "drawn while news are held back";
    Mesh.Faces()->EndUpdate();
}

TEST_F(MeshCall, FacesThatCannotBeDrawnAreLeftOut) {
    const TCalls good = Drawn();
    constexpr int Most = std::numeric_limits<int>::max();
    for (const int bad : {4, -1, Most, -Most - 1}) {
        AddFace(Mesh, bad, 1, 2);
        AddFace(Mesh, 0, bad, 2);
        AddFace(Mesh, 0, 1, bad);
    }
    for (const bool smooth : {false, true}) {
        Mesh.SetSmooth(smooth);
        const GlCalls calls;
        Mesh.DrawSpecific(GL_FRONT_AND_BACK, false);
        EXPECT_EQ(calls.Count("glVertex3dv"), 3U);
    }
    Mesh.SetSmooth(false);
    ExpectCalls(Drawn(), good);
    Mesh.Vertexes()->BeginUpdate();
    Mesh.Vertexes()->Clear();
    EXPECT_THAT(Drawn(), ElementsAre("glBegin(GL_TRIANGLES)", "glEnd()"));
    Mesh.Vertexes()->EndUpdate();
    Mesh.Faces()->Clear();
    EXPECT_THAT(Drawn(), IsEmpty());
}

TEST_F(MeshMaterialCall, FacesFollowTheirMaterial) {
    const auto inMain = [&] { return DrawnFaces([&] { Mesh.DrawMain(false); }).size(); };
    EXPECT_EQ(inMain(), 3U);
    Mesh.Faces()->Item(2)->SetMaterialIndex(0);
    EXPECT_EQ(inMain(), 4U);
    Library.Materials()->Item(2)->Material()->SetTransparency(0.5F);
    EXPECT_EQ(inMain(), 2U) << "the material of two faces has become transparent";
    Mesh.Faces()->BeginUpdate();
    Mesh.Faces()->Delete(4);
    Mesh.Faces()->Delete(3);
    EXPECT_EQ(inMain(), 2U) << "drawn while news are held back";
    Mesh.Faces()->EndUpdate();
    Mesh.SetColorFaces(false);
    EXPECT_EQ(inMain(), 3U) << "all that are left, in the material of the mesh";
}
