#include "viewer/drawing/DressedShadows.h"

#include "viewer/content/Faces.h"
#include "viewer/drawing/LitContent.h"
#include "viewer/drawing/ViewLights.h"
#include <zep/appearance/effects/Light.h>
#include <zep/batch/Batch.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/Vertex3.h>

#include <cmath>

namespace ZEP {

namespace {

constexpr std::size_t MostCasters = 2000;

using TGroup = std::vector<TZEPObject*>;

/// Each file is a group, and what stands in no file is one.
std::vector<TGroup> GroupsOf(TZEPScene& scene) {
    std::vector<TGroup> groups(1);
    for (TZEPObject* child : LitContent(scene)) {
        if (qobject_cast<TZEPBatch*>(child))
            groups.push_back({child});
        else
            groups.front().push_back(child);
    }
    return groups;
}

template <class Visit>
void ForEachIn(const TGroup& group, const Visit& visit) {
    for (TZEPObject* object : group) {
        visit(*object);
        ForEachObject(*object, visit);
    }
}

/// What there is to switch in a group.
struct TFound {
    TGroup Surfaces;
    std::vector<TZEPLight*> Lights;
    bool Chose = false; ///< something was chosen already
};

TFound FindIn(const TGroup& group) {
    TFound found;
    ForEachIn(group, [&](TZEPObject& object) {
        found.Chose = found.Chose || object.CastsShadows() || object.ReceivesShadows();
        if (HasFaces(object)) found.Surfaces.push_back(&object);
        if (auto* light = qobject_cast<TZEPLight*>(&object)) found.Lights.push_back(light);
    });
    return found;
}

void SwitchOn(TZEPObject& object) {
    object.SetShadows(0, true);
    object.SetShadows(1, true);
}

void SwitchOff(TZEPObject& object) {
    object.SetShadows(0, false);
    object.SetShadows(1, false);
}

void Cast(TZEPObject& light) {
    light.SetShadows(0, true);
}

void CastNot(TZEPObject& light) {
    light.SetShadows(0, false);
}

void BeExact(TZEPObject& light) {
    static_cast<TZEPLight&>(light).SetExactShadows(true);
}

void BeRough(TZEPObject& light) {
    static_cast<TZEPLight&>(light).SetExactShadows(false);
}

} // namespace

void TDressedShadows::Apply(TZEPScene& scene, const TZEPBounds& content) {
    Restore();
    for (const TGroup& group : GroupsOf(scene)) Switch(group, content);
}

void TDressedShadows::Switch(const TGroup& group, const TZEPBounds& content) {
    const TFound found = FindIn(group);
    if (found.Chose) return;
    for (TZEPLight* light : found.Lights) SwitchLight(*light, content);
    if (found.Surfaces.size() > MostCasters) return;
    for (TZEPObject* surface : found.Surfaces) m_surfaces.Add(*surface, SwitchOn);
}

void TDressedShadows::SwitchLight(TZEPLight& light, const TZEPBounds& content) {
    if (!Shines(light)) return;
    if (!light.Directional()) {
        if (light.PositionObject() || light.Position()->Data() == zero3d) return;
        MoveAway(light, content);
    }
    m_lights.Add(light, Cast);
    if (!light.ExactShadows()) m_exact.Add(light, BeExact);
}

void TDressedShadows::MoveAway(TZEPLight& light, const TZEPBounds& content) {
    const TGLArrayd3 was = light.Position()->Data();
    // The direction is that from the origin, which may lie far from the content.
    double reach = FarFrom(content);
    for (std::size_t k = 0; k < 3; ++k)
        reach += 20 * std::max(std::abs(content.Min[k]), std::abs(content.Max[k]));
    const TGLArrayd3 now = was * (reach / std::sqrt(Dotd(was, was)));
    if (!std::isfinite(Dotd(now, now))) return;
    light.Position()->SetData(now);
    m_moved.push_back({&light, was, now});
}

void TDressedShadows::Restore() {
    m_surfaces.Restore(SwitchOff);
    m_lights.Restore(CastNot);
    m_exact.Restore(BeRough);
    for (const TMovedLight& moved : std::exchange(m_moved, {})) {
        auto* light = qobject_cast<TZEPLight*>(moved.Light.data());
        if (light && light->Position()->Data() == moved.Now)
            light->Position()->SetData(moved.Was[0], moved.Was[1], moved.Was[2]);
    }
}

} // namespace ZEP
