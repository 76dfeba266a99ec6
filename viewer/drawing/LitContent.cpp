#include "viewer/drawing/LitContent.h"

#include "viewer/content/Faces.h"
#include "viewer/drawing/Ground.h"
#include "viewer/drawing/ToolMarker.h"
#include "viewer/drawing/ViewLights.h"
#include <zep/batch/Batch.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vertex3.h>

namespace ZEP {

namespace {

bool IsOfView(const TZEPObject& object) {
    return qobject_cast<const TZEPViewLight*>(&object) || qobject_cast<const TGround*>(&object) ||
           qobject_cast<const TToolMarker*>(&object);
}

} // namespace

std::vector<TZEPObject*> LitContent(TZEPScene& scene) {
    std::vector<TZEPObject*> content;
    for (int i = 0, count = scene.GetItemsCount(); i < count; ++i) {
        TZEPObject& child = *scene.GetItem(i);
        const auto* file = qobject_cast<TZEPBatch*>(&child);
        if (!IsOfView(child) && !(file && file->EvenLight())) content.push_back(&child);
    }
    return content;
}

bool Shines(TZEPLight& light) {
    if (!light.Visible()) return false;
    const bool cone = light.Directional() && light.Cutoff() <= 90;
    return !cone || light.PositionObject() || light.TargetObject() ||
           light.Position()->Data() != light.Target()->Data();
}

std::optional<TZEPBounds> BoundsOfLit(TZEPScene& scene) {
    TZEPExtent extent;
    ForEachLit(scene, [&](TZEPObject& object) {
        if (HasFaces(object)) extent.Add(object);
    });
    return extent.Bounds();
}

} // namespace ZEP
