#pragma once

#include "tests/gl/BlendEntry.h"
#include "tests/gl/CallRecorder.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

namespace ZEP {

/// A scene with shadows that a camera looks at from above, in 64 by 64 pixels.
class ShadowScene : public OffscreenTest {
protected:
    ShadowScene() : OffscreenTest(64, 64) {}

    void SetUp() override {
        OffscreenTest::SetUp();
        if (IsSkipped()) return;
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_LIGHTING);
        glEnable(GL_CULL_FACE);
        Scene.SetFShadows(true);
        Camera = Add<TZEPCamera>();
        Camera->Position()->SetData(0, -10, 8);
        Scene.SetFirstPasses(true);
    }

    template <class T>
    T* Add(TZEPObject* parent = nullptr) {
        return ZEP::Add<T>(parent ? parent : &Scene);
    }
    template <class T>
    T* AddCaster(const TGLArrayd3& place = {0, 0, 1}) {
        T* caster = Add<T>();
        caster->SetCastShadows(true);
        caster->XForm()->Translate()->SetData(place);
        return caster;
    }
    /// An aimed one that casts shadows.
    TZEPLight* AddLight(const TGLArrayd3& place = {2, -1, 6}) {
        auto* light = Add<TZEPLight>();
        light->SetDirectional(true);
        light->SetCastShadows(true);
        light->Position()->SetData(place);
        return light;
    }
    TZEPBox* AddGround() {
        auto* ground = Add<TZEPBox>();
        ground->XForm()->Scale()->SetData(20, 20, 0.1);
        ground->XForm()->Translate()->SetData(0, 0, -0.5);
        ground->SetReceiveShadows(true);
        return ground;
    }
    void Render() { Scene.Render(Camera, 64, 64, false); }
    /// Calls of a function in a frame.
    std::size_t CountOf(const char* function) {
        const GlCalls calls;
        Render();
        return calls.Count(function);
    }

    const TBlendEntry Entry;
    TZEPScene Scene;
    TZEPCamera* Camera = nullptr;
};

} // namespace ZEP
