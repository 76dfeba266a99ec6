#include "tests/events/World.h"

#include <zep/scene/XForm.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

void AddBox(TZEPObject& parent, double x) {
    auto* box = Add<TZEPBox>(&parent);
    box->SetColor(clRed);
    box->XForm()->Translate()->SetX(x);
}

// Deeper than OpenGL's stack of matrices: a thousand transforms that come to nothing.
TEST(Nesting, AThousandTransformsDrawAsNoneDo) {
    if (!NativeWindow::HasDisplay()) GTEST_SKIP() << "there is no X display";
    TWorld world;
    world.Scene->SetFShadows(false);
    world.Scene->SetSceneAmbientColor(clWhite);
    delete world.Group;
    delete world.Batch;
    AddBox(*world.Scene, -2);
    AddBox(*world.Scene, 0);
    AddBox(*world.Scene, 2);
    const QImage plain = world.Panel->RenderToCanvas({120, 90});
    world.Scene->Clear();
    world.Camera = Add<TZEPCamera>(world.Scene.data());
    world.Camera->Position()->SetData(0, -8, 3);
    world.Panel->SetCamera(world.Camera);
    TZEPObject* inner = world.Scene;
    AddBox(*inner, -2);
    for (int level = 1; level < DeepestNesting; ++level) {
        inner = Add<TZEPActor>(inner);
        inner->XForm()->Translate()->SetX(level % 2 ? 1 : -1);
    }
    AddBox(*inner, -1); // the last step was one to the right
    AddBox(*world.Scene, 2);
    EXPECT_EQ(world.Panel->RenderToCanvas({120, 90}), plain);
    ASSERT_TRUE(world.Panel->MakeCurrent());
    EXPECT_EQ(world.Scene->Pick(world.Camera, 90, 70, 45, 35, 4, 4, 9), inner->GetItem(0));
}

} // namespace
} // namespace ZEP
