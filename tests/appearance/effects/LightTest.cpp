#include "tests/objects/InvalidationCounter.h"
#include <zep/ZEPClasses.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace ZEP;

namespace {

constexpr float NaN = std::numeric_limits<float>::quiet_NaN();

TZEPLight* AddLight(TZEPObject* parent, bool append = true) {
    auto* light = new TZEPLight;
    light->SetParentComponentExt(parent, append);
    return light;
}

} // namespace

TEST(Light, ParametersAreClampedAndAlwaysInvalidate) {
    struct Case {
        int Index;
        float Value, Exponent, Cutoff;
        int Invalidations;
    };
    for (const Case& c : {Case{0, 300, 128, 180, 1},
                          {0, -1, 0, 180, 1},
                          {0, 64, 64, 180, 1},
                          {0, NaN, 0, 180, 1},
                          {1, 120, 0, 90, 1},
                          {1, 200, 0, 90, 1},
                          {1, -3, 0, 0, 1},
                          {1, 180, 0, 180, 1},
                          {1, 45, 0, 45, 1},
                          {1, NaN, 0, 0, 1},
                          {2, 7, 0, 180, 0},
                          {-1, 7, 0, 180, 0}}) {
        InvalidationCounter panel;
        TZEPLight light;
        panel.Watch(light);
        light.SetParam(c.Index, c.Value);
        EXPECT_EQ(light.Exponent(), c.Exponent) << c.Index << ": " << c.Value;
        EXPECT_EQ(light.Cutoff(), c.Cutoff) << c.Index << ": " << c.Value;
        EXPECT_EQ(panel.Count, c.Invalidations) << c.Index << ": " << c.Value;
    }
}

TEST(Light, AttenuationAloneDoesNotRepaint) {
    InvalidationCounter panel;
    TZEPLight light;
    panel.Watch(light);
    light.SetAttenuation(0.5F);
    EXPECT_EQ(panel.Count, 0);
    light.SetDirectional(true);
    light.SetDirectional(true);
    EXPECT_EQ(panel.Count, 1);
}

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
    EXPECT_EQ(light->GetCenter(), (TGLArrayd3{7, 8, 9}));
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

TEST(Light, ACutoffOfZeroSurvivesReading) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("light.zept"));
    for (const float cutoff : {0.0F, 30.0F, 180.0F}) {
        TZEPScene saved, loaded;
        AddLight(&saved)->SetCutoff(cutoff);
        saved.SaveToTextFile(file);
        loaded.LoadFromTextFile(file);
        ASSERT_EQ(loaded.GetItemsCount(), 1);
        const auto* light = qobject_cast<TZEPLight*>(loaded.GetItem(0));
        ASSERT_TRUE(light);
        EXPECT_EQ(light->Cutoff(), cutoff);
    }
}

TEST(Light, StandsByItsObjectEveryTimeItIsAsked) {
    TZEPObject post;
    post.XForm()->Translate()->SetData(1, 2, 3);
    TZEPLight light;
    light.Position()->SetData(9, 9, 9);
    light.SetPositionObject(&post);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(light.GetCenter(), (TGLArrayd3{1, 2, 3}));
    light.SetPositionObject(nullptr);
    EXPECT_EQ(light.GetCenter(), (TGLArrayd3{9, 9, 9}));
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
