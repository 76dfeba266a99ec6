#include <zep/appearance/effects/Shape.h>

#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/SharedMaterials.h>
#include <zep/framework/Property.h>

namespace ZEP {

void TZEPShape::SetWidth(float width) {
    if (Change(m_width, width >= 0 ? width : 1)) Invalidate(this);
}

void TZEPShape::DrawMain(bool draft) {
    if (!Smooth()) TZEPColoredObject::DrawMain(draft);
}

// The first smooth draw leaves its material applied; from the next one on, the material is
// transparent and takes the ordinary way.
void TZEPShape::DrawTransparent(bool draft) {
    TZEPMaterial& material = DrawnMaterial();
    if (material.IsTransparent()) return DrawWith(material, draft);
    if (Smooth()) DrawWith(BlendedMaterial(), draft, false);
}

// Lines and points send no places in the picture, and that of whatever was drawn before them
// changes with the view.
void TZEPShape::PrepareGeometry() {
    if (HasTexture()) glTexCoord2f(0, 0);
}

TZEPMaterial& TZEPShape::BlendedMaterial() {
    TZEPMaterial* shared = MaterialOfLibrary();
    if (!shared) {
        SetLineTransparency();
        return DrawnMaterial();
    }
    shared->SetTransparency(LineTransparency);
    return *shared;
}

} // namespace ZEP
