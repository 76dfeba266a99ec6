#include "tests/gl/CallRecorder.h"
#include <zep/ZEPClasses.h>

#include <gtest/gtest.h>

using namespace ZEP;

namespace {

using TCalls = std::vector<std::string>;

TCalls LightCalls(const std::string& light, const std::string& position,
                  const std::string& direction, const std::string& color,
                  const std::string& ambientAlpha, const TCalls& rest) {
    const std::string start = "glLightfv(" + light + ", ";
    const std::string number = "glLightf(" + light + ", ";
    TCalls calls{start + "GL_POSITION, " + position + ")",
                 start + "GL_SPOT_DIRECTION, " + direction + ")",
                 start + "GL_AMBIENT, " + color + " " + ambientAlpha + ")",
                 start + "GL_DIFFUSE, " + color + " 1)",
                 start + "GL_SPECULAR, " + color + " 1)",
                 number + "GL_SPOT_EXPONENT, 0)",
                 number + "GL_SPOT_CUTOFF, 180)"};
    calls.insert(calls.end(), rest.begin(), rest.end());
    return calls;
}

} // namespace

TEST(LightCall, ALightAtInfinityShinesFromItsPosition) {
    TZEPLight light;
    light.SetColor(clWhite);
    light.Position()->SetData(0, 0, 1);
    light.Target()->SetData(5, 5, 5);
    for (const char* alpha : {"0", "1"}) { // the ambient alpha is set by the first draw
        const GlCalls calls;
        light.DrawLight(false);
        ExpectCalls(calls, LightCalls("GL_LIGHT0", "0 0 1 0", "0 0 -1", "1 1 1", alpha,
                                      {"glEnable(GL_LIGHT0)"}));
    }
}

TEST(LightCall, AnAimedLightPointsAtItsTarget) {
    TZEPLight light;
    light.SetColor(clRed);
    light.SetDirectional(true);
    light.Target()->SetData(0, 0, -10);
    light.SetLightNum(2);
    light.SetAttenuation(0.5F);
    GlCalls calls;
    light.DrawLight(false);
    ExpectCalls(calls, LightCalls("GL_LIGHT2", "0 0 0 1", "0 0 -10", "1 0 0", "0",
                                  {"glLightf(GL_LIGHT2, GL_LINEAR_ATTENUATION, 0.5)",
                                   "glEnable(GL_LIGHT2)"}));
    light.SetAttenuation(0);
    calls.Clear();
    light.DrawLight(false);
    EXPECT_EQ(calls.Count("glLightf"), 2U) << "OpenGL keeps the attenuation that it had";
}

TEST(LightCall, AttachedToObjectsItStandsAndAimsInItsOwnFrame) {
    TZEPScene scene;
    TZEPLight light(&scene);
    light.SetParentComponent(&scene);
    light.XForm()->Translate()->SetData(1, 0, 0);
    light.XForm()->Rotate()->SetData(0, 0, 90);
    light.SetDirectional(true);
    TZEPObject lamp(&scene), prey(&scene);
    lamp.XForm()->Translate()->SetData(1, 2, 0);
    prey.XForm()->Translate()->SetData(1, 2, -4);
    light.SetPositionObject(&lamp);
    light.SetTargetObject(&prey);
    const GlCalls calls;
    light.DrawLight(false);
    ASSERT_GE(calls.List().size(), 2U);
    EXPECT_EQ(calls.List()[0], "glLightfv(GL_LIGHT0, GL_POSITION, 2 0 0 1)");
    EXPECT_EQ(calls.List()[1], "glLightfv(GL_LIGHT0, GL_SPOT_DIRECTION, 0 0 -4)");
}

TEST(LightCall, InTheShadowPassOnlyCastersStayAsTheyAre) {
    struct Case {
        bool Casts, Shadows, Accumulates;
        TCalls Switch;
    };
    for (const Case& c : {Case{true, true, false, {}},
                          {true, true, true, {}},
                          {true, false, false, {"glDisable(GL_LIGHT0)"}},
                          {true, false, true, {"glEnable(GL_LIGHT0)"}},
                          {false, true, false, {"glDisable(GL_LIGHT0)"}},
                          {false, true, true, {"glEnable(GL_LIGHT0)"}}}) {
        TZEPScene scene;
        scene.SetFShadows(c.Shadows);
        scene.SetAccumShadows(c.Accumulates);
        TZEPLight light;
        light.SetParentComponent(&scene);
        light.SetCastShadows(c.Casts);
        const GlCalls calls;
        light.DrawLight(true);
        EXPECT_EQ(calls.List().size(), 7 + c.Switch.size());
        EXPECT_EQ(calls.Of({"glEnable", "glDisable"}), c.Switch);
    }
}

TEST(LightCall, LightsBeyondThoseOfOpenGlMakeNoCall) {
    TZEPLight light;
    light.SetLightNum(8);
    const GlCalls calls;
    light.DrawLight(false);
    ExpectNoCalls(calls);
    EXPECT_EQ(light.LightNum(), 8);
}

TEST(LightCall, LightsAreSetUpInTreeOrderBeforeObjectsAlsoInQuickDraw) {
    TZEPScene scene;
    auto* group = new TZEPObject(&scene);
    group->SetParentComponent(&scene);
    for (TZEPObject* parent : {static_cast<TZEPObject*>(&scene), group})
        (new TZEPLight(&scene))->SetParentComponent(parent);
    scene.SetQuickDraw(true);
    const GlCalls calls;
    scene.Draw(scene, dsAllLights, dkFull);
    EXPECT_EQ(calls.Of({"glEnable"}), (TCalls{"glEnable(GL_LIGHT0)", "glEnable(GL_LIGHT1)"}));
}

TEST(LightCall, ShadowListsLiveForOneFrame) {
    TZEPLight light;
    light.AddShadowList(901);
    light.AddShadowList(902);
    const GlCalls calls;
    light.DrawPre();
    light.DrawPre();
    ExpectCalls(calls, {"glDeleteLists(901, 1)", "glDeleteLists(902, 1)"});
}

TEST(FogCall, EachModeSetsEverythingAndDisabledFogOnlyItsSwitch) {
    TZEPFog fog;
    fog.SetColor(TColor{0x0000FF});
    fog.SetStart(2);
    fog.SetEnd(30.5);
    fog.SetDensity(0.25);
    for (const auto& [mode, name] :
         {std::pair{fmLinear, "GL_LINEAR"}, {fmExp, "GL_EXP"}, {fmExp2, "GL_EXP2"}}) {
        fog.SetMode(mode);
        fog.SetEnabled(true);
        GlCalls calls;
        fog.Apply();
        ExpectCalls(calls, {std::string("glFogi(GL_FOG_MODE, ") + name + ")",
                            "glFogf(GL_FOG_START, 2)", "glFogf(GL_FOG_END, 30.5)",
                            "glFogf(GL_FOG_DENSITY, 0.25)", "glFogfv(GL_FOG_COLOR, 1 0 0 0)",
                            "glHint(GL_FOG_HINT, GL_FASTEST)", "glEnable(GL_FOG)"});
        fog.SetEnabled(false);
        calls.Clear();
        fog.Apply();
        ExpectCalls(calls, {"glDisable(GL_FOG)"});
    }
}
