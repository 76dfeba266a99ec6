#include "viewer/window/WelcomePage.h"

#include <zep/scene/Scene.h>
#include <zep/view/Panel.h>

#include <gtest/gtest.h>

#include <QTest>

#include <set>

namespace ZEP {
namespace {

/// How many colours a frame has, in sixteen steps of each part.
std::size_t ColorCount(const QImage& frame) {
    std::set<QRgb> colors;
    for (int y = 0; y < frame.height(); ++y)
        for (int x = 0; x < frame.width(); ++x) colors.insert(frame.pixel(x, y) & 0xF0F0F0U);
    return colors.size();
}

TEST(WelcomePage, TheSceneMovesWhileItIsSeen) {
    TWelcomePage page;
    page.resize(600, 300);
    EXPECT_FALSE(page.Start().Scene()->Animation());
    page.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&page));
    EXPECT_TRUE(page.Start().Scene()->Animation());
    EXPECT_TRUE(QTest::qWaitFor([&] { return page.View()->FrameCount() > 3; }, 5000));
    page.hide();
    EXPECT_FALSE(page.Start().Scene()->Animation());
}

TEST(WelcomePage, TheSceneIsLitAndColouredAtAnyTime) {
    TWelcomePage page;
    page.View()->resize(240, 180);
    QImage last;
    for (const double seconds : {0.0, 3.0, 10.0, 1e6}) {
        page.Start().MoveTo(seconds);
        const QImage frame = page.View()->GrabFrame();
        EXPECT_GT(ColorCount(frame), 150U) << seconds;
        EXPECT_NE(frame, last) << seconds;
        last = frame;
    }
}

} // namespace
} // namespace ZEP
