#include "tests/view/PanelFixture.h"

namespace ZEP {
namespace {

TEST_F(Panel, SeveralShowOneSceneAndForgetItInAnyOrder) {
    auto* second = new TZEPPanel;
    second->setGeometry(300, 30, 100, 100);
    second->SetCamera(Camera);
    second->show();
    Show();
    Scene->SetBackgroundColor(clLime);
    Settle();
    ExpectShown(Green, "first");
    EXPECT_EQ(NativeWindow::ScreenPixel(second->winId(), 50, 50), Green);

    delete second;
    Scene->SetBackgroundColor(clRed);
    Settle();
    ExpectShown(Red, "without the second");
    Scene.reset(); // and the camera with it
    EXPECT_EQ(View->Camera(), nullptr);
    Settle();
    ExpectShown(Black, "without scene");
}

TEST_F(Panel, ForgetsACameraThatGoesAway) {
    Show();
    delete Camera;
    EXPECT_EQ(View->Camera(), nullptr);
    Scene->SetBackgroundColor(clLime); // the scene has no panel any more
    Settle();
    ExpectShown(Black, "without camera");
    delete View;
    Scene->SetBackgroundColor(clRed);
}

TEST_F(Panel, FollowsItsCameraToAnotherScene) {
    Show();
    TZEPScene other;
    other.SetBackgroundColor(clLime);
    auto* group = Add<TZEPObject>(Scene.get());
    Camera->SetParentComponent(group);
    group->SetParentComponent(&other); // takes the camera along
    Settle();
    ExpectShown(Green, "other scene");
    Frames = 0;
    Scene->SetBackgroundColor(clBlue); // not ours any more
    Settle();
    EXPECT_EQ(Frames, 0);
    other.SetBackgroundColor(clRed);
    Settle();
    ExpectShown(Red, "repainted by the other scene");
    View->SetCamera(nullptr);
}

} // namespace
} // namespace ZEP
