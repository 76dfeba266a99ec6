#include "tests/ErrorOf.h"
#include "tests/gl/Picture.h"
#include "tests/view/PanelFixture.h"
#include <zep/framework/Exception.h>
#include <zep/objects/Line.h>
#include <zep/view/PanelPages.h>

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

    static constexpr int Longest = 10'000; // ms
    TZEPLine* Line = nullptr;
};

TEST_F(PanelSmooth, AViewThatRestsIsSmoothUntilItChanges) {
    EXPECT_EQ(Shades(OnScreen()), 0);
    View->SetRestSamples(8);
    int drawn = 0;
    QObject::connect(View, &TZEPPanel::BeforDraw, [&drawn] { ++drawn; });
    const auto isSmooth = [this] { return Shades(OnScreen()) > 3; };
    EXPECT_TRUE(QTest::qWaitFor(isSmooth, Longest));
    EXPECT_EQ(drawn, 1 + 8);
    const int counted = View->FrameCount(), told = Frames;
    QTest::qWait(200);
    EXPECT_EQ(drawn, 1 + 8) << "it goes on";

    for (int i = 0; i < 4; ++i) {
        Line->SetWidth(2 + static_cast<float>(i));
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(Shades(OnScreen()), 0) << "it moves";
    EXPECT_EQ(drawn, 1 + 8 + 4) << "the first frame waits for none of a mean";
    EXPECT_EQ(View->FrameCount() - counted, 4);
    EXPECT_EQ(Frames - told, 4);

    QTest::mousePress(View, Qt::LeftButton, {}, {5, 5});
    QTest::qWait(300);
    EXPECT_EQ(Shades(OnScreen()), 0) << "a button is held";
    QTest::mouseRelease(View, Qt::LeftButton, {}, {5, 5});
    EXPECT_TRUE(QTest::qWaitFor(isSmooth, Longest));
}

TEST_F(PanelSmooth, SamplesAreAWishThatComesWithAnotherContext) {
    const auto samples = [this] { return View->Context()->PixelFormat().Samples; };
    View->SetSampleWish({.Samples = 4});
    Settle();
    if (View->Context()->Acceleration() == QStringLiteral("Software")) {
        EXPECT_EQ(samples(), 0) << "software pays for each";
    }
    const int before = View->FrameCount();
    View->SetSampleWish({.Samples = 4, .InSoftware = true});
    Settle();
    if (samples() == 0) GTEST_SKIP() << "the display has no format with samples";
    EXPECT_LE(samples(), 4);
    EXPECT_GT(View->FrameCount(), before) << "the new window shows nothing";
    EXPECT_GT(Shades(OnScreen()), 0) << "of the first frame";
    EXPECT_GT(Covered(View->RenderToCanvas({160, 120})), 50);
    Camera->Orbit(5, 0);
    QCoreApplication::processEvents();
    EXPECT_GT(Shades(OnScreen()), 0) << "while it moves";
    QObject::connect(View, &TZEPPanel::BeforDraw, [this] { View->SetSampleWish({}); });
    View->repaint();
    Settle();
    EXPECT_EQ(samples(), 0) << "asked for in a frame";
    EXPECT_EQ(Shades(OnScreen()), 0);
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
    EXPECT_TRUE(QTest::qWaitFor([&] { return drawn == 2; }, Longest));
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

TEST_F(PanelSmooth, PicturesOfLinesHaveTheirWidthsAndColours) {
    if (!HasVectorPictures()) GTEST_SKIP() << "built without GL2PS";
    const QImage before = View->GrabFrame();
    Line->SetWidth(3);
    Line->P1()->SetData(-10, 0, 0);
    Line->P2()->SetData(10, 0, 0);
    const QByteArray svg = RenderVectors(*View, {320, 240}, TZEPVectorFormat::Svg);
    EXPECT_TRUE(svg.contains("stroke=\"#ffff00\"")) << svg.toStdString();
    EXPECT_TRUE(svg.contains("stroke-width=\"3"));
    EXPECT_TRUE(svg.contains("fill=\"#ff0000\"")) << "the background";
    EXPECT_FALSE(RenderVectors(*View, {320, 240}, TZEPVectorFormat::Svg, true).contains("#ff0000"));
    EXPECT_TRUE(RenderVectors(*View, {320, 240}, TZEPVectorFormat::Pdf).startsWith("%PDF"));
    EXPECT_EQ(View->GrabFrame().size(), before.size());
    EXPECT_THROW(static_cast<void>(RenderVectors(*View, {99'000, 5}, TZEPVectorFormat::Svg)),
                 Exception);
}

// --- pages ---------------------------------------------------------------------------------------

QPageLayout A4() {
    return {QPageSize(QPageSize::A4), QPageLayout::Portrait, {5, 5, 5, 5}, QPageLayout::Millimeter};
}

/// A page as a device of ten pixels to the millimetre paints it.
QImage Painted(const TZEPPages& pages, int index) {
    QImage paper(2000, 2870, QImage::Format_RGB32);
    paper.setDotsPerMeterX(10'000);
    paper.setDotsPerMeterY(10'000);
    paper.fill(Qt::red);
    QPainter painter(&paper);
    pages.Paint(painter, index);
    return paper;
}

/// The columns in which there is something yellow: the first, and how many.
std::pair<int, int> Columns(const QImage& paper) {
    int first = -1, last = -1;
    for (int x = 0; x < paper.width(); ++x)
        for (int y = 0; y < paper.height(); ++y)
            if (qGreen(paper.pixel(x, y)) > 127) {
                first = first < 0 ? x : first;
                last = x;
                break;
            }
    return {first, last - first + 1};
}

TEST_F(PanelSmooth, PagesAreTrueToScale) {
    Line->P1()->SetData(-100, 0, 3);
    Line->P2()->SetData(100, 0, 3);
    const TZEPPages half(*View, A4(), {.Scale = 0.5});
    EXPECT_EQ(half.Count(), 1);
    EXPECT_EQ(half.ScaleText(), "1:2");
    const QImage paper = Painted(half, 0);
    const auto [left, length] = Columns(paper);
    EXPECT_NEAR(length, 1000, 2) << "100 mm";
    EXPECT_NEAR(left, 500, 2);
    EXPECT_NEAR(Covered(paper) / length, 2.5, 0.4) << "a quarter of a millimetre";
    const TZEPPages twice(*View, A4(), {.Scale = 2});
    EXPECT_EQ(twice.Columns(), 3);
    EXPECT_EQ(twice.Rows(), 1);
    int all = 0;
    for (int i = 0; i < 3; ++i) all += Columns(Painted(twice, i)).second;
    EXPECT_NEAR(all, 4000, 6) << "nothing is lost or twice at a seam";
    EXPECT_EQ(Camera->Position()->Data(), (TGLArrayd3{0, -100, 0})) << "the view is as it was";
    EXPECT_EQ(TZEPPages(*View, A4(), {}).Count(), 1);
}

TEST_F(PanelSmooth, PagesSayWhatTheyCannotBe) {
    const auto error = [this](const QPageLayout& page, const TZEPPageOptions& options) {
        return ErrorOf([&] { const TZEPPages pages(*View, page, options); });
    };
    const QPageLayout none(QPageSize(QSizeF(0, 0), QPageSize::Millimeter), QPageLayout::Portrait,
                           {});
    EXPECT_THAT(error(none, {}), testing::HasSubstr("has no room for a picture"));
    EXPECT_THAT(error(A4(), {.Scale = 1000}), testing::HasSubstr("pages; 400 are the most"));
    EXPECT_EQ(error(A4(), {.Scale = 0}), "Print: scale, unit and line width are numbers above 0");
}

} // namespace
} // namespace ZEP
