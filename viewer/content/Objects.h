#pragma once

#include "viewer/content/Extent.h"
#include <zep/scene/Object.h>

#include <optional>

namespace ZEP {

/// Calls `visit` for each object below `root`, parents first.
template <class Visit>
void ForEachObject(TZEPObject& root, const Visit& visit) {
    for (int i = 0, count = root.GetItemsCount(); i < count; ++i) {
        TZEPObject& child = *root.GetItem(i);
        visit(child);
        ForEachObject(child, visit);
    }
}

/// It only holds others, and draws nothing: a layer, an inserted block.
[[nodiscard]] bool IsGroup(const TZEPObject& object);

/// It has a place and a form of its own.
[[nodiscard]] bool Draws(const TZEPObject& object);

/// Of its box, in its own frame.
[[nodiscard]] TGLArrayd3 MiddleOf(const TZEPObject& object);

/// Absolute.
[[nodiscard]] TBox BoxOf(const TZEPObject& object);

/// What draws itself, as far as it reaches: a mesh fills its box badly, so that its vertexes count.
void AddTo(TExtent& extent, TZEPObject& object);

/// Absolute, of all that draws below `root`.
[[nodiscard]] TExtent ExtentOf(TZEPObject& root);

} // namespace ZEP
