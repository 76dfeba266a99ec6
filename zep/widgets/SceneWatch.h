#pragma once

#include <zep/scene/Object.h>
#include <zep/scene/SceneInterfaces.h>

namespace ZEP {

/// What happens in a scene, to whoever wants to stay in step with its tree.
class TZEPSceneListener {
public:
    /// `object` stands below its parent now.
    virtual void Inserted(TZEPObject& object) = 0;
    /// It still stands below its parent, and leaves it right after.
    virtual void Removing(TZEPObject& object) = 0;
    /// It still stands in its old place. \param to its new index
    virtual void Moving(TZEPObject& object, int to) = 0;
    virtual void Renamed(TZEPObject& object) = 0;
    /// `TZEPScenePanel::Changed`. May not change the scene.
    virtual void Changed(TObject* sender) = 0;
    /// The scene goes away, its objects are still there. It is watched no more.
    virtual void SceneGone() = 0;

protected:
    ~TZEPSceneListener() = default;
};

/// Tells a listener of one scene. A scene that is updated by hand tells of its tree alone.
class TZEPSceneWatch : private TZEPScenePanel {
public:
    explicit TZEPSceneWatch(TZEPSceneListener& listener) : m_listener(listener) {}
    ~TZEPSceneWatch() { Watch(nullptr); }
    TZEPSceneWatch(const TZEPSceneWatch&) = delete;
    TZEPSceneWatch& operator=(const TZEPSceneWatch&) = delete;

    void Watch(TZEPScene* scene);
    [[nodiscard]] TZEPScene* Scene() const { return m_scene; }

private:
    void Invalidate() override {}
    void SceneDestroyed() override;
    void Changed(TObject* sender) override { m_listener.Changed(sender); }
    void Hear(TZEPObject& sender, TZEPObjectAction action, const void* data);
    [[nodiscard]] TZEPObjectNotify Notify();

    TZEPSceneListener& m_listener;
    TZEPScene* m_scene = nullptr;
};

} // namespace ZEP
