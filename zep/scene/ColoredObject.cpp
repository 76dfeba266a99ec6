#include <zep/scene/ColoredObject.h>

#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/SharedMaterials.h>
#include <zep/framework/Watch.h>
#include <zep/scene/Frame.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

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

const TZEPMaterial* TZEPColoredObject::SpecialMaterial() const {
    const TZEPMaterial* shared = MaterialOfLibrary();
    return shared ? shared : ExistingMaterial();
}

bool TZEPColoredObject::HasTexture() const {
    const TZEPMaterial* material = SpecialMaterial();
    return material && material->HasTexture();
}

bool TZEPColoredObject::HasTransparentMaterial() const {
    const TZEPMaterial* material = SpecialMaterial();
    return material && material->IsTransparent();
}

void TZEPColoredObject::DrawUnselected(TZEPMaterial& material, bool draft, bool cancel) {
    const TZEPDrawRun::MaterialScope applied(DrawFrame().Run, material, GL_FRONT_AND_BACK, cancel);
    DrawGeometry(draft);
}

void TZEPColoredObject::DrawWith(TZEPMaterial& material, bool draft, bool cancel) {
    const TZEPWatch alive(this);
    DrawUnselected(material, draft, cancel);
    if (alive) DrawSelected();
}

void TZEPColoredObject::DrawGeometry(bool draft) {
    PrepareGeometry();
    // Outlines send no places in the picture: they show its corner, whatever was drawn before.
    if (draft && HasTexture()) glTexCoord2f(0, 0);
    DrawSpecific(GL_FRONT_AND_BACK, draft);
}

void TZEPColoredObject::DrawSelected() {
    if (!Selected()) return;
    DrawFrame().Run.End();
    DrawSelection();
}

void TZEPColoredObject::DrawMain(bool draft) {
    const bool isPlain = HasOwnColor() && !HasLineTransparency() && !ExistingMaterial();
    if (isPlain && !MaterialOfLibrary()) {
        const TZEPWatch alive(this);
        {
            const TZEPDrawRun::MaterialScope applied(DrawFrame().Run, GetColor());
            DrawGeometry(draft);
        }
        if (alive) DrawSelected();
        return;
    }
    TZEPMaterial& material = DrawnMaterial();
    if (!material.IsTransparent()) DrawWith(material, draft);
}

void TZEPColoredObject::DrawTransparent(bool draft) {
    TZEPMaterial& material = DrawnMaterial();
    if (material.IsTransparent()) DrawWith(material, draft);
}

} // namespace ZEP
