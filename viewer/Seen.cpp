#include "viewer/Seen.h"

#include "scene/ColoredObject.h"

namespace ZEP {

namespace {

constexpr std::size_t MostSamples = 2000;

void AddCorners(const TBox& box, std::vector<TGLArrayd3>& corners) {
    for (unsigned corner = 0; corner < 8; ++corner)
        corners.push_back({(corner & 1U ? box.Max : box.Min)[0],
                           (corner & 2U ? box.Max : box.Min)[1],
                           (corner & 4U ? box.Max : box.Min)[2]});
}

/// Calls `visit` for the object and each below it that is seen and draws.
/// \return false where something is hidden
template <class Visit>
bool ForEachSeen(TZEPObject& object, const Visit& visit) {
    if (!object.Visible()) return false;
    if (qobject_cast<TZEPColoredObject*>(&object)) visit(object);
    bool all = true;
    for (int i = 0, count = object.GetItemsCount(); i < count; ++i)
        all = ForEachSeen(*object.GetItem(i), visit) && all;
    return all;
}

} // namespace

TSeen SeenOf(const std::vector<TZEPObject*>& objects, const std::optional<TBox>& known) {
    TSeen seen;
    std::size_t count = 0;
    for (TZEPObject* object : objects)
        seen.All = ForEachSeen(*object, [&](const TZEPObject&) { ++count; }) && seen.All;
    const bool measures = !seen.All || !known;
    if (!measures) seen.Bounds = known;
    const std::size_t stride = count / MostSamples + 1;
    std::size_t number = 0;
    for (TZEPObject* object : objects)
        ForEachSeen(*object, [&](const TZEPObject& each) {
            const bool sampled = number++ % stride == 0;
            if (!sampled && !measures) return;
            const TBox box = BoxOf(each);
            if (sampled) AddCorners(box, seen.Corners);
            if (measures) Widen(seen.Bounds, box);
        });
    return seen;
}

} // namespace ZEP
