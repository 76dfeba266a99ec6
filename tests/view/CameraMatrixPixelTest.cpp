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

} // namespace
} // namespace ZEP
