#include "tests/gl/OffscreenTest.h"
#include <zep/appearance/materials/Material.h>
#include <zep/scene/ColoredObject.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>
#include <zep/view/Camera.h>

#include <cmath>

namespace ZEP {
namespace {

/// A unit square at z = 0 that faces +z.
class Square : public TZEPColoredObject {
public:
    using TZEPColoredObject::TZEPColoredObject;
    void DrawSpecific(GLenum, bool) override {
        glNormal3d(0, 0, 1);
        glRectd(-0.5, -0.5, 0.5, 0.5);
    }
};

/// Seen from above by parallel light: 64 by 64 pixels show -1..1 in x and y, so that a square's
/// edges lie at pixels 16 and 48. Without lights a surface shows its ambient colour as it stands.
class ScenePixel : public OffscreenTest {
protected:
    ScenePixel() : OffscreenTest(64, 64) {
        m_scene.SetSceneAmbientColor(clWhite);
        m_camera.SetParentComponent(&m_scene);
        m_camera.Position()->SetData(0, 0, 10);
        m_camera.Up()->SetData(0, 1, 0);
        m_camera.SetOrthographic(true);
        m_camera.SetFOVY(2 * 180 / 3.14159265358979 * std::atan(0.1));
    }

    Square* Add(double z, TColor color, float transparency = 0) {
        auto* square = new Square(&m_scene);
        square->SetParentComponent(&m_scene);
        square->XForm()->Translate()->SetZ(z);
        square->SetColor(color);
        if (transparency > 0) square->Material()->SetTransparency(transparency);
        return square;
    }

    QColor Center() {
        Render();
        return Pixel(32, 32);
    }

    /// Without alpha: opaque materials leave none.
    QColor Pixel(int x, int y) { return Context().ReadFrame().pixelColor(x, y); }

    void Render() {
        glEnable(GL_LIGHTING);
        glEnable(GL_DEPTH_TEST);
        m_scene.Render(&m_camera, 64, 64, false);
    }

    static bool Near(const QColor& a, const QColor& b) {
        return std::abs(a.red() - b.red()) <= 2 && std::abs(a.green() - b.green()) <= 2 &&
               std::abs(a.blue() - b.blue()) <= 2;
    }

    TZEPScene m_scene;
    TZEPCamera m_camera;
};

TEST_F(ScenePixel, TheNearerOpaqueSurfaceHidesWhateverTheOrder) {
    m_scene.SetBackgroundColor(0x302010);
    EXPECT_EQ(Center(), QColor(0x10, 0x20, 0x30));
    Square* far = Add(0, clRed);
    Add(1, clBlue);
    EXPECT_EQ(Center(), QColor(Qt::blue));
    far->SetItemIndex(99);
    EXPECT_EQ(Center(), QColor(Qt::blue));
    EXPECT_EQ(Pixel(8, 8), QColor(0x10, 0x20, 0x30)) << "beside the squares";
    EXPECT_EQ(Pixel(18, 18), QColor(Qt::blue)) << "inside their corner";
}

TEST_F(ScenePixel, TransparentSurfacesAreBlendedAfterAllOpaqueOnes) {
    // First in the tree, but drawn last: a quarter of it is see-through.
    Add(1, clWhite, 0.25F);
    Add(0, clRed);
    EXPECT_TRUE(Near(Center(), QColor(255, 191, 191))) << Center().name().toStdString();
}

TEST_F(ScenePixel, TransparentSurfacesDoNotHideEachOther) {
    Add(2, clBlue, 0.5F);
    Add(1, clRed, 0.5F); // farther, drawn later: still blended over
    EXPECT_TRUE(Near(Center(), QColor(128, 0, 64))) << Center().name().toStdString();
}

TEST_F(ScenePixel, TransparentSurfacesAreHiddenByOpaqueOnes) {
    Add(0, clGreen, 0.5F);
    Add(1, clRed);
    EXPECT_EQ(Center(), QColor(Qt::red));
}

TEST_F(ScenePixel, TheSelectionBoxIsWhiteWhereTheBoxIs) {
    Square* square = Add(0, clRed);
    const auto whites = [this] {
        Render();
        int count = 0;
        const QImage frame = Context().ReadFrame();
        for (int y = 0; y < 64; ++y)
            for (int x = 0; x < 64; ++x)
                if (frame.pixelColor(x, y) == Qt::white) {
                    ++count;
                    const int edge = std::max(std::abs(2 * x - 63), std::abs(2 * y - 63));
                    EXPECT_NEAR(edge, 32, 4) << x << ' ' << y;
                }
        return count;
    };
    EXPECT_EQ(whites(), 0);
    square->SetSelected(true);
    // 128 pixels of outline, every second one drawn, and four corner points of 3 by 3.
    EXPECT_NEAR(whites(), 64 + 4 * 7, 24);
    square->SetSelected(false);
    EXPECT_EQ(whites(), 0);
}

} // namespace
} // namespace ZEP
