#include "tests/gl/OffscreenTest.h"
#include <zep/scene/XForm.h>
#include <zep/view/Camera.h>

namespace ZEP {
namespace {

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

TEST_F(CameraMatrix, APartFillsTheViewport) {
    TZEPCamera camera;
    camera.Position()->SetData(0, 0, 10);
    camera.Up()->SetData(0, 1, 0);
    const auto clip = [&](const std::optional<QRect>& part, double x, double y) {
        camera.SetDrawnPart(part);
        camera.Apply(300, 100, -1);
        TGLMatrixd4 matrix, model;
        glGetDoublev(GL_PROJECTION_MATRIX, matrix[0].data());
        glGetDoublev(GL_MODELVIEW_MATRIX, model[0].data());
        MultMatrixd(matrix, model, matrix);
        const double w = x * matrix[0][3] + y * matrix[1][3] + matrix[3][3];
        return std::pair((x * matrix[0][0] + y * matrix[1][0] + matrix[3][0]) / w,
                         (x * matrix[0][1] + y * matrix[1][1] + matrix[3][1]) / w);
    };
    const auto [x, y] = clip({}, 1, 0.5); // in the whole view, from -1 to 1
    const auto [px, py] = clip(QRect(150, 50, 75, 25), 1, 0.5);
    EXPECT_NEAR(px, 4 * x - 1, 1e-5); // a quarter of the view, from its middle on
    EXPECT_NEAR(py, 4 * y - 1, 1e-5);
    EXPECT_GT(std::abs(x), 0.05);
}

} // namespace
} // namespace ZEP
