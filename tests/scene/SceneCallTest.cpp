#include "tests/gl/CallRecorder.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/objects/Line.h>
#include <zep/scene/ColoredObject.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

namespace ZEP {
namespace {

/// Notes each hook by name, in the record of calls.
class Probe : public TZEPObject {
public:
    using TZEPObject::TZEPObject;
    void DrawPre() override { Note("pre"); }
    void DrawLight(bool shadowed) override { Note(shadowed ? "light shadowed" : "light"); }
    void DrawMain(bool draft) override { Note(draft ? "main draft" : "main"); }
    void DrawTransparent(bool draft) override { Note(draft ? "transparent draft" : "transparent"); }
    void DrawReflections() override { Note("reflections"); }
    void BuildShadowVolumes() override { Note("build"); }
    void DrawShadowVolumes() override { Note("volumes"); }
    void DrawShadows(bool draft) override { Note(draft ? "shadows draft" : "shadows"); }
    void DrawPost() override { Note("post"); }
    bool QuickToo = false;

protected:
    bool DrawsInQuickDraw() const override { return QuickToo; }

private:
    void Note(const char* hook) const { GlCalls::Note(hook + (" " + Ident()).toStdString()); }
};

/// Draws a single point.
class Dot : public TZEPColoredObject {
public:
    using TZEPColoredObject::TZEPColoredObject;
    void DrawSpecific(GLenum, bool draft) override { GlCalls::Note(draft ? "dot draft" : "dot"); }
    bool Shares = false;

protected:
    bool SharesDrawRun() const override { return Shares; }
};

template <class T>
T* Add(TZEPObject* parent, const char* ident = "a") {
    auto* object = new T(parent);
    object->SetIdent(QString::fromLatin1(ident));
    object->SetParentComponent(parent);
    return object;
}

class Eye : public TZEPObject, public TZEPSceneCamera {
public:
    void Apply(int width, int height, int jitter) override {
        GlCalls::Note(
            QStringLiteral("camera %1 %2 %3").arg(width).arg(height).arg(jitter).toStdString());
    }
    void Pick(int, int, int, int, int, int) override {}
    TZEPObject* AsObject() override { return this; }
};

using SceneCall = OffscreenTest;
using Calls = std::vector<std::string>;

TEST_F(SceneCall, EachStateReachesItsHookInsideWhatThePassSets) {
    TZEPScene scene;
    Add<Probe>(&scene);
    const Calls lightsOff{"glDisable(GL_LIGHT0)", "glDisable(GL_LIGHT1)", "glDisable(GL_LIGHT2)",
                          "glDisable(GL_LIGHT3)", "glDisable(GL_LIGHT4)", "glDisable(GL_LIGHT5)",
                          "glDisable(GL_LIGHT6)", "glDisable(GL_LIGHT7)"};
    const auto then = [](Calls calls, const char* last) {
        calls.emplace_back(last);
        return calls;
    };
    struct Case {
        TZEPDrawState State;
        bool Enabled; // shadows and reflections
        Calls Expected;
    };
    const Case cases[] = {
        {dsPre, false, {"pre a"}},
        {dsCamera, true, {}},
        {dsAllLights, false, then(lightsOff, "light a")},
        {dsShadowLights, false, then(lightsOff, "light shadowed a")},
        {dsAllObjects, false, {"main a"}},
        {dsNonShadowObjects, false, {}},
        {dsNonShadowObjects, true, {"main a"}},
        {dsShadowObjects, true, {}},
        {dsReflections, false, {}},
        {dsReflections,
         true,
         {"glPushMatrix()", "glLoadIdentity()", "reflections a", "glPopMatrix()"}},
        {dsBuildShadowVolumes, false, {}},
        {dsBuildShadowVolumes,
         true,
         {"glPushAttrib(GL_ENABLE_BIT)", "glEnable(GL_CULL_FACE)", "build a", "glPopAttrib()"}},
        {dsDrawShadowVolumes, true, {}},
        {dsShadows, true, {}},
        {dsTransparent,
         false,
         {"glEnable(GL_BLEND)", "glDepthMask(GL_FALSE)",
          "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)", "transparent a",
          "glDepthMask(GL_TRUE)", "glDisable(GL_BLEND)"}},
        {dsPost, false, {"post a"}},
    };
    for (const Case& c : cases) {
        scene.SetFShadows(c.Enabled);
        scene.SetReflections(c.Enabled);
        const GlCalls calls;
        scene.Draw(scene, c.State, dkFull);
        EXPECT_EQ(calls.List(), c.Expected) << "state " << c.State << " enabled " << c.Enabled;
    }
}

TEST_F(SceneCall, ShadowVolumesDependOnTheLightsAndTheMethod) {
    TZEPScene scene;
    scene.SetFShadows(true);
    scene.SetSceneAmbientColor(0x0000FF);
    const auto draw = [&scene](int lights, bool accumulate, TZEPDrawState state) {
        scene.SetAccumShadows(accumulate);
        scene.Draw(scene, dsBuildShadowVolumes, dkFull);
        for (int i = 0; i < lights; ++i) scene.CountShadowLight();
        const GlCalls calls;
        scene.Draw(scene, state, dkFull);
        return calls.List();
    };
    const std::string dark = "glLightModelfv(GL_LIGHT_MODEL_AMBIENT, 0 0 0 0)";
    const std::string ambient = "glLightModelfv(GL_LIGHT_MODEL_AMBIENT, 1 0 0 1)";
    EXPECT_EQ(draw(0, true, dsDrawShadowVolumes), Calls{});
    EXPECT_EQ(draw(1, true, dsDrawShadowVolumes), (Calls{dark, ambient}));
    EXPECT_EQ(draw(3, true, dsDrawShadowVolumes),
              (Calls{dark, "glAccum(GL_LOAD, 0.25)", ambient, "glAccum(GL_RETURN, 1.2)"}));
    EXPECT_EQ(draw(3, true, dsShadows), (Calls{"glAccum(GL_ACCUM, 0.25)"}));
    EXPECT_EQ(draw(1, true, dsShadows), Calls{});
    EXPECT_EQ(draw(2, false, dsDrawShadowVolumes),
              (Calls{dark, "glBlendFunc(GL_ONE, GL_ONE)", "glEnable(GL_BLEND)", ambient,
                     "glDisable(GL_BLEND)"}));
}

TEST_F(SceneCall, AFrameClearsAppliesTheCameraAndDrawsThreePasses) {
    TZEPScene scene;
    Eye eye;
    Add<Probe>(&scene);
    scene.SetBackgroundColor(0xFF0000);
    QObject::connect(&scene, &TZEPScene::AfterCamera, [] { GlCalls::Note("after camera"); });
    const auto render = [&](bool draft) {
        const GlCalls calls;
        scene.Render(&eye, 40, 30, draft);
        return calls.List();
    };
    const Calls start{"glClearStencil(0)",
                      "glClearColor(0, 0, 1, 0)",
                      "glLightModelfv(GL_LIGHT_MODEL_AMBIENT, 0.2 0.2 0.2 1)",
                      "glClear(GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT | GL_COLOR_BUFFER_BIT)",
                      "camera 40 30 -1",
                      "after camera"};
    Calls full = render(false);
    ASSERT_GE(full.size(), start.size());
    EXPECT_EQ(Calls(full.begin(), full.begin() + static_cast<long>(start.size())), start);
    const auto hooks = [](const Calls& calls) {
        Calls only;
        for (const std::string& call : calls)
            if (call.starts_with("light") || call.starts_with("main") ||
                call.starts_with("transp") || call.starts_with("build") ||
                call.starts_with("volumes"))
                only.push_back(call);
        return only;
    };
    EXPECT_EQ(hooks(full), (Calls{"light a", "main a", "transparent a"}));
    scene.SetFShadows(true);
    EXPECT_EQ(hooks(render(true)), (Calls{"light a", "main draft a", "transparent draft a"}));
    EXPECT_EQ(hooks(render(false)), (Calls{"light a", "main a", "light shadowed a", "build a",
                                           "light a", "transparent a"}));
    scene.BeginUpdate();
    const GlCalls none;
    scene.Render(&eye, 40, 30, false);
    ExpectNoCalls(none);
}

TEST_F(SceneCall, VisibilityTransformsAndQuickDraw) {
    TZEPScene scene;
    auto* top = Add<Probe>(&scene, "top");
    auto* low = Add<Probe>(top, "low");
    low->XForm()->Translate()->SetData(1, 2, 3);
    Add<Probe>(low, "leaf");
    const auto draw = [&scene] {
        const GlCalls calls;
        scene.Draw(scene, dsAllObjects, dkFull);
        return calls.List();
    };
    const std::string moved = "glMultMatrixd(1 0 0 0 0 1 0 0 0 0 1 0 1 2 3 1)";
    EXPECT_EQ(draw(), (Calls{"main top", "glPushMatrix()", moved, "main low", "main leaf",
                             "glPopMatrix()"}));
    scene.SetQuickDraw(true);
    EXPECT_EQ(draw(), (Calls{"main top", "glPushMatrix()", moved, "glPopMatrix()"}));
    low->QuickToo = true;
    EXPECT_EQ(draw(), (Calls{"main top", "glPushMatrix()", moved, "main low", "glPopMatrix()"}));
    scene.SetQuickDraw(false);
    low->SetDrawType(dtLine);
    EXPECT_EQ(draw()[3], "main draft low");
    low->SetVisible(false);
    EXPECT_EQ(draw(), Calls{"main top"});
}

/// Whatever such an object does with OpenGL, neither do neighbours' attributes reach it, nor its
/// own them.
TEST_F(SceneCall, ARunEndsBeforeAnObjectThatSharesNothing) {
    TZEPScene scene;
    for (const bool isLine : {true, true, false, true}) {
        if (!isLine) Add<Probe>(&scene);
        if (isLine) Add<TZEPLine>(&scene)->SetSmooth(false);
    }
    const GlCalls calls;
    scene.Draw(scene, dsAllObjects, dkFull);
    EXPECT_EQ(calls.Of({"glPushAttrib", "glPopAttrib", "main*"}),
              (Calls{"glPushAttrib(GL_LINE_BIT)", "glPopAttrib()", "main a",
                     "glPushAttrib(GL_LINE_BIT)", "glPopAttrib()"}));
}

TEST_F(SceneCall, AnObjectIsDrawnInOnePassOfTheTwo) {
    TZEPScene scene;
    auto* dot = Add<Dot>(&scene);
    const auto draws = [&scene](TZEPDrawState state) {
        const GlCalls calls;
        scene.Draw(scene, state, dkFull);
        return calls.Count("dot");
    };
    for (const float transparency : {0.0F, 0.25F, 2.0F, -1.0F}) {
        dot->Material()->SetTransparency(transparency);
        EXPECT_EQ(draws(dsAllObjects), transparency > 0 ? 0U : 1U) << transparency;
        EXPECT_EQ(draws(dsTransparent), transparency > 0 ? 1U : 0U) << transparency;
    }
}

TEST_F(SceneCall, TheLibraryComesBeforeTheOwnMaterial) {
    TZEPScene scene;
    TZEPMaterialLibrary library;
    library.Materials()->Add()->Material()->FrontFace()->SetAmbient(clRed);
    auto* dot = Add<Dot>(&scene);
    dot->SetColor(clLime);
    const auto ambient = [&] {
        const GlCalls calls;
        scene.Draw(scene, dsAllObjects, dkFull);
        return calls.List().front();
    };
    const std::string own = "glMaterialfv(GL_FRONT, GL_AMBIENT, 0 1 0 0)";
    EXPECT_EQ(ambient(), own);
    dot->SetMaterialIndex(0);
    EXPECT_EQ(ambient(), own) << "no library";
    scene.SetMaterialLibrary(&library);
    EXPECT_EQ(ambient(), "glMaterialfv(GL_FRONT, GL_AMBIENT, 1 0 0 0)");
    dot->SetMaterialIndex(1);
    EXPECT_EQ(ambient(), own) << "outside of the library";
}

TEST_F(SceneCall, OfNeighbouringMaterialsOnlyWhatDiffersIsSet) {
    TZEPScene scene;
    std::vector<Dot*> dots;
    for (int i = 0; i < 4; ++i) {
        dots.push_back(Add<Dot>(&scene));
        dots.back()->Shares = true;
    }
    const auto materialCalls = [&scene] {
        const GlCalls calls;
        scene.Draw(scene, dsAllObjects, dkFull);
        EXPECT_EQ(calls.Count("dot"), 4U);
        return calls.Of({"glMaterialf*"}).size();
    };
    EXPECT_EQ(materialCalls(), 10U) << "all of it once";
    dots[1]->SetColor(clRed);
    EXPECT_EQ(materialCalls(), 10U + 1 + 2) << "ambient and diffuse alike, then apart";
    dots[1]->Material()->FrontFace()->SetColor(10, clWhite);
    dots[2]->SetColor(clRed);
    EXPECT_EQ(materialCalls(), 10U + 2 + 1 + 2) << "both sides, the front, both at once";
    dots[2]->Shares = false;
    EXPECT_EQ(materialCalls(), 10U + 2 + 10 + 10);
    for (Dot* dot : dots) dot->SetColor(clBlue);
    dots[1]->SetSelected(true); // its selection box must not see, nor leave, open state
    EXPECT_EQ(materialCalls(), 30U)
        << "an equal one stays until the box; then one not shared, one more";
}

} // namespace
} // namespace ZEP
