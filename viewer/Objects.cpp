#include "viewer/Objects.h"

#include "scene/ColoredObject.h"
#include "scene/Scene.h"

namespace ZEP {

TBox BoxOf(const TZEPObject& object) {
    TBox box{};
    object.GetAbsoluteSize(box.Min, box.Max);
    return box;
}

void Widen(std::optional<TBox>& bounds, const std::optional<TBox>& box) {
    if (!box) return;
    if (!bounds) bounds = box;
    MinBoundsd(bounds->Min, box->Min);
    MaxBoundsd(bounds->Max, box->Max);
}

std::optional<TBox> BoundsOf(TZEPObject& root) {
    std::optional<TBox> bounds;
    ForEachObject(root, [&](const TZEPObject& object) {
        if (qobject_cast<const TZEPColoredObject*>(&object)) Widen(bounds, BoxOf(object));
    });
    return bounds;
}

TZEPObject* TopOf(TZEPObject& object) {
    TZEPObject* top = &object;
    while (top->Parent() && top->Parent() != object.Scene()) top = top->Parent();
    return top->Parent() ? top : nullptr;
}

} // namespace ZEP
