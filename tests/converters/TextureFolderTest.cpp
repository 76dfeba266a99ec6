#include <zep/converters/TextureFolder.h>

#include "tests/Cases.h"
#include "tests/converters/threeds/ThreeDSFixture.h"
#include <zep/appearance/materials/Texture.h>

#include <QDir>
#include <QImage>

#include <sys/stat.h>

namespace ZEP {
namespace {

using namespace F3DS;
using testing::ElementsAre;

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
    TTextureFolder folder(Path("models/a.3ds"));
    ExpectCases("text/texturefiles.txt", [&](const TCase& c) {
        return EachLine(c, [&](const std::string& line) -> std::string {
            const QString found = folder.Find(QString::fromStdString(line).chopped(1));
            if (found.isEmpty()) return "none";
            EXPECT_TRUE(found.startsWith(Path("models/"))) << line;
            return found.mid(Path("models/").size()).toStdString();
        });
    });
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

TEST_F(ThreeDSTest, LinksToTexturesStayInTheFolder) {
    QDir(Path("")).mkdir(QStringLiteral("m"));
    ASSERT_EQ(mkfifo(QFile::encodeName(Path("m/pipe")).constData(), 0600), 0);
    QImage(2, 2, QImage::Format_RGB32).save(Path("m/real.png"));
    QImage(2, 2, QImage::Format_RGB32).save(Path("outside.png"));
    const std::pair<const char*, const char*> links[] = {{"m/pipe.png", "pipe"},
                                                         {"m/zero.png", "/dev/zero"},
                                                         {"m/out.png", "../outside.png"},
                                                         {"m/inside.png", "real.png"},
                                                         {"m/around.png", "../m/real.png"}};
    for (const auto& [link, target] : links)
        ASSERT_TRUE(QFile::link(QLatin1String(target), Path(link)));
    Load(File(Textured("pipe.png") + Textured("PIPE.PNG") + Textured("zero.png") +
              Textured("out.png") + Textured("OUT.PNG") + Textured("inside.png") +
              Textured("AROUND.PNG")),
         "m/model.3ds");
    for (int i = 0; i < 7; ++i) EXPECT_EQ(MaterialAt(i)->HasTexture(), i >= 5) << i;
    EXPECT_EQ(Passed().front(), "texture pipe.png not found 1");
}

/// Six pictures that take 64 megabytes each, of which a small model has room for three.
TEST_F(ThreeDSTest, PicturesTakeWhatTheModelAllows) {
    std::string materials;
    for (int i = 0; i < 6; ++i) {
        const QString name = QStringLiteral("%1.png").arg(i);
        QImage picture(4000, 4000, QImage::Format_Mono);
        picture.fill(0);
        picture.save(Path(qPrintable(name)));
        materials += Textured(name.toStdString()) + Textured(name.toStdString());
    }
    Load(File(materials));
    int textures = 0;
    for (int i = 0; i < 12; ++i) textures += MaterialAt(i)->HasTexture() ? 1 : 0;
    EXPECT_EQ(textures, 6) << "each of three pictures twice";
    EXPECT_EQ(&MaterialAt(0)->Texture()->Pixels(), &MaterialAt(1)->Texture()->Pixels());
    EXPECT_EQ(Passed().back(), "texture 5.png is one too many 2");
}

} // namespace
} // namespace ZEP
