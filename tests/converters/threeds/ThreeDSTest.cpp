#include "tests/converters/threeds/ThreeDSFixture.h"

namespace ZEP {
namespace {

using namespace F3DS;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<TGLArrayd3> PointsOf(TZEPMesh& mesh) {
    std::vector<TGLArrayd3> points;
    for (int i = 0; i < mesh.Vertexes()->Count(); ++i)
        points.push_back((*mesh.Vertexes())[i].Data());
    return points;
}

/// Corners and material.
std::vector<std::array<int, 4>> FacesOf(TZEPMesh& mesh) {
    std::vector<std::array<int, 4>> faces;
    for (int i = 0; i < mesh.Faces()->Count(); ++i) {
        const TZEPFace3CI& face = (*mesh.Faces())[i];
        faces.push_back({face.A(), face.B(), face.C(), face.MaterialIndex()});
    }
    return faces;
}

// --- meshes ------------------------------------------------------------------------------------

TEST_F(ThreeDSTest, AMeshHasPointsFacesTextureCoordinatesAndItsPlaceUnderTheRoot) {
    Converter.Read3DS(File(
        Mesh("Roof", SquarePoints() + Chunk(0x4140, Words({3}) + Floats({0, 0, 1, 0, 1, 0.5F})) +
                         SquareFaces())));
    ASSERT_EQ(Scene.GetItemsCount(), 1);
    auto* mesh = Child<TZEPMesh>(0);
    ASSERT_TRUE(mesh);
    EXPECT_EQ(mesh->Ident(), "Roof");
    EXPECT_EQ(mesh->Owner(), &Scene);
    EXPECT_THAT(PointsOf(*mesh), ElementsAre(TGLArrayd3{0, 0, 0}, TGLArrayd3{2, 0, 0},
                                             TGLArrayd3{2, 2, 1}, TGLArrayd3{0, 2, 1}));
    EXPECT_THAT(FacesOf(*mesh), ElementsAre(std::array{0, 1, 2, -1}, std::array{0, 2, 3, -1}));
    EXPECT_EQ((*mesh->Vertexes())[2].TexX(), 1);
    EXPECT_EQ((*mesh->Vertexes())[2].TexY(), 0.5);
    EXPECT_EQ((*mesh->Vertexes())[3].TexX(), 0);
    EXPECT_EQ(mesh->GetMax(), (TGLArrayd3{2, 2, 1}));
}

TEST_F(ThreeDSTest, WhatAMeshStoresAndIsNotShownLeavesItAsItIs) {
    const std::string matrix =
        Chunk(0x4160, Floats({2, 0, 0, 0, 2, 0, 0, 0, 2, 10, 20, 30})); // twice as large, moved
    const std::string smoothing = Chunk(0x4150, Long(1) + Long(1));
    Converter.Read3DS(File(Chunk(0x0100, Floats({25})) +
                           Mesh("A", SquarePoints() + matrix + SquareFaces(smoothing))));
    auto* mesh = Child<TZEPMesh>(0);
    ASSERT_TRUE(mesh);
    EXPECT_EQ(mesh->GetAbsoluteMax(), (TGLArrayd3{2, 2, 1}));
    EXPECT_FALSE(mesh->Smooth());
    EXPECT_THAT(Passed(), ElementsAre("faces without a material 2"));
}

TEST_F(ThreeDSTest, FlagsOfAMeshHideItAndTakeItsShadows) {
    const std::string square = SquarePoints() + SquareFaces();
    Converter.Read3DS(File(Mesh("A", square) + Mesh("B", square + Chunk(0x4010)) +
                           Mesh("C", square + Chunk(0x4012) + Chunk(0x4017))));
    EXPECT_TRUE(Child<TZEPMesh>(0)->Visible());
    EXPECT_FALSE(Child<TZEPMesh>(1)->Visible());
    EXPECT_TRUE(Child<TZEPMesh>(2)->Visible());
    EXPECT_FALSE(Child<TZEPMesh>(2)->CastsShadows());
    EXPECT_FALSE(Child<TZEPMesh>(2)->ReceivesShadows());
}

TEST_F(ThreeDSTest, GroupsGiveFacesTheMaterialOfThatVeryName) {
    const std::string groups = Group("paint", {0}) + Group("Paint", {1, 9}) + Group("Glass", {2});
    const std::string points = SquarePoints();
    const std::string faces =
        Chunk(0x4120, Words({3, 0, 1, 2, 0, 0, 2, 3, 0, 0, 1, 3, 0}) + groups);
    Converter.Read3DS(File(Material("Glass") + Material("Paint") + Material("Paint") +
                           Mesh("A", points + faces)));
    EXPECT_THAT(
        FacesOf(*Child<TZEPMesh>(0)),
        ElementsAre(std::array{0, 1, 2, -1}, std::array{0, 2, 3, 1}, std::array{0, 1, 3, 0}));
    EXPECT_THAT(Passed(), ElementsAre("faces without a material 1",
                                      "materials of faces that the mesh lacks 1"));
    EXPECT_EQ(Converter.FindMaterialIndex(QStringLiteral("Paint")), 1);
    EXPECT_EQ(Converter.FindMaterialIndex(QStringLiteral("PAINT")), -1);
}

TEST_F(ThreeDSTest, WithoutALibraryMaterialsAreSkipped) {
    Converter.SetMaterials(nullptr);
    Converter.Read3DS(
        File(Material("Paint") + Mesh("A", SquarePoints() + SquareFaces(Group("Paint", {0, 1})))));
    EXPECT_THAT(FacesOf(*Child<TZEPMesh>(0)),
                ElementsAre(std::array{0, 1, 2, -1}, std::array{0, 2, 3, -1}));
    EXPECT_EQ(Library.Materials()->Count(), 0);
    EXPECT_EQ(Converter.FindMaterialIndex(QStringLiteral("Paint")), -1);
    EXPECT_THAT(Passed(), IsEmpty());
}

TEST_F(ThreeDSTest, WhatPointsNowhereIsCounted) {
    Converter.SetMaterials(nullptr);
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float endless = std::numeric_limits<float>::infinity();
    Converter.Read3DS(
        File(Mesh("A", Chunk(0x4110, Words({2}) + Floats({1, none, 2, -endless, 3, 4})) +
                           Chunk(0x4140, Words({3}) + Floats({1, 1, 1, none, 1, 1})) +
                           Chunk(0x4120, Words({2, 0, 1, 1, 0, 0, 1, 2, 0})))));
    EXPECT_THAT(PointsOf(*Child<TZEPMesh>(0)),
                ElementsAre(TGLArrayd3{1, 0, 2}, TGLArrayd3{0, 3, 4}));
    EXPECT_THAT(Passed(), ElementsAre("faces with a corner that is no vertex 1",
                                      "texture coordinates without a vertex 1",
                                      "numbers that are none (taken as 0) 3"));
}

// --- materials ---------------------------------------------------------------------------------

TEST_F(ThreeDSTest, ColoursAreTheSameOnBothSidesWhicheverTheirForm) {
    const std::string floats = Chunk(0xA030, Chunk(0x0010, Floats({0.5F, 1.5F, -1})));
    const std::string gamma =
        Chunk(0xA020, Chunk(0x0012, Bytes({10, 20, 30})) + Chunk(0x0011, Bytes({1, 1, 1})));
    Converter.Read3DS(
        File(Material("A", Color24(0xA010, {1, 2, 3}) + gamma + floats + Percent(0xA080, 0))));
    for (const TZEPFaceMaterial* face : {MaterialAt(0)->FrontFace(), MaterialAt(0)->BackFace()}) {
        EXPECT_EQ(face->Ambient(), TColor(0x030201));
        EXPECT_EQ(face->Diffuse(), TColor(0x1E140A));
        EXPECT_EQ(face->Specular(), TColor(0x00FF80));
        EXPECT_EQ(face->Emission(), TColor(0x808080));
    }
}

struct TShininess {
    const char* Name;
    std::string Chunks;
    float Shininess;
    TColor Specular;
};

TEST_F(ThreeDSTest, TheLastShininessHoldsAndNoneTakesTheHighlight) {
    const std::string half = Chunk(0xA040, Chunk(0x0031, Floats({0.5F})));
    const TShininess rows[] = {
        {"whole number", Percent(0xA040, 25), 32, clWhite},
        {"share", half, 64, clWhite},
        {"number of per cent in the share's form", Chunk(0xA040, Chunk(0x0031, Floats({50}))), 128,
         clWhite},
        {"strength wins", Percent(0xA040, 25) + Percent(0xA041, 75), 96, clWhite},
        {"first of two", Chunk(0xA040, Chunk(0x0030, Words({10})) + Chunk(0x0030, Words({20}))),
         12.8F, clWhite},
        {"none", Percent(0xA040, 0), 0, clBlack},
        {"no strength", Percent(0xA040, 10) + Percent(0xA041, 0), 0, clBlack},
        {"lost for good", Percent(0xA040, 0) + Percent(0xA041, 50), 64, clBlack},
        {"below none", Percent(0xA040, 0xFFFF), 0, clBlack},
        {"unsaid", Chunk(0xA040), 0, clWhite},
    };
    for (const TShininess& row : rows) {
        SCOPED_TRACE(row.Name);
        Library.Materials()->Clear();
        Converter.Read3DS(File(Material("A", Color24(0xA030, {255, 255, 255}) + row.Chunks)));
        for (const TZEPFaceMaterial* face :
             {MaterialAt(0)->FrontFace(), MaterialAt(0)->BackFace()}) {
            EXPECT_FLOAT_EQ(face->Shininess(), row.Shininess);
            EXPECT_EQ(face->Specular(), row.Specular);
        }
    }
}

TEST_F(ThreeDSTest, OnlyTheWholeNumberOfATransparencyIsInHundredths) {
    Converter.Read3DS(File(Material("A", Percent(0xA050, 17)) +
                           Material("B", Chunk(0xA050, Chunk(0x0031, Floats({50}))))));
    EXPECT_FLOAT_EQ(MaterialAt(0)->Transparency(), 0.17F);
    EXPECT_EQ(MaterialAt(1)->Transparency(), 50);
}

TEST_F(ThreeDSTest, NamesAreReadInUtf8AndElseInLatin1) {
    Converter.Read3DS(
        File(Material("T\xC3\xBCr") + Material("T\xFCr") + Material("") + Square("T\xFCr")));
    EXPECT_EQ(Library.Materials()->Item(0)->Ident(), QStringLiteral(u"T\u00FCr"));
    EXPECT_EQ(Library.Materials()->Item(1)->Ident(), QStringLiteral(u"T\u00FCr"));
    EXPECT_EQ(Library.Materials()->Item(2)->Ident(), "DUMMY");
    EXPECT_EQ(Scene.GetItem(0)->Ident(), QStringLiteral(u"T\u00FCr"));
}

// --- lights, cameras, scene --------------------------------------------------------------------

TEST_F(ThreeDSTest, ALightHasPlaceAndColour) {
    Converter.Read3DS(File(
        Object("Sun", Chunk(0x4600, Floats({1, 2, 3}) + Chunk(0x0010, Floats({1, 0.5F, 0}))))));
    auto* light = Child<TZEPLight>(0);
    ASSERT_TRUE(light);
    EXPECT_EQ(light->Ident(), "Sun");
    EXPECT_EQ(light->Position()->Data(), (TGLArrayd3{1, 2, 3}));
    EXPECT_EQ(light->Color(), TColor(0x0080FF));
    EXPECT_FALSE(light->Directional());
    EXPECT_EQ(light->Cutoff(), 180);
}

struct TSpot {
    float Hotspot, Falloff, Exponent, Cutoff;
};

TEST_F(ThreeDSTest, ASpotIsAimedWithinWhatALightCanBe) {
    const TSpot rows[] = {{40, 60, 20, 30}, {300, 200, 128, 90}, {-2, -2, 0, 0}, {0, 360, 0, 180}};
    for (const TSpot& row : rows) {
        Scene.Clear();
        const std::string spot =
            Chunk(0x4610, Floats({4, 5, 6, row.Hotspot, row.Falloff}) + Chunk(0x4656));
        Converter.Read3DS(File(Object("S", Chunk(0x4600, Floats({1, 2, 3}) + spot))));
        auto* light = Child<TZEPLight>(0);
        EXPECT_EQ(light->Target()->Data(), (TGLArrayd3{4, 5, 6}));
        EXPECT_TRUE(light->Directional());
        EXPECT_EQ(light->Exponent(), row.Exponent);
        EXPECT_EQ(light->Cutoff(), row.Cutoff);
    }
}

TEST_F(ThreeDSTest, ACameraHasPlaceTargetRollLensAndPlanes) {
    const std::string place = Floats({1, 2, 3, 4, 5, 6, 30, 60});
    Converter.Read3DS(File(Object("A", Chunk(0x4700, place)) +
                           Object("B", Chunk(0x4700, place + Chunk(0x4720, Floats({0, 77}))))));
    auto* camera = Child<TZEPCamera>(0);
    ASSERT_TRUE(camera);
    EXPECT_EQ(camera->Position()->Data(), (TGLArrayd3{1, 2, 3}));
    EXPECT_EQ(camera->Target()->Data(), (TGLArrayd3{4, 5, 6}));
    EXPECT_EQ(camera->RollAngle(), 30);
    EXPECT_EQ(camera->FocalLength(), 60);
    EXPECT_EQ(camera->NearClipPlane(), 0.1);
    EXPECT_EQ(camera->FarClipPlane(), 1000);
    EXPECT_EQ(Child<TZEPCamera>(1)->NearClipPlane(), 0);
    EXPECT_EQ(Child<TZEPCamera>(1)->FarClipPlane(), 77);
}

TEST_F(ThreeDSTest, TheSceneOfTheRootGetsTheColours) {
    const std::string file =
        File(Color24(0x1200, {1, 2, 3}) + Chunk(0x2100, Chunk(0x0010, Floats({1, 0, 1}))));
    auto* node = new TZEPObject(&Scene);
    node->SetParentComponent(&Scene);
    TZEPObject alone;
    for (TZEPObject* root : {&alone, node, static_cast<TZEPObject*>(&Scene)}) {
        Scene.SetBackgroundColor(clGreen);
        Scene.SetSceneAmbientColor(clGreen);
        Converter.SetRoot(root);
        Converter.Read3DS(file);
        EXPECT_EQ(Scene.BackgroundColor(), root == &alone ? clGreen : TColor(0x030201));
        EXPECT_EQ(Scene.SceneAmbientColor(), root == &alone ? clGreen : TColor(0xFF00FF));
    }
}

TEST_F(ThreeDSTest, WhatOneWouldSeeAndIsPassedOverIsCounted) {
    const std::string map = Chunk(0xA300, Name("A.JPG"));
    const std::string keys = Chunk(0xB000, Chunk(0xB002, Chunk(0xB010)));
    Converter.Read3DS(File(Material("A", Chunk(0xA210, map) + Chunk(0xA230, map) + Chunk(0xA087)) +
                               Material("B", Chunk(0xA230, map)) + Chunk(0x2200) + Chunk(0x7001) +
                               Object("O", Chunk(0x4010)) +
                               Object("L", Chunk(0x4600, Floats({0, 0, 0}) + Chunk(0x4620))),
                           keys));
    EXPECT_THAT(Passed(),
                ElementsAre("chunk 0xA210 (opacity map) 1", "chunk 0xA230 (bump map) 2",
                            "chunk 0x2200 (fog) 1", "chunk 0x4010 (hidden object) 1",
                            "chunk 0x4620 (light that is off) 1", "chunk 0xB000 (animation) 1"));
}

} // namespace
} // namespace ZEP
