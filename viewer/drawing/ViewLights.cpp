#include "viewer/drawing/ViewLights.h"

#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/Vertex3.h>

namespace ZEP {

namespace {

constexpr double FarAway = 50; // diagonals of the content
constexpr TGLArrayd3 ToSun{-0.3, -0.62, 0.95};

} // namespace

TSunLight::TSunLight(TZEPScene* scene) : TZEPViewLight(scene) {
    SetParentComponent(scene);
    SetCastShadows(true);
    SetExactShadows(true);
}

void TSunLight::ShineOn(const TZEPBounds& content) {
    const auto [x, y, z] = Middle(content.Min, content.Max) + FarFrom(content) * Unit(ToSun);
    Position()->SetData(x, y, z);
}

// Its place tells where shadows come from; seen from the origin it may be anywhere.
void TSunLight::DrawLight(bool shadowPass) {
    TZEPViewLight::DrawLight(shadowPass);
    Send(ToSun);
}

double FarFrom(const TZEPBounds& content) {
    return FarAway * DiagonalOf(content);
}

} // namespace ZEP
