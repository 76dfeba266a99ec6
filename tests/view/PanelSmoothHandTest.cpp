#include "tests/ErrorOf.h"
#include "tests/gl/Picture.h"
#include "tests/view/PanelFixture.h"
#include <zep/framework/Exception.h>
#include <zep/objects/Line.h>

#include <gmock/gmock.h>

#include <QPainter>
#include <QScreen>

#include <cmath>
#include <set>

namespace ZEP {
namespace {

/// A panel with a yellow line across a red scene, in a parallel view along y.
class PanelSmooth : public Panel {
protected:
    void SetUp() override {
        Panel::SetUp();
        if (IsSkipped()) return;
        Scene->SetSceneAmbientColor(clWhite);
        Camera->SetOrthographic(true);
        Camera->Position()->SetData(0, -100, 0);
        Camera->SetFarClipPlane(1000);
        Line = Add<TZEPLine>(Scene.get());
        Line->P1()->SetData(-30, 0, -17);
        Line->P2()->SetData(30, 0, 17);
        Line->SetColor(clYellow);
        Line->SetSmooth(false);
        Show();
    }

    [[nodiscard]] QImage OnScreen() const {
        return View->screen()->grabWindow(View->winId()).toImage();
    }
    /// Colours between those of the line and of the background.
    static int Shades(const QImage& picture) {
        std::set<QRgb> colors;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) colors.insert(picture.pixel(x, y));
        return static_cast<int>(colors.size()) - 2;
    }
    /// How many pixels the line covers, parts of them added up.
    static double Covered(const QImage& picture) {
        double sum = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) sum += qGreen(picture.pixel(x, y)) / 255.0;
        return sum;
    }

    TZEPLine* Line = nullptr;
};

TEST_F(PanelSmooth, AViewThatRestsIsSmoothUntilItChanges) {
    EXPECT_EQ(Shades(OnScreen()), 0);
    View->SetRestSamples(8);
    int drawn = 0;
    QObject::connect(View, &TZEPPanel::BeforDraw, [&drawn] { ++drawn; });
    QTest::qWait(400);
    EXPECT_GT(Shades(OnScreen()), 3);
    EXPECT_EQ(drawn, 1 + 8);
    const int counted = View->FrameCount(), told = Frames;
    QTest::qWait(200);
    EXPECT_EQ(drawn, 1 + 8) << "it goes on";

    for (int i = 0; i < 4; ++i) {
        Line->SetWidth(2 + static_cast<float>(i));
        QTest::qWait(20);
    }
    EXPECT_EQ(Shades(OnScreen()), 0) << "it moves";
    EXPECT_EQ(drawn, 1 + 8 + 4) << "the first frame waits for none of a mean";
    EXPECT_EQ(View->FrameCount() - counted, 4);
    EXPECT_EQ(Frames - told, 4);

    QTest::mousePress(View, Qt::LeftButton, {}, {5, 5});
    QTest::qWait(300);
    EXPECT_EQ(Shades(OnScreen()), 0) << "a button is held";
    QTest::mouseRelease(View, Qt::LeftButton, {}, {5, 5});
    QTest::qWait(400);
    EXPECT_GT(Shades(OnScreen()), 3);
}

TEST_F(PanelSmooth, FramesThatStayRoughOrFailAreNotSmoothed) {
    View->SetRestSamples(8);
    bool throws = false;
    int drawn = 0;
    QObject::connect(View, &TZEPPanel::BeforDraw, [&] {
        if (++drawn > 1 && throws) throw std::runtime_error("no");
    });
    const auto rough = QObject::connect(View, &TZEPPanel::AfterDraw, View, &TZEPPanel::StayRough);
    View->Invalidate();
    QTest::qWait(300);
    EXPECT_EQ(drawn, 1);
    QObject::disconnect(rough);
    drawn = 0;
    throws = true;
    View->Invalidate();
    QTest::qWait(300);
    EXPECT_EQ(drawn, 2) << "the second one fails";
    QObject::connect(View, &TZEPPanel::BeforDraw, [this] { delete View; });
    throws = false;
    View->Invalidate();
    QTest::qWait(300);
}

TEST_F(PanelSmooth, PicturesAreSmoothAndTheirPartsFitTogether) {
    const QSize size(320, 240);
    const QImage rough = View->RenderPicture(size, {});
    EXPECT_EQ(rough, View->RenderToCanvas(size));
    EXPECT_EQ(reinterpret_cast<const QRgb*>(rough.constBits())[0], 0xFFFF0000U) << "opaque";
    const QImage smooth = View->RenderPicture(size, {.Samples = 15});
    EXPECT_EQ(Shades(rough), 0);
    EXPECT_GT(Shades(smooth), 8);
    EXPECT_NEAR(Covered(smooth), Covered(rough), Covered(rough) * 0.02);
    const QImage thick = View->RenderPicture(size, {.Samples = 15, .Widths = 3});
    EXPECT_NEAR(Covered(thick), 3 * Covered(rough), Covered(rough) * 0.1);
    for (const QPoint& corner : {QPoint(0, 0), {100, 0}, {0, 77}, {100, 77}}) {
        const QRect part(corner, QSize(160, 120));
        const QImage alone = View->RenderPicture(size, {.Samples = 15, .Part = part});
        EXPECT_LT(ComparePictures(alone, smooth.copy(part)).Mean, 0.05);
    }
    const QImage over = View->RenderPicture(size, {.Transparent = true, .Samples = 15});
    QImage laid(size, QImage::Format_RGB32);
    laid.fill(Qt::red);
    QPainter(&laid).drawImage(0, 0, over);
    EXPECT_LT(ComparePictures(laid, smooth).Largest, 4);
    EXPECT_EQ(ErrorOf([&] {
                  static_cast<void>(View->RenderPicture({400'000, 400'000}, {}));
              }),
              "RenderToCanvas: no memory for 400000 by 400000 pixels");
}

} // namespace
} // namespace ZEP
