#include "scene/ColoredObject.h"

#include "appearance/DrawRun.h"
#include "appearance/Material.h"
#include "appearance/SharedMaterials.h"
#include "scene/SceneInterfaces.h"
#include "scene/Vertex3.h"
#include "scene/XForm.h"

namespace ZEP {

TZEPMaterial* TZEPColoredObject::MaterialOfLibrary() const {
    if (MaterialIndex() < 0 || !SceneContext()) return nullptr;
    return SceneContext()->LibraryMaterial(MaterialIndex());
}

TZEPMaterial* TZEPColoredObject::GetMaterial() {
    TZEPMaterial* material = MaterialOfLibrary();
    return material ? material : Material();
}

TZEPMaterial& TZEPColoredObject::DrawnMaterial() {
    if (TZEPMaterial* material = MaterialOfLibrary()) return *material;
    if (ExistingMaterial()) return *ExistingMaterial();
    const TColor color = GetColor();
    return SharedMaterial(HasOwnColor() ? &color : nullptr, HasLineTransparency());
}

void TZEPColoredObject::DrawWith(TZEPMaterial& material, bool draft, bool cancel) {
    TZEPDrawRun::Current().OpenMaterial(material);
    DrawOpened(draft, cancel);
}

void TZEPColoredObject::DrawOpened(bool draft, bool cancel) {
    TZEPDrawRun& run = TZEPDrawRun::Current();
    DrawSpecific(GL_FRONT_AND_BACK, draft);
    run.CloseMaterial(cancel);
    if (!Selected()) return;
    run.End();
    DrawSelection();
}

void TZEPColoredObject::DrawMain(bool draft) {
    const bool isPlain = HasOwnColor() && !HasLineTransparency() && !ExistingMaterial();
    if (isPlain && !MaterialOfLibrary()) {
        TZEPDrawRun::Current().OpenColor(GetColor());
        return DrawOpened(draft, true);
    }
    TZEPMaterial& material = DrawnMaterial();
    if (!material.IsTransparent()) DrawWith(material, draft);
}

void TZEPColoredObject::DrawTransparent(bool draft) {
    TZEPMaterial& material = DrawnMaterial();
    if (material.IsTransparent()) DrawWith(material, draft);
}

} // namespace ZEP
