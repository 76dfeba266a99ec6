#include "tests/events/World.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

// It runs once more where Qt draws by EGL, of which no context may be current beside one of GLX.
TEST(HostContext, TakesTurnsWithThePanel) {
    if (!NativeWindow::HasDisplay()) GTEST_SKIP() << "there is no X display";
    TWorld world;
    const QImage alone = world.Panel->GrabFrame();
    QImage black(alone.size(), alone.format());
    black.fill(Qt::black);
    ASSERT_NE(alone, black);
    QOffscreenSurface surface;
    surface.create();
    QOpenGLContext host;
    if (!host.create()) GTEST_SKIP() << "Qt has no OpenGL here";
    for (int turn = 0; turn < 2; ++turn) {
        ASSERT_TRUE(host.makeCurrent(&surface));
        EXPECT_EQ(world.Panel->GrabFrame(), alone) << turn;
    }
}

} // namespace
} // namespace ZEP
