#include <zep/converters/TextureFolder.h>

#include "tests/converters/threeds/ThreeDSFixture.h"
#include <zep/appearance/materials/Texture.h>

#include <QDir>
#include <QImage>

namespace ZEP {
namespace {

using namespace F3DS;
using testing::ElementsAre;

struct TStored {
    const char* Name;
    const char* File; ///< null: none
};

class TextureFolder : public FolderTest {};

TEST_F(TextureFolder, FindsFilesOfItsOwnFolderAlone) {
    QDir(Path("")).mkdir(QStringLiteral("models"));
    QDir(Path("models")).mkdir(QStringLiteral("folder.jpg"));
    Put("outside.jpg", "");
    for (const char* name :
         {"models/wall.jpg", "models/Beretta_Grip.jpg", "models/Tail Fin Left.tif",
          "models/truncated one.jpeg", "models/Truncated two.jpeg", "models/longsuffix.html",
          "models/Both.png", "models/BOTH.PNG", "models/exactly8.bmp", "models/exactly8more.bmp"})
        Put(name, "");
    const TStored rows[] = {
        {"wall.jpg", "wall.jpg"},
        {"WALL.JPG", "wall.jpg"},
        {"C:\\maps\\WALL.JPG", "wall.jpg"},
        {"/usr/maps/wall.jpg", "wall.jpg"},
        {"../models/wall.jpg", "wall.jpg"},
        {"wall.png", nullptr},
        {"wal.jpg", nullptr},
        {"../outside.jpg", nullptr},
        {"..\\outside.jpg", nullptr},
        {"../../../../etc/passwd", nullptr},
        {"folder.jpg", nullptr},
        {"..", nullptr},
        {".", nullptr},
        {"", nullptr},
        {"maps/", nullptr},
        {"Both.png", "Both.png"},
        {"BOTH.PNG", "BOTH.PNG"},
        // eight letters and three
        {"BERETTA_.JPG", "Beretta_Grip.jpg"},
        {"TAIL FIN.TIF", "Tail Fin Left.tif"},
        {"TAIL FIN.JPG", nullptr},
        {"BERETTA.JPG", nullptr},
        {"EXACTLY8.BMP", "exactly8.bmp"},
        {"LONGSUFF.HTM", "longsuffix.html"},
        {"TRUNCA~1.JPE", "Truncated two.jpeg"},
        {"TRUNCA~2.JPE", "truncated one.jpeg"},
        {"TRUNCA~3.JPE", nullptr},
        {"TAILFI~1.TIF", "Tail Fin Left.tif"},
    };
    TTextureFolder folder(Path("models/a.3ds"));
    for (const TStored& row : rows)
        EXPECT_EQ(folder.Find(QLatin1String(row.Name)),
                  row.File ? Path("models/") + QLatin1String(row.File) : QString())
            << row.Name;
}

TEST_F(TextureFolder, IsNoneWhereTheModelIsInMemory) {
    TTextureFolder folder{QString()};
    EXPECT_EQ(folder.Find(QStringLiteral("CMakeCache.txt")), QString());
}

TEST_F(ThreeDSTest, TexturesAreFoundLoadedAndPlaced) {
    QImage(8, 4, QImage::Format_RGB32).save(Path("Wall.png"));
    Load(File(Textured("C:\\MAPS\\WALL.PNG",
                       Chunk(0xA354, Floats({2})) + Chunk(0xA356, Floats({3})) +
                           Chunk(0xA358, Floats({0.25F})) + Chunk(0xA35A, Floats({0.5F})) +
                           Chunk(0xA35C, Floats({45}))) +
              Textured("wall.png")));
    TZEPTexture& texture = *MaterialAt(0)->Texture();
    EXPECT_EQ(texture.Image()->Image().size(), QSize(8, 4));
    EXPECT_EQ(texture.Environment(), teBlend);
    EXPECT_EQ(texture.TilingS(), 2);
    EXPECT_EQ(texture.TilingT(), 3);
    EXPECT_EQ(texture.OffsetS(), 0.25F);
    EXPECT_EQ(texture.OffsetT(), 0.5F);
    EXPECT_EQ(texture.Angle(), -45);
    EXPECT_FALSE(MaterialAt(1)->Texture()->Empty());
    EXPECT_THAT(Passed(), testing::IsEmpty());
}

TEST_F(ThreeDSTest, TexturesThatCannotBeLoadedAreCounted) {
    Put("text.jpg", "no picture");
    Put("empty.png", "");
    QImage(64, 64, QImage::Format_RGB32).save(Path("whole.png"));
    Put("cut.png", Contents("whole.png").left(40));
    Load(File(Textured("text.jpg") + Textured("TEXT.JPG") + Textured("none.jpg") +
              Textured("none.jpg") + Textured("empty.png") + Textured("cut.png")));
    for (int i = 0; i < 6; ++i) {
        EXPECT_TRUE(MaterialAt(i)->Texture()->Empty());
        EXPECT_EQ(MaterialAt(i)->Texture()->Environment(), teModulate);
    }
    EXPECT_THAT(Passed(),
                ElementsAre("texture text.jpg is no picture 1", "texture TEXT.JPG is no picture 1",
                            "texture none.jpg not found 2", "texture empty.png is no picture 1",
                            "texture cut.png is no picture 1"));
}

TEST_F(ThreeDSTest, TextureKindsOfAReportAreBounded) {
    std::string materials;
    for (int i = 0; i < 150; ++i) materials += Textured(std::to_string(i));
    Load(File(materials + Textured("7")));
    EXPECT_EQ(Passed().size(), 101U);
    EXPECT_EQ(Passed()[7], "texture 7 not found 2");
    EXPECT_EQ(Passed().back(), "further textures 50");
}

} // namespace
} // namespace ZEP
