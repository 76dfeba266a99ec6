#include "tests/objects/InvalidationCounter.h"
#include <zep/ZEPClasses.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace ZEP;

namespace {

TZEPLight* AddLight(TZEPObject* parent, bool append = true) {
    auto* light = new TZEPLight;
    light->SetParentComponentExt(parent, append);
    return light;
}

} // namespace

TEST(Light, NumbersFollowTheTreeWheneverALightComes) {
    TZEPScene scene;
    TZEPLight* first = AddLight(&scene);
    TZEPLight* second = AddLight(&scene);
    TZEPLight* third = AddLight(&scene);
    EXPECT_EQ(second->LightNum(), 1);
    EXPECT_EQ(third->LightNum(), 2);
    TZEPLight* before = AddLight(&scene, false);
    EXPECT_EQ(before->LightNum(), 0);
    EXPECT_EQ(first->LightNum(), 1);
    EXPECT_EQ(third->LightNum(), 3);
    TZEPLight* below = AddLight(first);
    EXPECT_EQ(below->LightNum(), 1) << "what is below a light comes before it";
    EXPECT_EQ(first->LightNum(), 2);
    before->SetParentComponent(&scene);
    EXPECT_EQ(below->LightNum(), 0);
    EXPECT_EQ(before->LightNum(), 4);
}

TEST(Light, ASubtreeBringsItsLights) {
    TZEPScene scene;
    AddLight(&scene);
    auto* group = new TZEPObject;
    TZEPLight* inner = AddLight(group);
    EXPECT_EQ(inner->LightNum(), 0);
    group->SetParentComponent(&scene);
    EXPECT_EQ(inner->LightNum(), 1);
}

TEST(Light, StandsWhereItsObjectIsUntilThatGoes) {
    TZEPScene scene;
    TZEPLight* light = AddLight(&scene);
    light->Position()->SetData(1, 2, 3);
    auto* object = new TZEPObject;
    object->SetParentComponent(&scene);
    object->XForm()->Translate()->SetData(7, 8, 9);
    light->SetPositionObject(object);
    light->SetTargetObject(object);
    for (int times = 0; times < 2; ++times) EXPECT_EQ(light->GetCenter(), (TGLArrayd3{7, 8, 9}));
    delete object;
    EXPECT_EQ(light->PositionObject(), nullptr);
    EXPECT_EQ(light->TargetObject(), nullptr);
    EXPECT_EQ(light->GetCenter(), (TGLArrayd3{1, 2, 3}));
}

TEST(Light, LightsAttachedInACircleStandSomewhere) {
    TZEPLight a, b;
    a.SetPositionObject(&b);
    b.SetPositionObject(&a);
    EXPECT_TRUE(std::isfinite(a.GetCenter()[0]));
    a.SetPositionObject(&a);
    EXPECT_TRUE(std::isfinite(a.GetAbsoluteCenter()[0]));
}

TEST(Fog, OnlyChangesRepaint) {
    InvalidationCounter panel;
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
