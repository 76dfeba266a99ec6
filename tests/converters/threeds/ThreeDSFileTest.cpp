#include "tests/converters/threeds/ThreeDSFixture.h"

#include <QImage>

namespace ZEP {
namespace {

using namespace F3DS;
using testing::ElementsAre;
using testing::StartsWith;

TEST_F(ThreeDSTest, SaysWhatItLacks) {
    EXPECT_EQ(ErrorOfLoading(), "TF3DSConverter.LoadFromFile: No file name defined.");
    Converter.SetFileName(Path("none.3ds"));
    EXPECT_EQ(ErrorOfLoading(), "TF3DSConverter.LoadFromFile: Can't read \"" +
                                    Path("none.3ds").toStdString() + "\": no such file.");
    Converter.SetFileName(Put("editor.3ds", QByteArray::fromStdString(Chunk(0x3D3D, Square()))));
    EXPECT_EQ(ErrorOfLoading(), "TF3DSConverter.LoadFromFile: main chunk not found.");
    Converter.SetRoot(nullptr);
    EXPECT_EQ(ErrorOfLoading(), "TF3DSConverter.LoadFromFile: Can't load into Root=nil.");
    EXPECT_EQ(ErrorOfReading(File("")), "TF3DSConverter.Read3DS: Can't load into Root=nil.");
    try {
        Converter.SaveToFile();
        ADD_FAILURE();
    } catch (const Exception& error) {
        EXPECT_STREQ(error.what(), "TF3DSConverter.SaveToFile: Only import is supported.");
    }
}

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
}

TEST_F(ThreeDSTest, RootAndLibraryMayGo) {
    auto root = std::make_unique<TZEPObject>();
    auto library = std::make_unique<TZEPMaterialLibrary>();
    Converter.SetRoot(root.get());
    Converter.SetMaterials(library.get());
    root.reset();
    library.reset();
    EXPECT_EQ(Converter.Root(), nullptr);
    EXPECT_EQ(Converter.Materials(), nullptr);
    EXPECT_EQ(Converter.FindMaterialIndex(QStringLiteral("A")), -1);
}

/// Twelve times more than a step of the progress.
std::string LongFile() {
    std::string squares;
    for (int i = 0; i < 12; ++i)
        squares += Material("Paint") + Square() + Chunk(0x7001, std::string(65536, ' '));
    return File(squares);
}

TEST_F(ThreeDSTest, ProgressTellsAndCancels) {
    std::vector<qint64> told;
    const std::string file = LongFile();
    Converter.SetProgress([&](qint64 done, qint64 total) {
        EXPECT_EQ(total, static_cast<qint64>(file.size()));
        told.push_back(done);
        return told.size() < 5;
    });
    Converter.Read3DS(file);
    EXPECT_TRUE(Converter.Cancelled());
    EXPECT_EQ(told.size(), 5U);
    EXPECT_TRUE(std::ranges::is_sorted(told));
    EXPECT_EQ(Scene.GetItemsCount(), 5);
    EXPECT_EQ(Scene.UpdateLevel(), 0);
    Converter.SetProgress({});
    Converter.Read3DS(File(Square()));
    EXPECT_FALSE(Converter.Cancelled());
}

TEST_F(ThreeDSTest, TheHostMayFreeWhatIsReadInto) {
    for (const bool freesRoot : {true, false}) {
        auto root = std::make_unique<TZEPObject>();
        auto library = std::make_unique<TZEPMaterialLibrary>();
        Converter.SetRoot(root.get());
        Converter.SetMaterials(library.get());
        Converter.SetProgress([&](qint64, qint64) {
            freesRoot ? root.reset() : library.reset();
            return true;
        });
        Converter.Read3DS(LongFile());
        EXPECT_TRUE(Converter.Cancelled());
    }
}

TEST_F(ThreeDSTest, DumpsEveryChunkAndItsValues) {
    QImage(4, 4, QImage::Format_RGB32).save(Path("Wall.png"));
    const std::string material =
        Color24(0xA010, {1, 2, 3}) + Color24(0xA020, {4, 5, 6}) +
        Chunk(0xA030, Chunk(0x0010, Floats({0.5F, 1, 0}))) + Percent(0xA040, 25) +
        Chunk(0xA041, Chunk(0x0031, Floats({0.5F}))) + Percent(0xA050, 10) + Percent(0xA080, 1) +
        Chunk(0xA200, Chunk(0x0030, Words({100})) + Chunk(0xA300, Name("WALL.PNG")) +
                          Chunk(0xA354, Floats({2})) + Chunk(0xA356, Floats({3})) +
                          Chunk(0xA358, Floats({0.25F})) + Chunk(0xA35A, Floats({-0.5F})) +
                          Chunk(0xA35C, Floats({45})));
    const std::string mesh =
        SquarePoints() + Chunk(0x4140, Words({0})) + Chunk(0x4160, std::string(48, '\0')) +
        SquareFaces(Group("Paint", {0, 1}) + Chunk(0x4150, Long(1) + Long(1))) + Chunk(0x4010) +
        Chunk(0x4012) + Chunk(0x4017);
    const std::string light = Floats({1, 2, 3}) + Chunk(0x0012, Bytes({255, 0, 0})) +
                              Chunk(0x4610, Floats({4, 5, 6, 40, 60}));
    const std::string camera =
        Floats({1, 2, 3, 4, 5, 6, 30, 50}) + Chunk(0x4720, Floats({1, 2000}));
    const std::string file = File(
        Chunk(0x3D3E, Long(3)) + Chunk(0x0100, Floats({1})) + Color24(0x1200, {7, 8, 9}) +
            Color24(0x2100, {0, 0, 0}) + Material("Paint", material) +
            Material("Lost", Chunk(0xA200, Chunk(0xA300, Name("none.png")))) + Mesh("M", mesh) +
            Object("L", Chunk(0x4600, light)) + Object("C", Chunk(0x4700, camera)),
        Chunk(0xB000, Chunk(0xB00A, std::string(9, ' '))));
    Converter.SetDoDump(true);
    Load(file);
    const std::string folder = Path("").toStdString() + "/";
    const std::string lines[] = {
        folder + "model.3ds",
        "0x4D4D <MainChunk> ",
        "0x0002 <VersionChunk> ",
        "Ver: 3",
        "0x3D3D <EditChunk> ",
        "0x3D3E <VersionChunk> ",
        "Ver: 3",
        "0x0100 <ScaleChunk> ",
        " 4 bytes skipped",
        "0x1200 <BackgroundColorChunk> ",
        "0x0011 <Color24Chunk> ",
        "color=[7.000000,8.000000,9.000000]",
        "0x2100 <AmbientColorChunk> ",
        "0x0011 <Color24Chunk> ",
        "color=[0.000000,0.000000,0.000000]",
        "0xAFFF <MaterialChunk> ",
        "0xA000 <MaterialNameChunk> ",
        "0xA010 <AmbientChunk> ",
        "0x0011 <Color24Chunk> ",
        "color=[1.000000,2.000000,3.000000]",
        "0xA020 <DiffuseChunk> ",
        "0x0011 <Color24Chunk> ",
        "color=[4.000000,5.000000,6.000000]",
        "0xA030 <SpecularChunk> ",
        "0x0010 <ColorFChunk> ",
        "color=[0.500000,1.000000,0.000000]",
        "0xA040 <ShininessChunk> ",
        "0x0030 <PercentIntegerChunk> ",
        "  value=0.250000",
        "0xA041 <Shininess%Chunk> ",
        "0x0031 <PercentFloatChunk> ",
        "  value=0.500000",
        "0xA050 <TransparencyChunk> ",
        "0x0030 <PercentIntegerChunk> ",
        "  value=0.100000",
        "0xA080 <EmissionChunk> ",
        "0xA200 <TextureChunk> ",
        "0x0030 2 bytes skipped",
        "0xA300 <BitmapChunk> ",
        " File: " + folder + "Wall.png OK!",
        "0xA354 uscale: 2.00",
        "0xA356 vscale: 3.00",
        "0xA358 uoffset: 0.25",
        "0xA35A voffset: -0.50",
        "0xA35C angle: 45.00",
        "0xAFFF <MaterialChunk> ",
        "0xA000 <MaterialNameChunk> ",
        "0xA200 <TextureChunk> ",
        "0xA300 <BitmapChunk> ",
        " File: " + folder + "none.pngError!",
        "0x4000 <ObjectChunk> ",
        "0x4100 <MeshChunk> ",
        "0x4110 <PointArrayChunk> ",
        "0x4140 <TexCoordArrayChunk> ",
        "0x4160 <MatrixChunk> ",
        "0x4120 <FaceArrayChunk> ",
        "0x4130 <MaterialGroupChunk> ",
        "0x4150 <SmoothChunk> ",
        "0x4010 <HiddenChunk> ",
        "0x4012 <NoShadowsChunk> ",
        "0x4017 <NotRcvShadowsChunk> ",
        "0x4000 <ObjectChunk> ",
        "0x4600 <LightChunk> ",
        "  pos=[1.000000,2.000000,3.000000]",
        "0x0012 <Color24Chunk> ",
        "color=[255.000000,0.000000,0.000000]",
        "0x4610 <SpotlightChunk> ",
        "  trg=[4.000000,5.000000,6.000000]",
        "  exponent=20.000000",
        "  cutoff=30.000000",
        "0x4000 <ObjectChunk> ",
        "0x4700 <CameraChunk> ",
        "  pos=[1.000000,2.000000,3.000000]",
        "  trg=[4.000000,5.000000,6.000000]",
        "  roll=30.000000",
        "  lens=50.000000",
        "0x4720 <CameraSeeRangesChunk> ",
        "  near=1.000000, far=2000.000000",
        "0xB000 <KfrmChunk> ",
        "0xB00A 9 bytes skipped",
    };
    std::string expected;
    for (const std::string& line : lines) expected += line + "\r\n";
    EXPECT_EQ(Contents("model.dmp").toStdString(), expected);
}

TEST_F(ThreeDSTest, ADumpHoldsWhatCameBeforeAFault) {
    Converter.SetDoDump(true);
    Converter.SetFileName(
        Put("cut.3ds", QByteArray::fromStdString(ChunkOfLength(0x4D4D, 99, Chunk(0x3D3D)))));
    EXPECT_THAT(ErrorOfLoading(),
                testing::EndsWith("the file ends in chunk 0x4D4D at offset 0xC."));
    EXPECT_EQ(Contents("cut.dmp"), (Path("cut.3ds") + QStringLiteral("\r\n0x4D4D <MainChunk> \r\n"
                                                                     "0x3D3D <EditChunk> \r\n"))
                                       .toUtf8());
    Converter.Dump("nothing is open");
    Converter.SetFileName(Put("a.dmp", QByteArray::fromStdString(File(""))));
    EXPECT_THAT(ErrorOfLoading(), StartsWith("TF3DSConverter.Dump: Can't write \""));
}

} // namespace
} // namespace ZEP
