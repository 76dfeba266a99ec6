#include "tests/objects/RepaintCounter.h"
#include <zep/ZEPClasses.h>

#include <gtest/gtest.h>

using namespace ZEP;

TEST(Light, ASubtreeBringsItsLights) {
    TZEPScene scene;
    Add<TZEPLight>(&scene);
    auto* group = new TZEPObject;
    auto* inner = Add<TZEPLight>(group);
    EXPECT_EQ(inner->LightNum(), 0);
    group->SetParentComponent(&scene);
    EXPECT_EQ(inner->LightNum(), 1);
}

TEST(Fog, OnlyChangesRepaint) {
    TZEPScene scene;
    TRepaintCounter panel(scene);
    TZEPFog fog(&panel);
    const auto setAll = [&] {
        fog.SetColor(clRed);
        fog.SetStart(1);
        fog.SetEnd(2);
        fog.SetDensity(0.5);
        fog.SetMode(fmExp2);
        fog.SetEnabled(true);
    };
    setAll();
    EXPECT_EQ(panel.Count, 6);
    setAll();
    EXPECT_EQ(panel.Count, 6);
    TZEPFog copy;
    copy.SetEnabled(true);
    copy.Assign(&fog);
    EXPECT_EQ(copy.Mode(), fmExp2);
    EXPECT_EQ(copy.FogEnd(), 2);
    EXPECT_EQ(copy.Color(), clRed);
    EXPECT_ANY_THROW(copy.Assign(static_cast<const TPersistent*>(TZEPObject().XForm())));
}
