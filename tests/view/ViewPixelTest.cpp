#include "tests/gl/OffscreenTest.h"
#include "tests/gl/Picture.h"
#include <zep/ZEPClasses.h>
#include <zep/objects/Sphere.h>

namespace ZEP {
namespace {

/// A camera that looks down on a square of 10 by 10.
class ViewPixel : public OffscreenTest {
protected:
    ViewPixel() {
        m_camera->Position()->SetData(4, -30, 20);
        FitCamera(*m_camera, m_content, 1);
    }

    QImage Draw(TZEPCamera* camera) {
        m_scene.Render(camera, Context().Width(), Context().Height(), false);
        return Context().ReadFrame();
    }

    TZEPScene m_scene;
    TZEPCamera* m_camera = Add<TZEPCamera>(&m_scene);
    const TZEPBounds m_content{{-5, -5, 0}, {5, 5, 0}};
};

TEST_F(ViewPixel, ABackdropIsSeenByItsCameraAlone) {
    const QImage before = Draw(m_camera);
    auto* other = Add<TZEPCamera>(&m_scene);
    other->Position()->SetData(4, -30, 20);
    std::optional<TZEPBackdrop> backdrop(m_camera);
    TZEPBackdrop::TColors colors;
    colors.Top = clRed;
    colors.Bottom = clBlue;
    backdrop->SetColors(colors);
    backdrop->SetGuides(false);
    const QImage background = Draw(m_camera);
    EXPECT_GT(background.pixelColor(128, 0).red(), 250);
    EXPECT_GT(background.pixelColor(128, 255).blue(), 250);
    EXPECT_EQ(DifferentPixels(Draw(other), before), 0);

    backdrop->SetGuides(true);
    const QImage mark = Draw(m_camera);
    EXPECT_GT(DifferentPixels(mark, background), 40); // at the corner
    EXPECT_EQ(DifferentPixels(mark.copy(100, 0, 156, 256), background.copy(100, 0, 156, 256)), 0);
    backdrop->SetContent(m_content);
    const QImage all = Draw(m_camera);
    EXPECT_GT(DifferentPixels(all, mark), 2000) << "there is no grid";
    EXPECT_EQ(Context().ReadDepth(128, 128), 1) << "it hides what is drawn";

    TZEPScene elsewhere;
    m_camera->SetParentComponent(&elsewhere);
    elsewhere.Render(m_camera, 256, 256, false);
    EXPECT_EQ(DifferentPixels(Context().ReadFrame(), all), 0) << "it stayed behind";
    m_camera->SetParentComponent(&m_scene);
    backdrop.reset();
    EXPECT_EQ(DifferentPixels(Draw(m_camera), before), 0);
}

// As in maps, which count in metres from the equator. The axes of the origin are out of both views.
TEST_F(ViewPixel, AGridFarFromTheOriginIsTheOneNearIt) {
    TZEPBackdrop backdrop(m_camera);
    const auto at = [&](double x, double y) {
        backdrop.SetContent(TZEPBounds{{x - 5, y - 5, 0}, {x + 5, y + 5, 0}});
        m_camera->Position()->SetData(x + 1, y - 3, 7);
        m_camera->Target()->SetData(x, y, 0);
        return Draw(m_camera);
    };
    EXPECT_LT(ComparePictures(at(4'500'000, 5'400'000), at(30, 40)).Mean, 0.2);
}

TEST_F(ViewPixel, ABackdropGoesOnFromPartToPart) {
    TZEPBackdrop backdrop(m_camera);
    backdrop.SetContent(m_content);
    const QImage whole = Draw(m_camera);
    QImage joined(512, 512, QImage::Format_RGB32);
    for (const QPoint corner : {QPoint(0, 0), {256, 0}, {0, 256}, {256, 256}}) {
        m_camera->SetDrawnPart(QRect(corner, QSize(256, 256)));
        m_scene.Render(m_camera, 512, 512, false);
        const QImage part = Context().ReadFrame();
        for (int y = 0; y < 256; ++y)
            for (int x = 0; x < 256; ++x)
                joined.setPixel(corner.x() + x, 511 - corner.y() - 255 + y, part.pixel(x, y));
    }
    // The mark at the corner has one size in pixels, and lines are as wide.
    const QImage half = joined.scaled(256, 256, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    EXPECT_LT(ComparePictures(half.copy(0, 0, 256, 150), whole.copy(0, 0, 256, 150)).Mean, 2);
}

TEST_F(ViewPixel, AHeadlightGoesWithTheCamera) {
    glEnable(GL_LIGHTING);
    glEnable(GL_DEPTH_TEST);
    m_scene.SetSceneAmbientColor(clBlack);
    for (int i = 0; i < 9; ++i) Add<TZEPLight>(&m_scene)->SetColor(clBlack);
    auto* ball = Add<TZEPSphere>(&m_scene);
    ball->SetSlices(60);
    ball->SetStacks(60);
    ball->SetSmooth(true);
    auto* light = Add<TZEPHeadlight>(&m_scene);
    EXPECT_EQ(light->LightNum(), 0) << "OpenGL has eight lights";
    FitCamera(*m_camera, *ball, 1, {.Centred = true});
    const QImage front = Draw(m_camera);
    EXPECT_GT(qGray(front.pixel(128, 128)), 100);
    EXPECT_LT(qGray(front.pixel(173, 173)), 60) << "it shows no shape";
    EXPECT_GT(qGray(front.pixel(173, 173)), 10) << "it leaves parts dark";
    for (const double turn : {90.0, 90.0, 40.0}) {
        m_camera->Orbit(turn, turn == 40 ? 30 : 0);
        EXPECT_LT(ComparePictures(Draw(m_camera), front).Mean, 1);
    }
}

/// Writes down in which passes it is asked to draw.
class TProbe : public TZEPObject {
public:
    using TZEPObject::TZEPObject;
    void DrawPre() override { Passes << QStringLiteral("pre"); }
    void DrawReflections() override { Passes << QStringLiteral("reflections"); }
    QStringList Passes;
};

TEST_F(ViewPixel, TheFirstPassesComeAfterWhatAHostDrawsAndOnlyWhereWanted) {
    auto* probe = Add<TProbe>(&m_scene);
    const auto passes = [&] {
        probe->Passes.clear();
        Draw(m_camera);
        return probe->Passes.join(u' ');
    };
    m_scene.SetReflections(true);
    EXPECT_EQ(passes(), QString());
    m_scene.SetFirstPasses(true);
    QObject::connect(&m_scene, &TZEPScene::AfterCamera,
                     [&] { probe->Passes << QStringLiteral("host"); });
    EXPECT_EQ(passes(), QStringLiteral("host pre reflections"));
    m_scene.SetReflections(false);
    EXPECT_EQ(passes(), QStringLiteral("host pre"));
}

using CameraMatrix = OffscreenTest;

void ExpectSame(GLenum name, const TGLMatrixd4& own) {
    TGLMatrixd4 loaded;
    glGetDoublev(name, loaded[0].data());
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = 0; j < 4; ++j) EXPECT_NEAR(own[i][j], loaded[i][j], 2e-5) << i << j;
}

TEST_F(CameraMatrix, IsWhatApplyLoads) {
    TZEPObject group;
    group.XForm()->Translate()->SetData(1, 2, 3);
    group.XForm()->Rotate()->SetData(10, 20, 30);
    for (const bool orthographic : {false, true}) {
        TZEPCamera camera;
        camera.SetParentComponent(&group);
        camera.SetOrthographic(orthographic);
        camera.Position()->SetData(3, -4, 5);
        camera.Target()->SetData(0, 1, 0);
        camera.Roll(25);
        camera.Orbit(5, 6);
        camera.FOV(3);
        camera.SetViewOffset({0.5, 0.25, -1});
        camera.Apply(300, 100, -1);
        ExpectSame(GL_PROJECTION_MATRIX, camera.GetProjectionMatrix(300, 100));
        ExpectSame(GL_MODELVIEW_MATRIX, camera.GetViewMatrix());
        camera.SetParentComponent(nullptr);
    }
}

} // namespace
} // namespace ZEP
