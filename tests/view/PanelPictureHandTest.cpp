#include "tests/ErrorOf.h"
#include "tests/gl/Picture.h"
#include "tests/view/PanelFixture.h"
#include <zep/appearance/materials/Material.h>
#include <zep/framework/Exception.h>
#include <zep/framework/Message.h>
#include <zep/objects/Line.h>
#include <zep/scene/XForm.h>

#include <QFile>
#include <QGuiApplication>
#include <QPrinter>
#include <QProcess>
#include <QTemporaryDir>

#include <random>

namespace ZEP {
namespace {

/// A panel whose scene is a yellow cross of thick lines.
class PanelPicture : public Panel {
protected:
    void SetUp() override {
        Panel::SetUp();
        if (IsSkipped()) return;
        Scene->SetSceneAmbientColor(clWhite);
        Camera->Position()->SetData(1, -9, 5);
        AddLine({-4, 0, -3}, {4, 0, 3});
        AddLine({-4, 0, 3}, {4, 0, -3});
        Show();
    }
    TZEPLine* AddLine(const TGLArrayd3& from, const TGLArrayd3& to) {
        auto* line = Add<TZEPLine>(Scene.get());
        line->P1()->SetData(from);
        line->P2()->SetData(to);
        line->SetColor(clYellow);
        line->SetWidth(5);
        line->SetSmooth(false);
        return line;
    }
    /// Has pictures put together from tiles of that length.
    void SetTileLength(int length) {
        const QMetaObject& type = TZEPContext::staticMetaObject;
        type.property(type.indexOfProperty("MaxViewportSize"))
            .writeOnGadget(View->Context(), length + 32);
    }
};

TEST_F(PanelPicture, IsTheFrameWhereItHasThePanelsSize) {
    const QImage frame = View->GrabFrame();
    const QImage picture = View->RenderToCanvas(frame.size());
    EXPECT_EQ(picture.format(), QImage::Format_RGB32);
    EXPECT_EQ(picture, frame);
    EXPECT_GT(DifferentPixels(frame, QImage(frame.size(), QImage::Format_RGB32)), 100);
    EXPECT_EQ(View->GrabFrame(), frame) << "the panel is as it was";
    Settle();
    EXPECT_EQ(Shown(0, 0), Red);
}

TEST_F(PanelPicture, TilesFitTogether) {
    const QSize size(333, 211);
    const QImage whole = View->RenderToCanvas(size);
    ASSERT_EQ(whole.size(), size);
    for (const int length : {16, 100, 211, 332}) {
        SetTileLength(length);
        const QImage tiled = View->RenderToCanvas(size);
        // At the borders of lines rounding may fall the other way.
        EXPECT_LT(DifferentPixels(whole, tiled), 40) << length;
        EXPECT_EQ(tiled.pixel(0, 0), 0xFFFF0000U);
        EXPECT_EQ(tiled.pixel(332, 210), 0xFFFF0000U);
    }
}

TEST_F(PanelPicture, GoesOnWhereAnotherPanelHasDrawnInBetween) {
    const QSize size(333, 211);
    const QImage alone = View->RenderToCanvas(size);
    TZEPPanel other;
    QObject::connect(Scene.get(), &TZEPScene::AfterCamera, &other,
                     [&other] { EXPECT_FALSE(other.GrabFrame().isNull()); });
    EXPECT_EQ(View->RenderToCanvas(size), alone);
}

TEST_F(PanelPicture, MayBeLargerThanTheDriverDrawsAtOnce) {
    const int width = View->Context()->MaxViewportSize() + 1000;
    const QImage picture = View->RenderToCanvas({width, 60});
    ASSERT_EQ(picture.size(), QSize(width, 60));
    EXPECT_EQ(picture.pixel(width - 1, 59), 0xFFFF0000U);
    bool left = false, right = false;
    for (int x = 0; x < width; ++x)
        (x < width / 2 ? left : right) |= picture.pixel(x, 20) == 0xFFFFFF00U;
    EXPECT_TRUE(left && right) << "both arms of the cross";
}

TEST_F(PanelPicture, LeavesOutWhatTheSceneDoesNotCover) {
    TZEPLine* line = AddLine({0, 0, -5}, {0, 0, 5});
    line->SetWidth(40);
    line->Material()->SetTransparency(0.5);
    line->SetMaterialIndex(-1);
    const QImage picture = View->RenderToCanvas({160, 120}, true);
    EXPECT_EQ(picture.format(), QImage::Format_ARGB32_Premultiplied);
    int none = 0, half = 0, full = 0;
    for (int y = 0; y < 120; ++y)
        for (int x = 0; x < 160; ++x) {
            const QColor color = picture.pixelColor(x, y);
            none += color.alpha() == 0;
            half += std::abs(color.alpha() - 128) < 3;
            full += color == QColor(Qt::yellow);
        }
    EXPECT_GT(none, 5000);
    EXPECT_GT(half, 500);
    EXPECT_GT(full, 100);
    EXPECT_EQ(Scene->BackgroundColor(), clRed);
    EXPECT_FALSE(Scene->ManualUpdate());
}

TEST_F(PanelPicture, OfNothingIsEmptyBlackOrClear) {
    EXPECT_TRUE(View->RenderToCanvas({0, 50}).isNull());
    EXPECT_TRUE(View->RenderToCanvas({-5, 50}).isNull());
    View->SetCamera(nullptr);
    EXPECT_EQ(View->RenderToCanvas({5, 5}).pixel(2, 2), 0xFF000000U);
    EXPECT_EQ(View->RenderToCanvas({5, 5}, true).pixel(2, 2), 0U);
}

TEST_F(PanelPicture, SaysWhenItCannotBeDrawn) {
    View->Context()->DestroyContext();
    EXPECT_EQ(ErrorOf([&] {
                  static_cast<void>(View->RenderToCanvas({50, 50}));
              }),
              "RenderToCanvas: Can't set pixel format");
}

/// This test alone, on a platform that has no OpenGL.
void RunWithoutOpenGL() {
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--gtest_filter=PanelPictureWithoutContext.*")});
    EXPECT_TRUE(program.waitForFinished()) << "it waits";
    EXPECT_EQ(program.exitCode(), 0) << program.readAll().toStdString();
}

TEST(PanelPictureWithoutContext, IsRefusedWithoutABoxThatNobodyCloses) {
    if (QGuiApplication::platformName() != QLatin1String("offscreen")) return RunWithoutOpenGL();
    int boxes = 0;
    const TMessageHandler former =
        SetMessageHandler([&boxes](const QString&, const QString&, TMessageIcon) { ++boxes; });
    TZEPPanel panel;
    EXPECT_THROW(static_cast<void>(panel.RenderToCanvas({50, 50})), Exception);
    EXPECT_TRUE(TZEPPanel().GrabFrame().isNull());
    EXPECT_EQ(boxes, 0);
    TZEPPanel shown;
    shown.show();
    EXPECT_EQ(boxes, 1) << "a user sees the window";
    SetMessageHandler(former);
}

TEST_F(PanelPicture, IsNotDrawnWithinAFrame) {
    std::string refused;
    QObject::connect(View, &TZEPPanel::BeforFlush, [&] {
        refused += ErrorOf([&] { static_cast<void>(View->RenderToCanvas({50, 50})); });
    });
    View->Paint();
    EXPECT_EQ(refused, "RenderToCanvas: the panel draws a frame");
}

TEST_F(PanelPicture, IsPrintedOnOnePage) {
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("view.pdf"));
    {
        QPrinter printer;
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(name);
        View->Print(printer);
    }
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray pdf = file.readAll();
    EXPECT_TRUE(pdf.startsWith("%PDF"));
    EXPECT_EQ(pdf.count("/Type /Page\n"), 1);
    EXPECT_TRUE(pdf.contains("/Subtype /Image"));
    QByteArray title; // two bytes a letter
    for (const char c : QByteArray("ZEP rendered image")) title.append('\0').append(c);
    EXPECT_TRUE(pdf.contains(title));
}

TEST_F(PanelPicture, SaysWhenItCannotBePrinted) {
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QStringLiteral("/nowhere/at/all.pdf"));
    EXPECT_THROW(View->Print(printer), Exception);
}

TEST_F(PanelPicture, WindowAndWorldPlacesAreInversesOfEachOther) {
    std::mt19937 random(3);
    std::uniform_real_distribution x(-20.0, 200.0), depth(0.01, 0.99);
    for (const bool orthographic : {false, true}) {
        Camera->SetOrthographic(orthographic);
        Camera->Orbit(20, 10);
        for (int i = 0; i < 200; ++i) {
            const TGLArrayd3 place{x(random), x(random), depth(random)};
            const auto world = View->GetWorldCoords(place[0], place[1], place[2]);
            ASSERT_TRUE(world);
            const auto back = View->GetScreenCoords(*world);
            ASSERT_TRUE(back);
            for (std::size_t k = 0; k < 3; ++k) EXPECT_NEAR((*back)[k], place[k], 1e-4);
        }
    }
    const auto eye = View->GetScreenCoords(Camera->GetPosition());
    ASSERT_TRUE(eye) << "parallel: it lies over the target";
    EXPECT_NEAR((*eye)[0], View->Width() / 2., 1e-6);
    Camera->SetOrthographic(false);
    EXPECT_EQ(View->GetScreenCoords(Camera->GetPosition()), std::nullopt);
    View->SetCamera(nullptr);
    EXPECT_EQ(View->GetWorldCoords(1, 1, 0.5), std::nullopt);
}

TEST_F(PanelPicture, WindowPlacesAreWhereThingsAreSeen) {
    for (const TGLArrayd3& end : {TGLArrayd3{-4, 0, -3}, {4, 0, 3}, {4, 0, -3}}) {
        const auto place = View->GetScreenCoords(end);
        ASSERT_TRUE(place);
        const QImage frame = View->GrabFrame();
        const int x = static_cast<int>((*place)[0]), y = static_cast<int>((*place)[1]);
        ASSERT_TRUE(frame.rect().contains(x, y));
        const int inward = end[0] < 0 ? 2 : -2;
        EXPECT_EQ(frame.pixel(x + inward, y), 0xFFFFFF00U) << end[0] << ' ' << end[2];
        EXPECT_EQ(frame.pixel(x - 4 * inward, y), 0xFFFF0000U) << end[0] << ' ' << end[2];
    }
}

} // namespace
} // namespace ZEP
