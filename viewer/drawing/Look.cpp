#include "viewer/drawing/Look.h"

#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polyline.h>

#include <array>

namespace ZEP {

namespace {

constexpr float FeedWidth = 1.5F;
constexpr float RapidWidth = 1;
constexpr float HoleWidth = 6;

struct TShade {
    TColor Pure, Shown;
};

constexpr std::array Shades{
    TShade{0xFFFFFF, 0xF5EBE1}, // before the first tool change
    TShade{0x0000FF, 0xFFBE5A}, // sky blue
    TShade{0x00FF00, 0x7EDB8A}, // green
    TShade{0xFF0000, 0x4FB4FF}, // amber
    TShade{0xFFFF00, 0x7A72FF}, // coral
    TShade{0xFF00FF, 0xFFA0CF}, // violet
    TShade{0x00FFFF, 0xC4DC4E}, // turquoise
    TShade{0x808080, 0x9C8A7C}, // rapid moves
};

void Widen(TZEPShape& shape) {
    const auto* line = qobject_cast<TZEPLineShape*>(&shape);
    shape.SetWidth(!line ? HoleWidth : line->Style() == psSolid ? FeedWidth : RapidWidth);
}

} // namespace

TColor ShownFor(TColor color) {
    for (const TShade& shade : Shades)
        if (shade.Pure == color) return shade.Shown;
    return color;
}

void ApplyLook(TZEPObject& root) {
    for (int i = 0, count = root.GetItemsCount(); i < count; ++i) {
        TZEPObject& object = *root.GetItem(i);
        object.SetColor(ShownFor(object.Color()));
        if (auto* polyline = qobject_cast<TZEPPolyline*>(&object))
            polyline->SetOrigColor(ShownFor(polyline->OrigColor()));
        if (auto* shape = qobject_cast<TZEPShape*>(&object)) Widen(*shape);
    }
}

void ApplyLook(TZEPMaterialLibrary& materials) {
    auto& items = *materials.Materials();
    for (int i = 0; i < items.Count(); ++i) {
        TZEPMaterial& material = *items[i].Material();
        if (!material.HasTexture()) continue;
        material.Texture()->SetResident(true);
        if (material.Texture()->Environment() != teBlend) continue;
        material.Texture()->SetEnvironment(teModulate);
        for (TZEPFaceMaterial* face : {material.FrontFace(), material.BackFace()}) {
            face->SetDiffuse(clWhite);
            face->SetAmbient(clWhite);
        }
    }
}

} // namespace ZEP
