#include "viewer/content/Objects.h"

#include <zep/sheets/Layout.h>

namespace ZEP {

namespace {

void AddBelow(TZEPObject& root, TZEPExtent& extent) {
    for (int i = 0, count = root.GetItemsCount(); i < count; ++i) {
        TZEPObject& child = *root.GetItem(i);
        if (qobject_cast<TZEPLayout*>(&child)) continue;
        extent.Add(child);
        AddBelow(child, extent);
    }
}

} // namespace

TZEPExtent ExtentOf(TZEPObject& root) {
    TZEPExtent extent;
    AddBelow(root, extent);
    return extent;
}

} // namespace ZEP
