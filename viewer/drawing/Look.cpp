#include "viewer/drawing/Look.h"

#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polyline.h>

#include <algorithm>
#include <array>
#include <cmath>

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

TColor ShownFor(TColor color) {
    for (const TShade& shade : Shades)
        if (shade.Pure == color) return shade.Shown;
    return color;
}

void Widen(TZEPShape& shape, double pixelRatio) {
    const auto* line = qobject_cast<TZEPLineShape*>(&shape);
    const float width = !line ? HoleWidth : line->Style() == psSolid ? FeedWidth : RapidWidth;
    shape.SetWidth(width * static_cast<float>(pixelRatio));
}

/// Of lines and signs: Web Content Accessibility Guidelines 2.1, 1.4.11.
constexpr double LeastContrast = 3;
constexpr double GreyChroma = 24; // between the parts of a colour, of 255
/// Of black and of white from this grey alike: sqrt(1.05 * 0.05) - 0.05.
constexpr double MiddleLuminance = 0.179;

/// How bright a part of a colour shines, 0 to 1, by the transfer function of sRGB.
double Linear(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color) {
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) +
           0.0722 * Linear(color.blueF());
}

/// The contrast ratio that accessibility guidelines use: 1 to 21.
double Contrast(const QColor& a, const QColor& b) {
    const double brightness[] = {Luminance(a) + 0.05, Luminance(b) + 0.05};
    return std::max(brightness[0], brightness[1]) / std::min(brightness[0], brightness[1]);
}

bool IsGrey(const QColor& color) {
    const auto [least, most] = std::minmax({color.red(), color.green(), color.blue()});
    return most - least < GreyChroma;
}

QColor Mixed(const QColor& color, const QColor& other, double part) {
    const auto mix = [part](double a, double b) { return static_cast<float>(a + (b - a) * part); };
    return QColor::fromRgbF(mix(color.redF(), other.redF()), mix(color.greenF(), other.greenF()),
                            mix(color.blueF(), other.blueF()));
}

} // namespace

bool IsBright(TColor color) {
    return Luminance(ToQColor(color)) > MiddleLuminance;
}

TColor Readable(TColor color, TColor background) {
    const QColor given = ToQColor(color);
    const QColor behind = ToQColor(background);
    if (Contrast(given, behind) >= LeastContrast) return color;
    const QColor end = IsBright(background) ? Qt::black : Qt::white;
    if (IsGrey(given)) return FromQColor(end);
    double part = 0;
    QColor shown = given;
    while (part < 1 && Contrast(shown, behind) < LeastContrast)
        shown = Mixed(given, end, part += 0.1);
    return FromQColor(shown);
}

void ApplyLook(TZEPObject& root, double pixelRatio) {
    for (int i = 0, count = root.GetItemsCount(); i < count; ++i) {
        TZEPObject& object = *root.GetItem(i);
        object.SetColor(ShownFor(object.Color()));
        if (auto* polyline = qobject_cast<TZEPPolyline*>(&object))
            polyline->SetOrigColor(ShownFor(polyline->OrigColor()));
        if (auto* shape = qobject_cast<TZEPShape*>(&object)) Widen(*shape, pixelRatio);
    }
}

void ApplyLook(TZEPMaterialLibrary& materials) {
    auto& items = *materials.Materials();
    for (int i = 0; i < items.Count(); ++i) {
        TZEPMaterial& material = *items[i].Material();
        if (!material.HasTexture() || material.Texture()->Environment() != teBlend) continue;
        material.Texture()->SetEnvironment(teModulate);
        for (TZEPFaceMaterial* face : {material.FrontFace(), material.BackFace()}) {
            face->SetDiffuse(clWhite);
            face->SetAmbient(clWhite);
        }
    }
}

} // namespace ZEP
