#pragma once

#include <zep/scene/Scene.h>

namespace ZEP {

/// A panel that counts how often its scene asks it to repaint.
struct TRepaintCounter : TZEPScenePanel {
    explicit TRepaintCounter(TZEPScene& scene) : m_scene(scene) { scene.RegisterGLPanel(this); }
    ~TRepaintCounter() { m_scene.UnregisterGLPanel(this); }
    Q_DISABLE_COPY_MOVE(TRepaintCounter)
    void Invalidate() override { ++Count; }
    void SceneDestroyed() override {}

    int Count = 0;

private:
    TZEPScene& m_scene;
};

} // namespace ZEP
