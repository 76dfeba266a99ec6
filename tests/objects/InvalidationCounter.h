#pragma once

#include <zep/scene/Scene.h>

namespace ZEP {

/// A scene with a panel that counts how often it is asked to repaint.
struct InvalidationCounter : TZEPScenePanel {
    TZEPScene Scene;
    int Count = 0;

    InvalidationCounter() { Scene.RegisterGLPanel(this); }
    ~InvalidationCounter() { Scene.UnregisterGLPanel(this); }
    void Invalidate() override { ++Count; }
    void SceneDestroyed() override {}

    /// Puts the object under the scene and forgets what was counted.
    void Watch(TZEPObject& object) {
        object.SetParentComponent(&Scene);
        Count = 0;
    }
};

} // namespace ZEP
