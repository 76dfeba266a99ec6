#include "viewer/content/Seen.h"

#include <zep/scene/Object.h>
#include <zep/sheets/Layout.h>

namespace ZEP {

bool IsSeenWhole(const TZEPObject& object) {
    if (qobject_cast<const TZEPLayout*>(&object)) return true;
    if (!object.Visible()) return false;
    for (int i = 0, count = object.GetItemsCount(); i < count; ++i)
        if (!IsSeenWhole(*object.GetItem(i))) return false;
    return true;
}

TZEPExtent SeenOf(const std::vector<TZEPObject*>& objects) {
    TZEPExtent extent;
    for (TZEPObject* object : objects) extent.AddVisible(*object);
    return extent;
}

} // namespace ZEP
