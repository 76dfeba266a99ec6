#include "viewer/drawing/EvenMaterials.h"

#include "viewer/content/Faces.h"
#include "viewer/content/Objects.h"
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/framework/LookOnly.h>
#include <zep/scene/Scene.h>

#include <utility>

namespace ZEP {

namespace {

/// Without a material of its own an object has a shared one, which it keeps where that is even.
const TZEPMaterial& SeenMaterial(TZEPObject& object) {
    const TLookOnly look;
    return *object.Material();
}

} // namespace

bool TEvenMaterials::IsEven(const TZEPMaterial& material) {
    const TZEPFaceMaterial* front = material.FrontFace();
    const TZEPFaceMaterial* back = material.BackFace();
    return front->Ambient() == front->Diffuse() && back->Ambient() == back->Diffuse();
}

TEvenMaterials::TAmbients TEvenMaterials::MakeEven(TZEPMaterial& material) {
    const TAmbients was{material.FrontFace()->Ambient(), material.BackFace()->Ambient()};
    material.FrontFace()->SetAmbient(material.FrontFace()->Diffuse());
    material.BackFace()->SetAmbient(material.BackFace()->Diffuse());
    return was;
}

void TEvenMaterials::Restore(TZEPMaterial& material, const TAmbients& was) {
    if (!IsEven(material)) return;
    material.FrontFace()->SetAmbient(was.Front);
    material.BackFace()->SetAmbient(was.Back);
}

void TEvenMaterials::Apply(TZEPScene& scene) {
    Restore(scene);
    ForEachObject(scene, [this](TZEPObject& object) {
        if (!HasFaces(object) || IsEven(SeenMaterial(object))) return;
        m_objects.push_back({&object, MakeEven(*object.Material())});
    });
    if (!scene.MaterialLibrary()) return;
    auto& items = *scene.MaterialLibrary()->Materials();
    for (int i = 0; i < items.Count(); ++i)
        if (TZEPMaterial& material = *items[i].Material(); !IsEven(material))
            m_library.push_back({i, material.FrontFace()->Diffuse(), MakeEven(material)});
}

void TEvenMaterials::Restore(TZEPScene& scene) {
    for (const TOfObject& changed : std::exchange(m_objects, {}))
        if (changed.Object) Restore(*changed.Object->Material(), changed.Was);
    const auto library = std::exchange(m_library, {});
    if (!scene.MaterialLibrary()) return;
    auto& items = *scene.MaterialLibrary()->Materials();
    for (const TOfLibrary& changed : library) {
        if (changed.Index >= items.Count()) continue;
        TZEPMaterial& material = *items[changed.Index].Material();
        if (material.FrontFace()->Diffuse() == changed.Diffuse) Restore(material, changed.Was);
    }
}

} // namespace ZEP
