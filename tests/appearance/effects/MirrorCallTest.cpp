#include "tests/appearance/effects/ShadowFixture.h"

#include <stdexcept>

namespace ZEP {
namespace {

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

using MirrorCall = ShadowScene;

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
