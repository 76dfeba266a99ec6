#pragma once

#include <zep/scene/Scene.h>

namespace ZEP {

/// The scene that an object is or stands in; null without one, and of null.
[[nodiscard]] inline TZEPScene* SceneOf(TZEPObject* object) {
    auto* scene = qobject_cast<TZEPScene*>(object);
    return scene || !object ? scene : object->Scene();
}

} // namespace ZEP
