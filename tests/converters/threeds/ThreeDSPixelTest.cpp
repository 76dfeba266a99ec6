#include "tests/converters/threeds/ThreeDSBytes.h"
#include "tests/gl/FourColours.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/converters/threeds/Converter.h>
#include <zep/scene/Scene.h>

#include <QFile>
#include <QTemporaryDir>

namespace ZEP {
namespace {

using namespace F3DS;

/// A cube about the origin, with the picture upright on its front. It shines by itself, grey.
std::string Cube() {
    const std::string points =
        Chunk(0x4110, Words({8}) + Floats({-1, -1, -1, 1, -1, -1, 1, 1, -1, -1, 1, -1,
                                           -1, -1, 1,  1, -1, 1,  1, 1, 1,  -1, 1, 1}));
    const std::string texCoords =
        Chunk(0x4140, Words({8}) + Floats({0, 0, 1, 0, 1, 1, 0, 1, 0, 0, 1, 0, 1, 1, 0, 1}));
    const std::string faces =
        Words({12, 4, 5, 6, 0, 4, 6, 7, 0, 1, 0, 3, 0, 1, 3, 2, 0, 0, 4, 7, 0, 0, 7, 3, 0,
               5,  1, 2, 0, 5, 2, 6, 0, 7, 6, 2, 0, 7, 2, 3, 0, 0, 1, 5, 0, 0, 5, 4, 0});
    const std::string group = Group("Front", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
    const std::string texture = Chunk(0xA200, Chunk(0xA300, Name("FOUR.PNG")));
    return File(Material("Front", Color24(0xA010, {0, 0, 0}) + Chunk(0xA080) + texture) +
                Mesh("Cube", points + texCoords + Chunk(0x4120, faces + group)));
}

class ThreeDSPixel : public OffscreenTest {
protected:
    ThreeDSPixel() : OffscreenTest(64, 64) {}
};

TEST_F(ThreeDSPixel, APictureIsBlendedIntoTheColourOfACube) {
    const QTemporaryDir folder;
    ASSERT_TRUE(FourColours().save(folder.filePath(QStringLiteral("four.png"))));
    QFile file(folder.filePath(QStringLiteral("cube.3ds")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(Cube()));
    file.close();

    TZEPScene scene;
    TZEPMaterialLibrary library;
    scene.SetMaterialLibrary(&library);
    TF3DSConverter converter;
    converter.SetRoot(&scene);
    converter.SetMaterials(&library);
    converter.SetFileName(file.fileName());
    converter.LoadFromFile();
    glEnable(GL_LIGHTING);
    glEnable(GL_CULL_FACE);
    glOrtho(-1, 1, -1, 1, -2, 2);
    glClear(GL_COLOR_BUFFER_BIT);
    scene.Draw(scene, dsAllObjects, dkFull);

    // Where the picture has none of a colour the grey shows, and where it has all of it, white.
    const auto expectAt = [&](int x, int y, const QColor& expected) {
        const QColor color = Context().ReadPixel(x, y);
        EXPECT_NEAR(color.red(), expected.red(), 2) << x << ' ' << y;
        EXPECT_NEAR(color.green(), expected.green(), 2) << x << ' ' << y;
        EXPECT_NEAR(color.blue(), expected.blue(), 2) << x << ' ' << y;
    };
    expectAt(16, 16, QColor(255, 128, 128));
    expectAt(48, 16, QColor(128, 255, 128));
    expectAt(16, 48, QColor(128, 128, 255));
    expectAt(48, 48, Qt::white);
}

} // namespace
} // namespace ZEP
