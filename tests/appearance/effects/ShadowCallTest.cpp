#include "tests/appearance/effects/ShadowFixture.h"

#include <QStringList>

#include <cmath>
#include <limits>

namespace ZEP {
namespace {

using ShadowCall = ShadowScene;
using TCalls = std::vector<std::string>;

// --- the stencil pass of a light ---------------------------------------------------------------

/// What tells the passes apart, in order, from the first stencil function on.
TCalls StencilCalls(const GlCalls& calls) {
    return calls.Of({"glColorMask", "glClearStencil", "glStencilFunc", "glStencilOp", "glCullFace",
                     "glCallList", "glPolygonOffset", "glBlendFunc"});
}

TEST_F(ShadowCall, ALightCountsItsVolumesAndTakesItselfOffInShadow) {
    AddGround();
    TZEPLight* light = AddLight();
    light->AddShadowList(901);
    light->AddShadowList(902);
    Scene.Draw(Scene, dsBuildShadowVolumes, dkFull);
    const auto counted = [](const std::string& list, const std::string& up,
                            const std::string& down) {
        return TCalls{"glStencilOp(GL_KEEP, GL_KEEP, " + up + ")",
                      "glCullFace(GL_BACK)",
                      "glCallList(" + list + ")",
                      "glStencilOp(GL_KEEP, GL_KEEP, " + down + ")",
                      "glCullFace(GL_FRONT)",
                      "glCallList(" + list + ")"};
    };
    for (const bool wraps : {false, true}) {
        StencilWrapEXT = wraps;
        light->DrawPre();
        light->AddShadowList(901);
        TCalls expected{"glBlendFunc(GL_ONE, GL_ONE)",
                        "glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE)",
                        "glClearStencil(128)", "glStencilFunc(GL_ALWAYS, 255, 0xff)"};
        const TCalls one =
            counted("901", wraps ? "0x8507" : "GL_INCR", wraps ? "0x8508" : "GL_DECR");
        expected.insert(expected.end(), one.begin(), one.end());
        for (const char* call :
             {"glPolygonOffset(-0.05, -0.5)", "glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE)",
              "glCullFace(GL_BACK)", "glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP)",
              "glStencilFunc(GL_NOTEQUAL, 128, 0xff)", "glStencilOp(GL_KEEP, GL_KEEP, GL_REPLACE)"})
            expected.emplace_back(call);
        const GlCalls calls;
        Scene.Draw(Scene, dsDrawShadowVolumes, dkFull);
        EXPECT_EQ(StencilCalls(calls), expected);
        EXPECT_EQ(calls.Count("glDrawArrays"), 1U) << "the ground alone";
    }
}

TEST_F(ShadowCall, AccumulatedImagesBeginWithBlackWhereThereAreSeveral) {
    Scene.SetAccumShadows(true);
    AddGround();
    AddCaster<TZEPBox>();
    AddLight();
    const auto drawn = [this] {
        const GlCalls calls;
        Render();
        TCalls found = calls.Of({"glAccum", "glLogicOp"});
        for (const std::string& call : calls.Of({"glStencilFunc"}))
            if (call.find("ALWAYS") == std::string::npos) found.push_back(call);
        return found;
    };
    const std::string lit = "glStencilFunc(GL_EQUAL, 128, 0xff)";
    EXPECT_EQ(drawn(), TCalls{lit});
    AddLight({-2, 0, 6});
    const std::string black = "glStencilFunc(GL_NOTEQUAL, 128, 0xff)";
    EXPECT_EQ(drawn(), (TCalls{"glAccum(GL_LOAD, 0.333333)", "glLogicOp(GL_CLEAR)",
                               "glAccum(GL_ACCUM, 0.333333)", "glLogicOp(GL_CLEAR)",
                               "glAccum(GL_ACCUM, 0.333333)", "glAccum(GL_RETURN, 1.2)", black, lit,
                               black, lit}));
}

TEST_F(ShadowCall, WhoTakesPartIsToldByTheFlags) {
    TZEPBox* ground = AddGround();
    auto* box = AddCaster<TZEPBox>();
    TZEPLight* light = AddLight();
    struct Case {
        const char* Name;
        bool Shadows, Casts, Receives, LightCasts, LightShows;
        std::size_t Volumes; // called twice each
        bool DrawsReceivers;
    };
    const Case cases[] = {
        {"all", true, true, true, true, true, 1, true},
        {"shadows off", false, true, true, true, true, 0, false},
        {"no caster", true, false, true, true, true, 0, false},
        {"no receiver", true, true, false, true, true, 1, false},
        {"a light without shadows", true, true, true, false, true, 0, false},
        {"a hidden light", true, true, true, true, false, 0, false},
    };
    for (const Case& c : cases) {
        Scene.SetFShadows(c.Shadows);
        box->SetCastShadows(c.Casts);
        ground->SetReceiveShadows(c.Receives);
        light->SetCastShadows(c.LightCasts);
        light->SetVisible(c.LightShows);
        const GlCalls calls;
        Render();
        EXPECT_EQ(calls.Count("glCallList"), 2 * c.Volumes) << c.Name;
        // Both boxes once, the ground once more for the light.
        EXPECT_EQ(calls.Count("glDrawArrays"), c.DrawsReceivers ? 3U : 2U) << c.Name;
    }
}

// --- volumes -----------------------------------------------------------------------------------

/// A host's class draws what it likes, whenever it likes.
class TWaving : public TZEPBox {
public:
    using TZEPBox::TZEPBox;
    void DrawSpecific(GLenum face, bool draft) override {
        glPushMatrix();
        glScalef(1, 1, Height);
        TZEPBox::DrawSpecific(face, draft);
        glPopMatrix();
    }
    float Height = 1;
};

TEST_F(ShadowCall, VolumesAreMadeAnewWhenSomethingTheyFollowFromHasChanged) {
    AddGround();
    auto* group = Add<TZEPNode>();
    auto* sphere = Add<TZEPSphere>(group);
    sphere->SetCastShadows(true);
    TZEPLight* light = AddLight();
    auto* polygon = AddCaster<TZEPPolygon>({0, 2, 1});
    for (const auto& [x, y] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}})
        polygon->Vertexes()->Add()->SetPoint({double(x), double(y), 0});
    auto* waving = AddCaster<TWaving>({3, 0, 1});
    Render(); // the sphere's own list is made as well
    struct Case {
        const char* Name;
        std::function<void()> Change;
        std::size_t Made;
    };
    const Case cases[] = {
        {"nothing", [] {}, 0},
        {"colours", [&] { sphere->SetColor(clRed); }, 0},
        {"the ground", [&] { Camera->Orbit(10, 0); }, 0},
        {"a transform above", [&] { group->XForm()->Translate()->SetData(0, 0, 1); }, 1},
        {"the light", [&] { light->Position()->SetX(2.5); }, 3},
        {"the light's aim", [&] { light->Target()->SetX(2.5); }, 0},
        {"a light at infinity", [&] { light->SetDirectional(false); }, 3},
        {"what is drawn", [&] { waving->Height = 0.5F; }, 1},
        {"what is drawn, moved", [&] { waving->XForm()->Translate()->SetX(4); }, 1},
        {"vertexes",
         [&] {
             polygon->Vertexes()->GetItem(0)->SetPoint({-1, 0, 0});
         },
         2}, // its own
        {"how exact shadows are", [&] { light->SetExactShadows(true); }, 3},
        {"a second light",
         [&] {
             AddLight({0, 3, 7});
         },
         3},
        {"by hand",
         [&] {
             Scene.SetManualUpdate(true);
             sphere->SetSlices(10);
         },
         3}, // one for each light, and its own
    };
    for (const Case& c : cases) {
        c.Change();
        EXPECT_EQ(CountOf("glNewList"), c.Made) << c.Name;
        EXPECT_EQ(CountOf("glNewList"), 0U) << c.Name << ", the frame after";
    }
    Scene.SetManualUpdate(false);
    polygon->Vertexes()->Clear();
    Render();
    EXPECT_EQ(light->ShadowLists().size(), 2U) << "a polygon without vertexes";
    delete sphere;
    Render();
    EXPECT_EQ(light->ShadowLists().size(), 1U);
}

TEST_F(ShadowCall, AMeshCastsTheFacesThatItsLibraryShows) {
    TZEPMaterialLibrary library;
    library.Materials()->Add();
    Scene.SetMaterialLibrary(&library);
    AddLight();
    auto* mesh = AddCaster<TZEPMesh>();
    for (const auto& [x, y] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}})
        mesh->Vertexes()->Add()->SetPoint({double(x), double(y), 0});
    for (const int material : {0, 1}) {
        TZEPFace3CI* face = mesh->Faces()->Add();
        face->SetA(0);
        face->SetB(1 + material);
        face->SetC(2 + material);
        face->SetMaterialIndex(material);
    }
    EXPECT_EQ(CountOf("glNewList"), 1U);
    EXPECT_EQ(CountOf("glNewList"), 0U);
    library.Materials()->Add();
    EXPECT_EQ(CountOf("glNewList"), 1U) << "the second face is seen now";
}

TEST_F(ShadowCall, WithoutThePassBeforeVolumesOfAllPlacesStay) {
    TZEPLight* light = AddLight();
    auto* box = AddCaster<TZEPBox>();
    DrawsPre = false;
    for (const std::size_t places : {1U, 2U, 3U}) {
        box->XForm()->Translate()->SetX(double(places));
        Render();
        Render(); // the same place once more
        EXPECT_EQ(light->ShadowLists().size(), places);
    }
    DrawsPre = true;
    Render();
    EXPECT_EQ(light->ShadowLists().size(), 1U);
}

TEST_F(ShadowCall, AThousandFramesKeepNoMoreThanTwo) {
    AddGround();
    AddLight();
    auto* box = AddCaster<TZEPBox>();
    Render();
    Render();
    for (int frame = 0; frame < 1000; ++frame) {
        box->XForm()->Rotate()->SetZ(frame);
        Render();
    }
    int lists = 0;
    for (GLuint name = 1; name < 5000; ++name) lists += glIsList(name) ? 1 : 0;
    EXPECT_GE(lists, 1);
    EXPECT_LE(lists, 2);
}

TEST_F(ShadowCall, LinesAndBitmapsCastNothing) {
    AddLight();
    auto* line = Add<TZEPLine>();
    line->SetShadows(0, true);
    line->SetShadows(1, true);
    auto* text = AddCaster<TZEPLabel>();
    text->SetCaption(QStringLiteral("text"));
    text->SetBitmapFont(true);
    EXPECT_EQ(CountOf("glNewList"), 0U);
}

/// What feedback mode tells of a mesh with many faces does not fit at first.
TEST_F(ShadowCall, TheFeedbackBufferGrowsAndStaysLarge) {
    AddLight();
    auto* field = AddCaster<TZEPHeightField>();
    field->SetSlicesX(200);
    field->SetSlicesY(200);
    const std::size_t tries = CountOf("glFeedbackBuffer");
    EXPECT_GT(tries, 1U);
    EXPECT_LT(tries, 20U);
    field->SetSlicesX(199);
    EXPECT_EQ(CountOf("glFeedbackBuffer"), 1U);
}

/// Draws as its host likes.
TEST_F(ShadowCall, WhatACasterDrawsMayFreeTheLightOrItself) {
    for (const bool light : {true, false}) {
        AddLight({3, 0, 6});
        TZEPLight* lamp = AddLight();
        auto* user = AddCaster<TZEPUser>();
        user->SetOnDraw([&](TZEPUser&, GLenum, bool) {
            GLint mode = 0;
            glGetIntegerv(GL_RENDER_MODE, &mode);
            if (mode != GL_FEEDBACK) return;
            if (light)
                delete std::exchange(lamp, nullptr);
            else
                delete std::exchange(user, nullptr);
        });
        EXPECT_NO_THROW(Render());
        EXPECT_EQ(lamp == nullptr, light);
        EXPECT_EQ(user == nullptr, !light);
        delete user;
    }
}

/// Its children are looked at whatever it has itself.
TEST_F(ShadowCall, BelowAPolygonWithoutVertexesShadowsFall) {
    TZEPLight* light = AddLight();
    auto* polygon = Add<TZEPPolygon>();
    auto* box = Add<TZEPBox>(polygon);
    box->SetCastShadows(true);
    for (const std::size_t volumes : {1U, 0U, 1U}) {
        polygon->SetVisible(volumes == 1);
        Render();
        EXPECT_EQ(light->ShadowLists().size(), volumes);
    }
}

// --- passes ------------------------------------------------------------------------------------

/// A host's line that draws after the frame.
class TLateLine : public TZEPLine {
public:
    using TZEPLine::TZEPLine;
    void DrawPost() override { GlCalls::Note("late"); }
};

TEST_F(ShadowCall, NeighboursThatTakeNoPartArePassedOver) {
    Scene.SetReflections(true);
    auto* lines = Add<TZEPNode>();
    const auto addLine = [&](TZEPLine* line) {
        line->SetParentComponent(lines);
        line->XForm()->Translate()->SetX(1);
    };
    for (int i = 0; i < 200; ++i) addLine(new TZEPLine(lines));
    const auto pushes = [this](TZEPDrawState state) {
        const GlCalls calls;
        Scene.Draw(Scene, state, dkFull);
        return calls.Count("glMultMatrixd") + calls.Count("late");
    };
    const TZEPDrawState side[] = {dsPre,         dsAllLights,          dsShadowLights,
                                  dsReflections, dsBuildShadowVolumes, dsDrawShadowVolumes,
                                  dsShadows,     dsShadowObjects,      dsPost};
    for (const TZEPDrawState state : side) EXPECT_EQ(pushes(state), 0U) << state;
    lines->GetItem(3)->SetShadows(1, true);
    EXPECT_EQ(pushes(dsShadowObjects), 64U) << "the block of the one that receives";
    addLine(new TLateLine(lines));
    EXPECT_EQ(pushes(dsPost), 201U - 192U + 1U) << "the block of the one that nothing is known of";
}

// --- what a context lacks ------------------------------------------------------------------------

TEST_F(ShadowCall, WithoutTheBuffersFramesAreDrawnPlain) {
    AddGround();
    AddCaster<TZEPBox>();
    AddLight();
    AddLight({-1, 0, 5});
    Scene.SetReflections(true);
    OffscreenContext plain(64, 64, true);
    GLint bits = 0;
    glGetIntegerv(GL_STENCIL_BITS, &bits);
    if (bits != 0) GTEST_SKIP() << "every format has a stencil buffer";
    for (const bool accumulates : {false, true}) {
        Scene.SetAccumShadows(accumulates);
        const GlCalls calls;
        Render();
        EXPECT_EQ(calls.Count("glAccum"), 0U);
        EXPECT_EQ(calls.Count("glStencilFunc"), 0U);
        EXPECT_GT(calls.Of({"glBegin", "glDrawArrays"}).size(), 0U);
        EXPECT_EQ(Scene.AccumShadows(), accumulates) << "what was chosen stays";
    }
}

// --- places that have no shadow ------------------------------------------------------------------

TEST_F(ShadowCall, LightsAndCastersAnywhereDoNoHarm) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    constexpr double endless = std::numeric_limits<double>::infinity();
    AddGround();
    auto* box = AddCaster<TZEPBox>({0, 0, 0});
    TZEPLight* light = AddLight();
    struct Case {
        const char* Name;
        TGLArrayd3 Light, Place, Scale;
        bool Casts;
    };
    const Case cases[] = {
        {"above", {0, 0, 5}, {0, 0, 0}, {1, 1, 1}, true},
        {"below", {0, 0, -5}, {0, 0, 0}, {1, 1, 1}, true},
        {"in the middle", {0, 0, 0}, {0, 0, 0}, {1, 1, 1}, false},
        {"inside", {0.2, 0.1, 0.1}, {0, 0, 0}, {1, 1, 1}, false},
        {"on a face", {0, 0, 0.5}, {0, 0, 0}, {1, 1, 1}, false},
        {"at a corner", {0.5, 0.5, 0.5}, {0, 0, 0}, {1, 1, 1}, false},
        {"no size", {1, 2, 5}, {0, 0, 0}, {0, 0, 0}, false},
        {"flat", {1, 2, 5}, {0, 0, 0}, {1, 1, 0}, true},
        {"no number", {1, 2, 5}, {none, 0, 0}, {1, 1, 1}, false},
        {"a size without end", {1, 2, 5}, {0, 0, 0}, {endless, 1, 1}, false},
        {"a light nowhere", {none, 0, 0}, {0, 0, 0}, {1, 1, 1}, false},
        {"a light without end", {endless, 0, 0}, {0, 0, 0}, {1, 1, 1}, false},
        {"huge", {1, 2, 1e200}, {0, 0, 0}, {1e150, 1, 1}, false},
    };
    for (const bool aimed : {true, false})
        for (const Case& c : cases) {
            light->SetDirectional(aimed);
            light->Position()->SetData(c.Light[0], c.Light[1], c.Light[2]);
            box->XForm()->Translate()->SetData(c.Place[0], c.Place[1], c.Place[2]);
            box->XForm()->Scale()->SetData(c.Scale[0], c.Scale[1], c.Scale[2]);
            EXPECT_NO_THROW(Render()) << c.Name;
            EXPECT_GE(light->ShadowLists().size(), c.Casts ? 1U : 0U) << c.Name;
        }
}

} // namespace
} // namespace ZEP
