#pragma once

#include "viewer/content/Objects.h"
#include <zep/scene/Object.h>
#include <zep/view/Extent.h>

#include <optional>
#include <vector>

namespace ZEP {

class TZEPLight;

/// Children of a scene that light falls on. Flat drawings are left out, which keep their colours
/// whatever shines, and so is what the view adds for the eye.
[[nodiscard]] std::vector<TZEPObject*> LitContent(TZEPScene& scene);

/// Calls `visit` for these and all below them.
template <class Visit>
void ForEachLit(TZEPScene& scene, const Visit& visit) {
    for (TZEPObject* child : LitContent(scene)) {
        visit(*child);
        ForEachObject(*child, visit);
    }
}

/// It lights something: files hold spots that were never aimed.
[[nodiscard]] bool Shines(TZEPLight& light);

/// Of what has faces, absolute; none without.
[[nodiscard]] std::optional<TZEPBounds> BoundsOfLit(TZEPScene& scene);

} // namespace ZEP
