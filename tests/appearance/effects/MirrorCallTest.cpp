#include "tests/appearance/effects/ShadowFixture.h"

#include <stdexcept>

namespace ZEP {
namespace {

using TCalls = std::vector<std::string>;

/// A mirror on the ground that notes what it is asked to draw.
class TMirror : public TZEPReflexedObject {
public:
    using TZEPReflexedObject::TZEPReflexedObject;
    std::array<TGLArrayd3, 3> MirrorPoints() const override {
        return {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
    }
    void DrawSpecific(GLenum face, bool) override {
        if (Throws) throw std::runtime_error("a mirror breaks");
        GlCalls::Note(face == GL_FRONT  ? "mirror's front"
                      : face == GL_BACK ? "mirror's back"
                                        : "mirror");
        if (Outlined) glRectf(-1, -1, 1, 1);
    }
    bool Throws = false;
    bool Outlined = false;
};

class TDot : public TZEPColoredObject {
public:
    using TZEPColoredObject::TZEPColoredObject;
    void DrawSpecific(GLenum, bool) override { GlCalls::Note("dot"); }
};

class MirrorCall : public ShadowScene {
protected:
    void SetUp() override {
        ShadowScene::SetUp();
        if (IsSkipped()) return;
        Scene.SetFShadows(false);
        Scene.SetReflections(true);
        Mirror = Add<TMirror>();
        Mirror->SetReflection(0.3);
        Dot = Add<TDot>();
    }
    TCalls Of(std::initializer_list<std::string_view> names) {
        const GlCalls calls;
        Render();
        return calls.Of(names);
    }

    TMirror* Mirror = nullptr;
    TDot* Dot = nullptr;
};

TEST_F(MirrorCall, WhatItShowsLiesBehindThePlaneAsSeenFromTheEye) {
    const auto plane = [this] { return Of({"glClipPlane"}); };
    Camera->Position()->SetData(0, -10, -8); // from below
    EXPECT_EQ(plane(), TCalls{"glClipPlane(GL_CLIP_PLANE0, 0 0 -1 0)"});
    Camera->Position()->SetData(0, -10, 0); // along the plane
    EXPECT_EQ(plane(), TCalls{});
    Camera->Position()->SetData(0, -10, 8);
    Mirror->XForm()->Translate()->SetData(0, 0, -2);
    EXPECT_EQ(plane(), TCalls{"glClipPlane(GL_CLIP_PLANE0, 0 0 1 2)"});
    Camera->SetOrthographic(true);
    Camera->Position()->SetData(0, -10, 0);
    Camera->Target()->SetData(0, 0, 1); // upwards, though from above
    EXPECT_EQ(plane(), TCalls{"glClipPlane(GL_CLIP_PLANE0, 0 0 -1 -2)"});
    Mirror->XForm()->Translate()->SetData(100, 0, 0); // out of view
    EXPECT_EQ(plane(), TCalls{});
}

TEST_F(MirrorCall, WithoutReflectionItIsAnObjectLikeAnyOther) {
    struct Case {
        const char* Name;
        bool Reflections;
        double Reflection;
        TCalls Drawn;
    };
    const Case cases[] = {
        {"scene without", false, 0.3, {"mirror"}},
        {"no mirror", true, 0, {"mirror"}},
    };
    for (const Case& c : cases) {
        Scene.SetReflections(c.Reflections);
        Mirror->SetReflection(c.Reflection);
        EXPECT_EQ(Of({"mirror*", "glStencilFunc"}), c.Drawn) << c.Name;
    }
}

TEST_F(MirrorCall, ItsAlphaLetsThroughAndNothingKeepsIt) {
    TZEPMaterialLibrary library;
    TZEPMaterial* shared = library.Materials()->Add()->Material();
    Scene.SetMaterialLibrary(&library);
    int changes = 0;
    QObject::connect(&Scene, &TZEPScene::AfterCamera, [&] { changes = 0; });
    struct Case {
        const char* Name;
        int Index;
        float Transparency;
        TZEPDrawState State;
        const char* Alpha;
    };
    const Case cases[] = {
        {"plain colour", -1, 0, dsAllObjects, "0.7"},
        {"of the library", 0, 0, dsAllObjects, "0.7"},
        {"transparent", 0, 0.5F, dsTransparent, "0.85"}, // 1 - 0.3 * 0.5
    };
    for (const Case& c : cases) {
        Mirror->SetMaterialIndex(c.Index);
        shared->SetTransparency(c.Transparency);
        const float before = shared->FrontFace()->RGBA(TZEPFaceMaterial::DiffuseColor)[3];
        const GlCalls calls;
        Scene.Draw(Scene, c.State, dkFull);
        const TCalls diffuse = calls.Of({"glMaterialfv"});
        ASSERT_GE(diffuse.size(), 4U) << c.Name;
        for (std::size_t i = 0; i < 4; ++i)
            EXPECT_TRUE(diffuse[i].ends_with(std::string(" ") + c.Alpha + ")"))
                << c.Name << ": " << diffuse[i];
        EXPECT_EQ(shared->FrontFace()->RGBA(TZEPFaceMaterial::DiffuseColor)[3], before) << c.Name;
    }
}

/// Neighbours that share a run of equal material and attributes, with a mirror between them.
TEST_F(MirrorCall, ARunOfNeighboursEndsBeforeIt) {
    for (const int place : {0, 3}) {
        auto* line = Add<TZEPLine>();
        line->SetSmooth(false);
        line->SetItemIndex(place);
        line->P2()->SetData(1, 1, 1);
    }
    const GlCalls calls;
    Scene.Draw(Scene, dsAllObjects, dkFull);
    int open = 0;
    for (const std::string& call : calls.Of({"glPushAttrib", "glPopAttrib", "mirror's front"})) {
        EXPECT_TRUE(call != "mirror's front" || open == 1) << "its own attributes alone";
        open += call.starts_with("glPush") ? 1 : call.starts_with("glPop") ? -1 : 0;
    }
    EXPECT_EQ(open, 0);
}

/// Each of two mirrors that face each other is drawn in the other's image, without its own.
TEST_F(MirrorCall, MirrorsThatFaceEachOtherComeToAnEnd) {
    auto* other = Add<TMirror>();
    other->SetReflection(0.5);
    other->XForm()->Translate()->SetData(0, 0, 3);
    other->XForm()->Rotate()->SetX(180);
    EXPECT_EQ(Of({"dot"}).size(), 3U);
}

TEST_F(MirrorCall, WhatAnObjectThrowsLeavesNothingOpen) {
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
    Scene.SetFShadows(true);
    AddGround();
    AddLight();
    auto* logical = Add<TZEPLogicalObject>();
    logical->SetOperation(loSUB);
    Add<TZEPBox>(logical);
    auto* carved = Add<TMirror>(logical);
    Mirror->SetCastShadows(true);
    Mirror->SetReceiveShadows(true);
    Mirror->Outlined = true;
    Render();
    const auto before = stateNow();
    const auto expectThrow = [&](TMirror* thrower, const char* where) {
        thrower->Throws = true;
        EXPECT_THROW(Render(), std::runtime_error) << where;
        EXPECT_EQ(stateNow(), before) << where;
        thrower->Throws = false;
    };
    expectThrow(Mirror, "while pixels are marked");
    expectThrow(carved, "in a mirror's image");
    Mirror->SetReflection(0);
    expectThrow(carved, "while it is carved");
    expectThrow(Mirror, "in the main pass");
    for (const bool accumulates : {false, true}) {
        Scene.SetAccumShadows(accumulates);
        Render(); // a volume is there
        Mirror->Throws = true;
        EXPECT_THROW(Scene.Draw(Scene, dsDrawShadowVolumes, dkFull), std::runtime_error);
        EXPECT_EQ(stateNow(), before) << "in the pass of shadows";
        EXPECT_THROW(Scene.Draw(Scene, dsBuildShadowVolumes, dkFull), std::runtime_error);
        EXPECT_EQ(stateNow(), before) << "in feedback mode";
        Mirror->Throws = false;
    }
}

} // namespace
} // namespace ZEP
