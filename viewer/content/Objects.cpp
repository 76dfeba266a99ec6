#include "viewer/content/Objects.h"

namespace ZEP {

TZEPExtent ExtentOf(TZEPObject& root) {
    TZEPExtent extent;
    ForEachObject(root, [&](TZEPObject& object) { extent.Add(object); });
    return extent;
}

} // namespace ZEP
