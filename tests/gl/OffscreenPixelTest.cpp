#include "tests/gl/OffscreenTest.h"
#include "tests/gl/Picture.h"

#include <GL/gl.h>

#include <gtest/gtest-spi.h>

namespace ZEP {
namespace {

class Offscreen : public OffscreenTest {
protected:
    Offscreen() : OffscreenTest(64, 32) {}
};

/// A red square in the upper left quarter, half transparent, in front of blue.
void DrawSquare() {
    glClearColor(0, 0, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    glColor4d(1, 0, 0, 0.2);
    glBegin(GL_QUADS);
    glVertex3d(-1, 0, -0.5);
    glVertex3d(0, 0, -0.5);
    glVertex3d(0, 1, -0.5);
    glVertex3d(-1, 1, -0.5);
    glEnd();
}

TEST_F(Offscreen, ReadsEveryBufferFromTheUpperLeft) {
    DrawSquare();
    const QColor red(255, 0, 0, 51);
    EXPECT_EQ(Context().ReadPixel(0, 0), red);
    EXPECT_EQ(Context().ReadPixel(31, 15), red);
    EXPECT_EQ(Context().ReadPixel(32, 15), QColor(Qt::blue));
    EXPECT_EQ(Context().ReadPixel(31, 16), QColor(Qt::blue));
    EXPECT_NEAR(Context().ReadDepth(31, 15), 0.25, 1e-4);
    EXPECT_FLOAT_EQ(Context().ReadDepth(32, 15), 1);

    const QImage frame = Context().ReadFrame();
    EXPECT_EQ(frame.size(), QSize(64, 32));
    EXPECT_EQ(frame.pixelColor(31, 15), QColor(Qt::red));
    EXPECT_EQ(frame.pixelColor(31, 16), QColor(Qt::blue));
}

TEST_F(Offscreen, APictureIsComparedWithTheOneThatIsKept) {
    DrawSquare();
    QImage frame = Context().ReadFrame();
    ExpectPicture(frame, QStringLiteral("square"), {});

    frame.setPixelColor(3, 4, QColor(200, 0, 0));
    ExpectPicture(frame, QStringLiteral("square"), {55, 0.01});
    EXPECT_NONFATAL_FAILURE(ExpectPicture(frame, QStringLiteral("square"), {54, 1}),
                            "largest difference 55");
    EXPECT_NONFATAL_FAILURE(ExpectPicture(frame, QStringLiteral("square"), {255, 0.001}), "mean");
    EXPECT_NONFATAL_FAILURE(ExpectPicture(frame, QStringLiteral("missing"), {255, 255}),
                            "no such picture");
    EXPECT_NONFATAL_FAILURE(
        ExpectPicture(frame.copy(0, 0, 8, 8), QStringLiteral("square"), {255, 255}),
        "another size");
}

} // namespace
} // namespace ZEP
