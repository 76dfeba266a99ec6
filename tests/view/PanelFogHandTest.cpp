#include "tests/view/PanelFixture.h"

namespace ZEP {
namespace {

using PanelFog = Panel;

TEST_F(PanelFog, EachFrameHasTheFogOfItsPanel) {
    auto* other = new TZEPPanel(&Window);
    other->SetCamera(Camera);
    other->resize(40, 40);
    std::map<TZEPPanel*, bool> foggy;
    for (TZEPPanel* panel : {View, other})
        QObject::connect(panel, &TZEPPanel::BeforFlush,
                         [&foggy](TZEPPanel* sender) { foggy[sender] = glIsEnabled(GL_FOG); });
    Show();
    View->Fog()->SetEnabled(true);
    Frames = 0;
    Settle();
    EXPECT_EQ(Frames, 1) << "a change repaints";
    other->Invalidate();
    Settle();
    EXPECT_TRUE(foggy[View]);
    EXPECT_FALSE(foggy[other]);
    View->Fog()->SetEnabled(true);
    Settle();
    EXPECT_EQ(Frames, 1) << "an equal value does not";
    View->Fog()->SetEnabled(false);
    Settle();
    EXPECT_FALSE(foggy[View]);
}

} // namespace
} // namespace ZEP
