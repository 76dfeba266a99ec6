#include "tests/gl/CallRecorder.h"
#include <zep/ZEPClasses.h>
#include <zep/gl/Names.h>

#include <gtest/gtest.h>

using namespace ZEP;

TEST(LightCall, ShadowListsLiveForOneFrame) {
    TZEPLight light;
    light.AddShadowList(901);
    light.AddShadowList(902);
    SetContextIsCurrent(true); // else the names wait
    const GlCalls calls;
    light.DrawPre();
    light.DrawPre();
    SetContextIsCurrent(false);
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
