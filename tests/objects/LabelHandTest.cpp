#include "tests/gl/Feedback.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/objects/TextShape.h>

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace ZEP;

namespace {

class LabelHand : public OffscreenTest {
protected:
    /// Pixels that are not black, after drawing in a view from 0 to 8 by 8.
    int Draw() {
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-1, 7, -1, 7, -10, 10);
        glMatrixMode(GL_MODELVIEW);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        Scene.Draw(Scene, dsAllObjects, dkFull);
        const QImage frame = Context().ReadFrame();
        int count = 0;
        Box = {};
        for (int y = 0; y < frame.height(); ++y)
            for (int x = 0; x < frame.width(); ++x) {
                if ((frame.pixel(x, y) & 0xFFFFFFU) == 0) continue;
                ++count;
                Box |= QRect(x, y, 1, 1);
            }
        return count;
    }
    /// Of DejaVu Sans, alone in the scene.
    TZEPLabel& Use(const QString& caption) {
        Scene.Clear();
        auto* label = new TZEPLabel(&Scene);
        label->SetParentComponent(&Scene);
        label->Font()->SetName(QStringLiteral("DejaVu Sans"));
        label->SetCaption(caption);
        return *label;
    }

    TZEPScene Scene;
    QRect Box;
    static constexpr int Unit = 32; // pixels
};

double Area(const TTextShape& shape) {
    double area = 0;
    const auto& points = shape.Triangles;
    for (std::size_t i = 0; i + 2 < points.size(); i += 3) {
        const auto &a = points[i], &b = points[i + 1], &c = points[i + 2];
        const double part = (static_cast<double>(b[0] - a[0]) * (c[1] - a[1]) -
                             static_cast<double>(b[1] - a[1]) * (c[0] - a[0])) /
                            2;
        EXPECT_GE(part, -1e-6) << "counter-clockwise";
        area += part;
    }
    return area;
}

/// The sharpest corner of an outline, in degrees.
double SharpestTurn(const std::vector<TTextPoint>& outline) {
    double sharpest = 0;
    const std::size_t count = outline.size();
    for (std::size_t i = 0; i < count; ++i) {
        const auto &a = outline[i], &b = outline[(i + 1) % count], &c = outline[(i + 2) % count];
        const double before = std::atan2(b[1] - a[1], b[0] - a[0]);
        const double after = std::atan2(c[1] - b[1], c[0] - b[0]);
        sharpest =
            std::max(sharpest, std::abs(std::remainder(after - before, 2 * std::numbers::pi)));
    }
    return sharpest * 180 / std::numbers::pi;
}

double AreaOf(const TTextBox& box) {
    return (box.Max[0] - box.Min[0]) * (box.Max[1] - box.Min[1]);
}

} // namespace

TEST_F(LabelHand, CurvesAreRound) {
    TFont font;
    font.SetName(QStringLiteral("DejaVu Sans"));
    const TTextShape shape = MakeTextShape(QStringLiteral("O"), font);
    ASSERT_EQ(shape.Outlines.size(), 2U);
    for (const auto& outline : shape.Outlines) EXPECT_LT(SharpestTurn(outline), 25);
}

TEST_F(LabelHand, CapitalsAreAsHighAsTheScaleAndStandOnTheBaseline) {
    for (const char* name : {"DejaVu Sans", "DejaVu Serif", "no such font"}) {
        TZEPLabel label;
        label.Font()->SetName(QString::fromLatin1(name));
        label.SetCaption(QStringLiteral("HEH"));
        EXPECT_NEAR(label.GetMin()[1], 0, 0.01) << name;
        EXPECT_NEAR(label.GetMax()[1], 1, 0.01) << name;
        EXPECT_GE(label.GetMin()[0], 0) << name;
    }
    TZEPLabel& label = Use(QStringLiteral("HEH"));
    label.XForm()->Scale()->SetData(2, 2, 2);
    EXPECT_GT(Draw(), 500);
    EXPECT_NEAR(Box.height(), 2 * Unit, 1);
    EXPECT_NEAR(255 - Box.bottom(), Unit, 1) << "the baseline lies at y = 0";
}

TEST_F(LabelHand, TheAreasAreThoseOfTheOutlines) {
    TFont font;
    font.SetName(QStringLiteral("DejaVu Sans"));
    // A bar, a ring and a letter with two holes: area within, and less than that of its box.
    const TTextShape bar = MakeTextShape(QStringLiteral("l"), font);
    EXPECT_NEAR(Area(bar), AreaOf(MeasureText(QStringLiteral("l"), font)), 1e-4);
    for (const char* text : {"O", "B", "%", "@"}) {
        const TTextShape shape = MakeTextShape(QString::fromLatin1(text), font);
        const TTextBox box = MeasureText(QString::fromLatin1(text), font);
        for (const TTextPoint& point : shape.Triangles)
            for (std::size_t k = 0; k < 2; ++k) {
                EXPECT_GE(point[k], box.Min[k]) << text;
                EXPECT_LE(point[k], box.Max[k]) << text;
            }
        EXPECT_GT(Area(shape), 0.15 * AreaOf(box)) << text;
        EXPECT_LT(Area(shape), 0.65 * AreaOf(box)) << text;
        EXPECT_GE(shape.Outlines.size(), 2U) << text;
    }
}

TEST_F(LabelHand, TextOfAnyAlphabetShowsAndLinesStandBelowEachOther) {
    for (const QString& text : {QStringLiteral("Ägypten"), QStringLiteral("Ωμέγα"),
                                QStringLiteral("жук"), QStringLiteral("∅ 12±0,1")}) {
        TZEPLabel& label = Use(text);
        EXPECT_GT(Draw(), 100) << text.toStdString();
        EXPECT_GT(label.GetMax()[0], 1.5) << text.toStdString();
    }
    TZEPLabel& label = Use(QStringLiteral("H\nH"));
    EXPECT_NEAR(label.GetMax()[1], 1, 0.01);
    EXPECT_LT(label.GetMin()[1], -1);
    label.SetCaption(QStringLiteral("\n\n"));
    EXPECT_EQ(Draw(), 0);
}

TEST_F(LabelHand, BitmapsKeepTheirSizeAndStandAtTheOrigin) {
    TZEPLabel& label = Use(QStringLiteral("HHH"));
    label.SetBitmapFont(true);
    label.Font()->SetHeight(40);
    QRect first;
    for (const double scale : {1.0, 3.0}) {
        label.XForm()->Scale()->SetData(scale, scale, scale);
        EXPECT_GT(Draw(), 100);
        if (first.isNull()) first = Box;
        EXPECT_EQ(Box, first);
    }
    EXPECT_NEAR(255 - Box.bottom(), Unit, 2);
    EXPECT_GT(Box.height(), 20);
    EXPECT_LT(Box.height(), 40);
    EXPECT_EQ(label.GetMax(), zero3d);
}

TEST_F(LabelHand, ChangesAreSeen) {
    TZEPLabel& label = Use(QStringLiteral("I"));
    const int thin = Draw();
    label.SetCaption(QStringLiteral("WWW"));
    EXPECT_GT(Draw(), 2 * thin);
    const double width = label.GetMax()[0];
    label.Font()->SetStyle(fsBold);
    EXPECT_GT(label.GetMax()[0], 1.05 * width);
    label.SetDrawType(dtLine);
    EXPECT_GT(Draw(), 20);
}

TEST_F(LabelHand, AClickAnywhereInItsBoxPicksIt) {
    Use(QStringLiteral("O"));
    for (const auto& [x, y, hits] : {std::tuple{0.5, 0.5, 1}, {0.5, 1.5, 0}, {3.0, 0.5, 0}}) {
        GLuint buffer[64];
        glSelectBuffer(64, buffer);
        glRenderMode(GL_SELECT);
        glInitNames();
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(x - 0.01, x + 0.01, y - 0.01, y + 0.01, -1, 1);
        glMatrixMode(GL_MODELVIEW);
        Scene.Draw(Scene, dsAllObjects, dkSelect);
        EXPECT_EQ(glRenderMode(GL_RENDER), hits) << x << ", " << y;
    }
}

TEST_F(LabelHand, EndlessTextIsCutOff) {
    TZEPLabel& label = Use(QString(1'000'000, QLatin1Char('i')));
    const double width = label.GetMax()[0];
    label.SetCaption(QString(MaxTextLength, QLatin1Char('i')));
    EXPECT_EQ(label.GetMax()[0], width);
    label.SetBitmapFont(true);
    label.Font()->SetHeight(100'000);
    EXPECT_EQ(label.Font()->Height(), 1000);
    Draw();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
