#include "tests/converters/threeds/ThreeDSFixture.h"

#include <QImage>

namespace ZEP {
namespace {

using namespace F3DS;

TEST_F(ThreeDSTest, LoadingReplacesChildrenWhereAskedAndMaterialsAlways) {
    const std::string file = File(Material("Paint") + Square());
    Load(file);
    Load(file);
    EXPECT_EQ(Scene.GetItemsCount(), 1);
    EXPECT_EQ(Library.Materials()->Count(), 1);
    Converter.SetClearBeforRead(false);
    Load(file);
    EXPECT_EQ(Scene.GetItemsCount(), 2);
    EXPECT_EQ(Library.Materials()->Count(), 1);
}

TEST_F(ThreeDSTest, ReadingFromMemoryAddsAndKeepsFilesApart) {
    const std::string mesh = Mesh("A", SquarePoints() + SquareFaces(Group("Paint", {0, 1})));
    const std::string file = File(Material("Other") + Material("Paint") + mesh);
    Converter.Read3DS(file);
    Converter.Read3DS(file);
    EXPECT_EQ(Library.Materials()->Count(), 4);
    EXPECT_EQ((*Child<TZEPMesh>(0)->Faces())[0].MaterialIndex(), 1);
    EXPECT_EQ((*Child<TZEPMesh>(1)->Faces())[0].MaterialIndex(), 3);
    EXPECT_EQ(Converter.FindMaterialIndex(QStringLiteral("Paint")), 1);
    EXPECT_EQ(Converter.FindMaterialIndex(QStringLiteral("PAINT")), -1);
}

TEST_F(ThreeDSTest, TheLibraryMayGo) {
    auto library = std::make_unique<TZEPMaterialLibrary>();
    Converter.SetMaterials(library.get());
    library.reset();
    EXPECT_EQ(Converter.Materials(), nullptr);
    EXPECT_EQ(Converter.FindMaterialIndex(QStringLiteral("A")), -1);
    library = std::make_unique<TZEPMaterialLibrary>();
    Converter.SetMaterials(library.get());
    Converter.SetProgress([&](qint64, qint64) {
        library.reset();
        return true;
    });
    std::string squares;
    for (int i = 0; i < 5; ++i) squares += Square() + Chunk(0x7001, std::string(65536, ' '));
    Converter.Read3DS(File(squares));
    EXPECT_TRUE(Converter.Cancelled());
}

TEST_F(ThreeDSTest, TheSceneOfTheRootGetsTheColours) {
    const std::string file =
        File(Color24(0x1200, {1, 2, 3}) + Chunk(0x2100, Chunk(0x0010, Floats({1, 0, 1}))));
    TZEPObject alone;
    for (TZEPObject* root : {&alone, static_cast<TZEPObject*>(&Scene)}) {
        Converter.SetRoot(root);
        Converter.Read3DS(file);
        EXPECT_EQ(Scene.BackgroundColor(), root == &alone ? clBlack : TColor(0x030201));
    }
}

TEST_F(ThreeDSTest, NumbersThatAreNoneAreZero) {
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float endless = std::numeric_limits<float>::infinity();
    Converter.Read3DS(
        File(Mesh("A", Chunk(0x4110, Words({2}) + Floats({1, none, 2, -endless, 3, 4})))));
    EXPECT_EQ((*Child<TZEPMesh>(0)->Vertexes())[1].Data(), (TGLArrayd3{0, 3, 4}));
    EXPECT_THAT(Passed(), testing::ElementsAre("numbers that are none (taken as 0) 2"));
}

TEST_F(ThreeDSTest, ADumpNeverReplacesTheFile) {
    Converter.SetDoDump(true);
    Converter.SetFileName(Put("a.dmp", QByteArray::fromStdString(File(""))));
    EXPECT_THAT(ErrorOfLoading(), testing::StartsWith("TF3DSConverter.Dump: Can't write \""));
    Converter.Dump("nothing is open");
    EXPECT_EQ(ErrorOf([&] { Converter.SaveToFile(); }),
              "TF3DSConverter.SaveToFile: Only import is supported.");
}

// --- bounds ------------------------------------------------------------------------------------

/// Each chunk holds the next one, and before it a count of 0.
std::string Nested(std::uint16_t id, std::size_t depth) {
    std::string bytes;
    for (std::size_t left = depth; left > 0; --left)
        bytes += ChunkOfLength(id, 8 * left, Words({0}));
    return bytes;
}

TEST_F(ThreeDSTest, NoNestingEndsAStack) {
    EXPECT_EQ(ErrorOfReading(File(Mesh("m", Nested(0x4120, 300'000)))), "");
    EXPECT_EQ(ErrorOfReading(File(Nested(0x3D3D, 300'000))), "");
}

TEST_F(ThreeDSTest, WhatAFileCanMakeIsBounded) {
    std::string lights;
    for (int i = 0; i < 300; ++i) lights += Object("l", Chunk(0x4600, Floats({1, 2, 3})));
    EXPECT_EQ(ErrorOfReading(File(lights)), "");
    EXPECT_EQ(Scene.GetItemsCount(), 256);
    EXPECT_THAT(Passed(), testing::ElementsAre("lights after the first 256 44"));

    std::string materials;
    for (int i = 0; i < 65'537; ++i) materials += Chunk(0xAFFF);
    EXPECT_EQ(ErrorOfReading(File(materials)),
              "TF3DSConverter.Read3DS: more than 65536 materials at offset 0x60016.");
    EXPECT_EQ(Library.Materials()->Count(), 65'536);
}

} // namespace
} // namespace ZEP
