#include <zep/converters/TextureFolder.h>

#include "tests/converters/threeds/ThreeDSFixture.h"
#include <zep/appearance/materials/Texture.h>

#include <QDir>
#include <QImage>

#include <sys/stat.h>

namespace ZEP {
namespace {

using namespace F3DS;

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
