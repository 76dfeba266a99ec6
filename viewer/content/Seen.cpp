#include "viewer/content/Seen.h"

namespace ZEP {

namespace {

/// Calls `visit` for the object and each below it that is seen and draws.
/// \return false where something is hidden
template <class Visit>
bool ForEachSeen(TZEPObject& object, const Visit& visit) {
    if (!object.Visible()) return false;
    if (Draws(object)) visit(object);
    bool all = true;
    for (int i = 0, count = object.GetItemsCount(); i < count; ++i)
        all = ForEachSeen(*object.GetItem(i), visit) && all;
    return all;
}

} // namespace

bool IsSeenWhole(TZEPObject& object) {
    return ForEachSeen(object, [](const TZEPObject&) {});
}

TExtent SeenOf(const std::vector<TZEPObject*>& objects) {
    TExtent extent;
    for (TZEPObject* object : objects)
        ForEachSeen(*object, [&](TZEPObject& each) { AddTo(extent, each); });
    return extent;
}

} // namespace ZEP
