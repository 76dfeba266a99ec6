#include "tests/converters/threeds/ThreeDSFixture.h"

namespace ZEP {
namespace {

using namespace F3DS;

struct TFault {
    std::string Bytes;
    const char* Error; ///< without what it begins with
};

std::string Camera(const std::string& inside) {
    return Object("c", Chunk(0x4700, Floats({0, 0, 0, 1, 1, 1, 0, 50}) + inside));
}

/// What is in the editor's chunk begins at 0x16.
const TFault Faults[] = {
    {"", "main chunk not found."},
    {"M", "main chunk not found."},
    {Chunk(0x3D3D, Square()), "main chunk not found."},
    {"MM", "a chunk begins where 2 bytes remain at offset 0x0."},
    {ChunkOfLength(0x4D4D, 5), "chunk 0x4D4D has the length 5, but its header has 6 bytes at "
                               "offset 0x0."},
    {ChunkOfLength(0x4D4D, 0xFFFFFFFF), "the file ends in chunk 0x4D4D at offset 0x6."},
    {File("abc"), "a chunk begins where 3 bytes remain at offset 0x16."},
    {File(ChunkOfLength(0x1234, 0)), "chunk 0x1234 has the length 0, but its header has 6 bytes at "
                                     "offset 0x16."},
    {File(ChunkOfLength(0x1234, 7)), "chunk 0x1234 has the length 7 where its parent has 6 bytes "
                                     "left at offset 0x16."},
    {File(ChunkOfLength(0x4000, 0xFFFFFFFF, "a")),
     "chunk 0x4000 has the length 4294967295 where its parent has 7 bytes left at offset 0x16."},
    {File(Chunk(0x4000, "abc")), "chunk 0x4000 holds a name without an end at offset 0x1C."},
    {File(Chunk(0x1200, Chunk(0x0011, Bytes({1, 2})))),
     "chunk 0x0011 needs 1 more bytes where 0 remain at offset 0x24."},
    {File(Mesh("m", Chunk(0x4110))),
     "chunk 0x4110 needs 2 more bytes where 0 remain at offset 0x2A."},
    {File(Mesh("m", Chunk(0x4110, Words({65535}) + Floats({1, 2, 3})))),
     "chunk 0x4110 counts 65535 points of 12 bytes where 12 bytes remain at offset 0x2A."},
    {File(Mesh("m", Chunk(0x4120, Words({1, 0, 1, 2})))),
     "chunk 0x4120 counts 1 faces of 8 bytes where 6 bytes remain at offset 0x2A."},
    {File(Mesh("m", Chunk(0x4140, Words({2}) + Floats({1, 2, 3})))),
     "chunk 0x4140 counts 2 texture coordinates of 8 bytes where 12 bytes remain at offset 0x2A."},
    {File(Mesh("m", Chunk(0x4130, Name("a") + Words({2, 1})))),
     "chunk 0x4130 counts 2 faces of 2 bytes where 2 bytes remain at offset 0x2C."},
    // Within the mesh, but not within the faces.
    {File(Mesh("m",
               Chunk(0x4120, Words({0}) + ChunkOfLength(0x4130, 20)) + Chunk(0x4160, "012345"
                                                                                     "678901"))),
     "chunk 0x4130 has the length 20 where its parent has 6 bytes left at offset 0x2C."},
    {File(Object("l", Chunk(0x4600, Floats({1, 2})))),
     "chunk 0x4600 needs 4 more bytes where 0 remain at offset 0x2C."},
    {File(Object("l", Chunk(0x4600, Floats({1, 2, 3}) + Chunk(0x4610, Floats({1, 2, 3, 4}))))),
     "chunk 0x4610 needs 4 more bytes where 0 remain at offset 0x46."},
    {File(Camera(Chunk(0x4720, Floats({1})))),
     "chunk 0x4720 needs 4 more bytes where 0 remain at offset 0x4E."},
    {File(Material("a", Chunk(0xA050, Chunk(0x0030, Bytes({1}))))),
     "chunk 0x0030 needs 2 more bytes where 1 remain at offset 0x30."},
    {File(Material("a", Chunk(0xA200, Chunk(0xA300, "A.JPG")))),
     "chunk 0xA300 holds a name without an end at offset 0x30."},
    {File(Material("a", Chunk(0xA200, Chunk(0xA354, Bytes({1}))))),
     "chunk 0xA354 needs 4 more bytes where 1 remain at offset 0x30."},
};

TEST_F(ThreeDSTest, FaultsAreToldWithTheirOffset) {
    for (const TFault& fault : Faults)
        EXPECT_EQ(ErrorOfReading(fault.Bytes),
                  "TF3DSConverter.Read3DS: " + std::string(fault.Error));
}

TEST_F(ThreeDSTest, WhatWasReadBeforeAFaultStays) {
    const std::string bad = Mesh("B", SquarePoints() + Chunk(0x4120, Words({9})));
    Converter.SetFileName(Put("bad.3ds", QByteArray::fromStdString(File(Square("A") + bad))));
    EXPECT_EQ(ErrorOfLoading(), "TF3DSConverter.LoadFromFile: Can't read \"" +
                                    Path("bad.3ds").toStdString() +
                                    "\": chunk 0x4120 counts 9 faces of 8 bytes where 0 bytes "
                                    "remain at offset 0xC0.");
    ASSERT_EQ(Scene.GetItemsCount(), 2);
    EXPECT_EQ(Child<TZEPMesh>(0)->Faces()->Count(), 2);
    EXPECT_EQ(Child<TZEPMesh>(1)->Vertexes()->Count(), 4);
    EXPECT_EQ(Scene.UpdateLevel(), 0);
}

TEST_F(ThreeDSTest, FilesCutAnywhereTellWhere) {
    const std::string whole =
        File(Material("Paint", Color24(0xA020, {1, 2, 3}) + Percent(0xA040, 10) +
                                   Chunk(0xA200, Chunk(0xA300, Name("A.JPG")))) +
                 Square() + Camera(Chunk(0x4720, Floats({1, 2}))) +
                 Object("l", Chunk(0x4600, Floats({1, 2, 3}))),
             Chunk(0xB000, Chunk(0xB002, "abc")));
    int objects = 0;
    for (std::size_t size = 2; size < whole.size(); ++size) {
        Scene.Clear();
        Library.Materials()->Clear();
        const std::string cut = whole.substr(0, size);
        EXPECT_THAT(ErrorOfReading(cut), testing::ContainsRegex(" at offset 0x[0-9A-F]+\\.$"));
        EXPECT_GE(Scene.GetItemsCount(), objects) << size;
        objects = Scene.GetItemsCount();
    }
    EXPECT_EQ(objects, 3);
    EXPECT_EQ(ErrorOfReading(whole), "");
}

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
