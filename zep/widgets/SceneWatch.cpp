#include <zep/widgets/SceneWatch.h>

#include <zep/scene/Scene.h>

namespace ZEP {

TZEPObjectNotify TZEPSceneWatch::Notify() {
    return {[](void* context, TZEPObject* sender, TZEPObjectAction action, const void* data) {
                static_cast<TZEPSceneWatch*>(context)->Hear(*sender, action, data);
            },
            this};
}

void TZEPSceneWatch::Watch(TZEPScene* scene) {
    if (scene == m_scene) return;
    if (m_scene) {
        m_scene->UnregisterNotify(Notify());
        m_scene->UnregisterGLPanel(this);
    }
    m_scene = scene;
    if (!scene) return;
    scene->RegisterNotify(Notify());
    scene->RegisterGLPanel(this);
}

void TZEPSceneWatch::SceneDestroyed() {
    Watch(nullptr);
    m_listener.SceneGone();
}

void TZEPSceneWatch::Hear(TZEPObject& sender, TZEPObjectAction action, const void* data) {
    switch (action) {
    case saInsert:
        return m_listener.Inserted(sender);
    case saRemove:
        return m_listener.Removing(sender);
    case saMove:
        return m_listener.Moving(sender, *static_cast<const int*>(data));
    case saRename:
        return m_listener.Renamed(sender);
    }
}

} // namespace ZEP
