#pragma once

#include <zep/scene/Object.h>

namespace ZEP {

/// Calls `visit` for each object below `root`, parents first. `visit` may not change the tree.
template <class Visit>
void ForEachObject(TZEPObject& root, const Visit& visit) {
    for (int i = 0, count = root.GetItemsCount(); i < count; ++i) {
        TZEPObject& child = *root.GetItem(i);
        visit(child);
        ForEachObject(child, visit);
    }
}

} // namespace ZEP
