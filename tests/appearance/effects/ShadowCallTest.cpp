#include "tests/appearance/effects/ShadowFixture.h"

#include <cmath>
#include <limits>
#include <stdexcept>

namespace ZEP {
namespace {

using ShadowCall = ShadowScene;

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

TEST_F(ShadowCall, VolumesOfWhatIsDrawnOtherwiseAreMadeAnew) {
    AddLight();
    auto* waving = AddCaster<TWaving>();
    for (const float height : {1.0F, 0.5F}) {
        waving->Height = height;
        EXPECT_EQ(CountOf("glNewList"), 1U);
        EXPECT_EQ(CountOf("glNewList"), 0U);
    }
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

/// A mirror on the ground that breaks when it is told to.
class TMirror : public TZEPReflexedObject {
public:
    using TZEPReflexedObject::TZEPReflexedObject;
    std::array<TGLArrayd3, 3> MirrorPoints() const override {
        return {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
    }
    void DrawSpecific(GLenum, bool) override {
        if (Throws) throw std::runtime_error("a mirror breaks");
        if (Outlined) glRectf(-1, -1, 1, 1);
    }
    bool Throws = false;
    bool Outlined = false;
};

TEST_F(ShadowCall, WhatAnObjectThrowsLeavesNothingOpen) {
    const auto stateNow = [] {
        std::vector<GLint> values;
        for (const GLenum name : std::initializer_list<GLenum>{
                 GL_MODELVIEW_STACK_DEPTH, GL_ATTRIB_STACK_DEPTH, GL_FRONT_FACE, GL_STENCIL_TEST,
                 GL_CLIP_PLANE0, GL_POLYGON_OFFSET_FILL, GL_COLOR_WRITEMASK, GL_DEPTH_WRITEMASK,
                 GL_BLEND, GL_RENDER_MODE, GL_LIST_INDEX, GL_MATRIX_MODE, GL_DEPTH_FUNC}) {
            values.resize(values.size() + 4);
            glGetIntegerv(name, &values[values.size() - 4]);
        }
        return values;
    };
    Scene.SetReflections(true);
    auto* mirror = Add<TMirror>();
    mirror->SetReflection(0.3);
    AddGround();
    AddLight();
    auto* logical = Add<TZEPLogicalObject>();
    logical->SetOperation(loSUB);
    Add<TZEPBox>(logical);
    auto* carved = Add<TMirror>(logical);
    mirror->SetCastShadows(true);
    mirror->SetReceiveShadows(true);
    mirror->Outlined = true;
    Render();
    const auto before = stateNow();
    const auto expectThrow = [&](TMirror* thrower, const char* where) {
        thrower->Throws = true;
        EXPECT_THROW(Render(), std::runtime_error) << where;
        EXPECT_EQ(stateNow(), before) << where;
        thrower->Throws = false;
    };
    expectThrow(mirror, "while pixels are marked");
    expectThrow(carved, "in a mirror's image");
    mirror->SetReflection(0);
    expectThrow(carved, "while it is carved");
    expectThrow(mirror, "in the main pass");
    for (const bool accumulates : {false, true}) {
        Scene.SetAccumShadows(accumulates);
        Render(); // a volume is there
        mirror->Throws = true;
        EXPECT_THROW(Scene.Draw(Scene, dsDrawShadowVolumes, dkFull), std::runtime_error);
        EXPECT_EQ(stateNow(), before) << "in the pass of shadows";
        EXPECT_THROW(Scene.Draw(Scene, dsBuildShadowVolumes, dkFull), std::runtime_error);
        EXPECT_EQ(stateNow(), before) << "in feedback mode";
        mirror->Throws = false;
    }
}

} // namespace
} // namespace ZEP
