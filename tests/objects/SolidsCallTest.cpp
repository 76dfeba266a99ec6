#include "tests/gl/CallRecorder.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

#include <gmock/gmock.h>

using namespace ZEP;

namespace {

using TCalls = std::vector<std::string>;
using SolidsCall = OffscreenTest;

QImage Pixel() {
    QImage image(1, 1, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

struct TBoxFace {
    TZEPBoxPart Part;
    const char* Normal;
    const char* Corners[4];
};

/// In the order that they are drawn in.
const TBoxFace BoxFaces[] = {
    {bpFront, "0 0 1", {"-0.5 -0.5 0.5", "0.5 -0.5 0.5", "0.5 0.5 0.5", "-0.5 0.5 0.5"}},
    {bpBack, "0 0 -1", {"0.5 -0.5 -0.5", "-0.5 -0.5 -0.5", "-0.5 0.5 -0.5", "0.5 0.5 -0.5"}},
    {bpRight, "1 0 0", {"0.5 -0.5 0.5", "0.5 -0.5 -0.5", "0.5 0.5 -0.5", "0.5 0.5 0.5"}},
    {bpLeft, "-1 0 0", {"-0.5 -0.5 -0.5", "-0.5 -0.5 0.5", "-0.5 0.5 0.5", "-0.5 0.5 -0.5"}},
    {bpTop, "0 1 0", {"-0.5 0.5 -0.5", "-0.5 0.5 0.5", "0.5 0.5 0.5", "0.5 0.5 -0.5"}},
    {bpBottom, "0 -1 0", {"-0.5 -0.5 0.5", "-0.5 -0.5 -0.5", "0.5 -0.5 -0.5", "0.5 -0.5 0.5"}}};

TCalls FaceCalls(TZEPBoxParts parts, bool draft, bool textured) {
    constexpr const char* TextureCorners[]{"0 0", "1 0", "1 1", "0 1"};
    TCalls calls;
    for (const TBoxFace& face : BoxFaces) {
        if (!parts.testFlag(face.Part)) continue;
        calls.emplace_back(draft ? "glBegin(GL_LINE_LOOP)" : "glBegin(GL_QUADS)");
        calls.push_back(std::string("glNormal3fv(") + face.Normal + ")");
        for (int i = 0; i < 4; ++i) {
            if (textured) calls.push_back(std::string("glTexCoord2fv(") + TextureCorners[i] + ")");
            calls.push_back(std::string("glVertex3fv(") + face.Corners[i] + ")");
        }
        calls.emplace_back("glEnd()");
    }
    return calls;
}

/// Without the addresses, which come first in the arguments of quadrics.
TCalls WithoutAddresses(TCalls calls) {
    for (std::string& call : calls) {
        const auto open = call.find('(');
        if (call.compare(0, 3, "glu") != 0) continue;
        const auto end = call.find_first_of(",)", open);
        call.erase(open + 1, call[end] == ',' ? end - open + 1 : end - open - 1);
    }
    return calls;
}

} // namespace

TEST_F(SolidsCall, ABoxDrawsItsPartsInOrder) {
    TZEPBox box;
    const TZEPBoxParts all = box.Parts();
    for (const TZEPBoxParts parts : {all, TZEPBoxParts(bpTop) | bpBack, TZEPBoxParts(bpLeft)})
        for (const bool draft : {false, true}) {
            box.SetParts(parts);
            const GlCalls calls;
            box.DrawSpecific(GL_FRONT_AND_BACK, draft);
            ExpectCalls(calls, FaceCalls(parts, draft, false));
        }
    box.SetParts({});
    const GlCalls none;
    box.DrawSpecific(GL_FRONT_AND_BACK, false);
    ExpectNoCalls(none);
}

TEST_F(SolidsCall, APictureGivesABoxTextureCoordinates) {
    TZEPBox box;
    box.Material()->Texture()->Image()->SetImage(Pixel());
    for (const bool draft : {false, true}) {
        const GlCalls calls;
        box.DrawSpecific(GL_FRONT_AND_BACK, draft);
        ExpectCalls(calls, FaceCalls(box.Parts(), draft, !draft));
    }
    box.SetSlices(0, 2);
    const GlCalls calls;
    box.DrawSpecific(GL_FRONT_AND_BACK, false);
    EXPECT_EQ(calls.Count("glTexCoord2d"), 4 * (2 * 1 + 2 * 2 + 2 * 2U));
}

TEST_F(SolidsCall, ThePictureOfALibraryMaterialCountsToo) {
    TZEPScene scene;
    TZEPMaterialLibrary library;
    library.Materials()->Add()->Material()->Texture()->Image()->SetImage(Pixel());
    scene.SetMaterialLibrary(&library);
    auto* box = new TZEPBox(&scene);
    box->SetParentComponent(&scene);
    box->SetMaterialIndex(0);
    const GlCalls calls;
    box->DrawSpecific(GL_FRONT_AND_BACK, false);
    EXPECT_EQ(calls.Count("glTexCoord2fv"), 24U);
}

TEST_F(SolidsCall, AConeIsACylinderAndTwoDisks) {
    struct Case {
        double Top, Bottom;
        TZEPConeParts Parts;
        bool Draft, Smooth;
        TCalls Expected;
    };
    const TZEPConeParts all = TZEPConeParts(cpTop) | cpBottom | cpSide;
    const TCalls ends{"gluQuadricOrientation(GLU_INSIDE)", "glTranslatef(0, 0, 1)",
                      "gluQuadricOrientation(GLU_OUTSIDE)", "glPopMatrix()", "gluDeleteQuadric()"};
    for (const Case& c :
         {Case{1,
               2,
               all,
               false,
               false,
               {"gluNewQuadric()", "gluQuadricDrawStyle(GLU_FILL)", "gluQuadricTexture(GL_TRUE)",
                "gluQuadricNormals(GLU_FLAT)", "glPushMatrix()", "glTranslatef(0, 0, -0.5)",
                "gluCylinder(2, 1, 1, 10, 4)", "gluQuadricOrientation(GLU_INSIDE)",
                "gluDisk(0, 2, 10, 1)", "glTranslatef(0, 0, 1)",
                "gluQuadricOrientation(GLU_OUTSIDE)", "gluDisk(0, 1, 10, 1)", "glPopMatrix()",
                "gluDeleteQuadric()"}},
          Case{0,
               0,
               all,
               true,
               true,
               {"gluNewQuadric()", "gluQuadricDrawStyle(GLU_LINE)", "glPushMatrix()",
                "glTranslatef(0, 0, -0.5)", "gluCylinder(0, 0, 1, 10, 4)", ends[0], ends[1],
                ends[2], ends[3], ends[4]}},
          Case{1,
               2,
               cpTop,
               true,
               true,
               {"gluNewQuadric()", "gluQuadricDrawStyle(GLU_LINE)", "glPushMatrix()",
                "glTranslatef(0, 0, -0.5)", ends[0], ends[1], ends[2], "gluDisk(0, 1, 10, 1)",
                ends[3], ends[4]}}}) {
        TZEPCone cone;
        cone.SetRadius1(c.Top);
        cone.SetRadius2(c.Bottom);
        cone.SetStacks(4);
        cone.SetParts(c.Parts);
        cone.SetSmooth(c.Smooth);
        const GlCalls calls;
        cone.DrawSpecific(GL_FRONT_AND_BACK, c.Draft);
        ExpectCalls(WithoutAddresses(calls.List()), c.Expected);
    }
}

TEST_F(SolidsCall, ASphereCompilesEachLookOnceAndSpheresShareIt) {
    TZEPSphere first, second;
    GlCalls calls;
    for (int i = 0; i < 2; ++i)
        for (TZEPSphere* sphere : {&first, &second})
            for (const bool draft : {false, true}) sphere->DrawSpecific(GL_FRONT_AND_BACK, draft);
    EXPECT_EQ(calls.Count("gluSphere"), 2U);
    EXPECT_EQ(calls.Count("glCallList"), 8U);
    const TCalls made = WithoutAddresses(calls.Of({"glu*"}));
    EXPECT_EQ(
        TCalls(made.begin(), made.begin() + 6),
        (TCalls{"gluNewQuadric()", "gluQuadricDrawStyle(GLU_FILL)", "gluQuadricTexture(GL_TRUE)",
                "gluQuadricNormals(GLU_FLAT)", "gluSphere(0.5, 20, 20)", "gluDeleteQuadric()"}));
    calls.Clear();
    second.SetStacks(7);
    second.SetSmooth(true);
    second.DrawSpecific(GL_FRONT_AND_BACK, false);
    first.DrawSpecific(GL_FRONT_AND_BACK, false);
    EXPECT_EQ(WithoutAddresses(calls.Of({"gluSphere", "gluQuadricNormals"})),
              (TCalls{"gluSphere(0.5, 20, 7)"}));
}

TEST_F(SolidsCall, ListsGoWithTheLastSphereThatUsesThem) {
    SetContextIsCurrent(true);
    auto first = std::make_unique<TZEPSphere>();
    auto second = std::make_unique<TZEPSphere>();
    first->DrawSpecific(GL_FRONT_AND_BACK, false);
    second->DrawSpecific(GL_FRONT_AND_BACK, false);
    const GlCalls calls;
    first.reset();
    EXPECT_EQ(calls.Count("glDeleteLists"), 0U);
    second->SetSlices(6);
    EXPECT_EQ(calls.Count("glDeleteLists"), 1U);
    SetContextIsCurrent(false);
}

TEST_F(SolidsCall, ATorusIsCompiledAnewWhenItChanges) {
    TZEPTorus torus;
    torus.SetRadius1(2);
    torus.SetRadius2(1);
    const auto compiles = [&] {
        const GlCalls calls;
        for (int i = 0; i < 3; ++i) torus.DrawSpecific(GL_FRONT_AND_BACK, false);
        return calls.Count("glNewList");
    };
    EXPECT_EQ(compiles(), 1U);
    EXPECT_EQ(compiles(), 0U);
    torus.SetRings(20);
    EXPECT_EQ(compiles(), 1U);
    torus.SetRings(20);
    EXPECT_EQ(compiles(), 0U);
    torus.SetSmooth(true);
    EXPECT_EQ(compiles(), 1U);
}

TEST_F(SolidsCall, ATeapotsPartsAreItsPatches) {
    struct Case {
        TZEPTeapotPartSet Parts;
        std::size_t Patches;
    };
    const TZEPTeapotPartSet all = TZEPTeapotPartSet(tpBody) | tpHandle | tpSpout | tpLid;
    for (const Case& c : {Case{all, 32}, {tpBody, 16}, {tpLid, 8}, {tpHandle, 4}, {tpSpout, 4}}) {
        TZEPTeapot teapot;
        teapot.SetParts(c.Parts);
        const GlCalls calls;
        teapot.DrawSpecific(GL_FRONT_AND_BACK, false);
        EXPECT_EQ(calls.Of({"glEvalMesh2"}), TCalls(c.Patches, "glEvalMesh2(GL_FILL, 0, 4, 0, 4)"));
        EXPECT_EQ(calls.Of({"glMapGrid2f"}), TCalls(c.Patches, "glMapGrid2f(4, 0, 1, 4, 0, 1)"));
    }
}

TEST_F(SolidsCall, ATeapotSetsUpItsEvaluatorsAndDrawsNoBacks) {
    TZEPTeapot teapot;
    const TCalls off{"glDisable(GL_MAP2_VERTEX_3)", "glDisable(GL_AUTO_NORMAL)",
                     "glDisable(GL_MAP2_TEXTURE_COORD_2)", "glPopMatrix()"};
    TCalls expected{"glPushMatrix()",
                    "glScalef(-0.25, -0.25, -0.25)",
                    "glRotatef(180, 0, 1, 0)",
                    "glTranslatef(0, 0, -0.75)",
                    "glEnable(GL_MAP2_VERTEX_3)",
                    "glEnable(GL_AUTO_NORMAL)"};
    expected.insert(expected.end(), off.begin(), off.end());
    GlCalls calls;
    teapot.DrawSpecific(GL_BACK, false);
    ExpectCalls(calls, expected);
    teapot.Material()->Texture()->Image()->SetImage(Pixel());
    for (const bool draft : {false, true}) {
        calls.Clear();
        teapot.DrawSpecific(GL_FRONT, draft);
        EXPECT_EQ(calls.Count("glEnable"), draft ? 2U : 3U);
        EXPECT_EQ(calls.Of({"glEvalMesh2"}).front(),
                  draft ? "glEvalMesh2(GL_LINE, 0, 4, 0, 4)" : "glEvalMesh2(GL_FILL, 0, 4, 0, 4)");
    }
}

TEST_F(SolidsCall, PolyhedraSendOneNormalForEachFace) {
    struct Case {
        std::unique_ptr<TZEPSolid> Solid;
        const char* Mode;
        std::size_t Faces, Corners;
    };
    const Case cases[] = {{std::make_unique<TZEPOctahedron>(), "GL_TRIANGLES", 8, 3},
                          {std::make_unique<TZEPIcosahedron>(), "GL_TRIANGLES", 20, 3},
                          {std::make_unique<TZEPDodecahedron>(), "GL_TRIANGLE_FAN", 12, 5}};
    for (const Case& c : cases)
        for (const bool draft : {false, true}) {
            const GlCalls calls;
            c.Solid->DrawSpecific(GL_FRONT_AND_BACK, draft);
            const std::string mode = draft ? "GL_LINE_LOOP" : c.Mode;
            EXPECT_EQ(calls.Of({"glBegin"}), TCalls(c.Faces, "glBegin(" + mode + ")"));
            EXPECT_EQ(calls.Count("glNormal3fv"), c.Faces);
            EXPECT_EQ(calls.Count("glVertex3fv"), c.Faces * c.Corners);
            EXPECT_EQ(calls.Of({"glScalef"}),
                      c.Corners == 5 ? TCalls{"glScalef(0.3, 0.3, 0.3)"} : TCalls{});
        }
}

TEST_F(SolidsCall, ASelectedNodeShowsNothing) {
    TZEPNode node;
    node.SetSelected(true);
    node.SetColor(clRed);
    const GlCalls calls;
    node.DrawMain(false);
    EXPECT_EQ(calls.Count("glBegin"), 0U);
    EXPECT_EQ(calls.Count("glPushAttrib"), 0U);
}

TEST_F(SolidsCall, NeighbouringBoxesSetOnlyWhatDiffers) {
    TZEPScene scene;
    const auto add = [&](TColor color) {
        auto* box = new TZEPBox(&scene);
        box->SetParentComponent(&scene);
        box->SetColor(color);
        return box;
    };
    for (const TColor color : {clRed, clRed, clBlue}) add(color);
    TZEPMaterial* shiny = add(clBlue)->Material();
    shiny->BackFace()->SetDiffuse(clLime);
    shiny->FrontFace()->SetShininess(9);
    GlCalls calls;
    scene.Draw(scene, dsAllObjects, dkFull);
    EXPECT_EQ(calls.Count("glDrawArrays"), 4U);
    EXPECT_EQ(calls.Count("glVertexPointer"), 1U);
    EXPECT_EQ(calls.Count("glPushClientAttrib"), calls.Count("glPopClientAttrib"));
    const TCalls materials = calls.Of({"glMaterialfv"});
    ASSERT_GT(materials.size(), 10U);
    EXPECT_EQ(TCalls(materials.begin() + 10, materials.end()),
              (TCalls{"glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, 0 0 1 0)",
                      "glMaterialfv(GL_FRONT, GL_SHININESS, 9)",
                      "glMaterialfv(GL_BACK, GL_DIFFUSE, 0 1 0 0)"}));
    calls.Clear();
    scene.Draw(scene, dsTransparent, dkFull);
    EXPECT_EQ(calls.Of({"glPushMatrix", "glMaterialfv", "glDrawArrays"}), TCalls{})
        << "nothing is transparent";
}
