#include "viewer/drawing/ViewLights.h"

#include <zep/gl/Scopes.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vertex3.h>

#include <array>

namespace ZEP {

namespace {

constexpr float Gloss = 0.35F;
constexpr double FarAway = 50; // diagonals of the content
/// From beside and above the eye, so that faces that turn away from it alike are told apart.
constexpr TGLArrayd3 BehindEye{-0.2, 0.3, 1};
constexpr TGLArrayd3 ToSun{-0.3, -0.62, 0.95};

} // namespace

TViewLight::TViewLight(TZEPScene* scene) : TZEPLight(scene) {
    SetParentComponentExt(scene, false);
}

void TViewLight::Send(const TGLArrayd3& direction) {
    constexpr std::array<float, 4> None{0, 0, 0, 1};
    std::array<float, 4> from{};
    for (std::size_t k = 0; k < 3; ++k) from[k] = static_cast<float>(direction[k]);
    TGLColor shine = ToGLColor(GetColor(), 1);
    for (std::size_t k = 0; k < 3; ++k) shine[k] *= Gloss;
    const GLenum light = GL_LIGHT0 + static_cast<GLenum>(LightNum());
    glLightfv(light, GL_AMBIENT, None.data());
    glLightfv(light, GL_SPECULAR, shine.data());
    glLightfv(light, GL_POSITION, from.data());
}

void TEyeLight::DrawLight(bool shadowPass) {
    TViewLight::DrawLight(shadowPass);
    const TZEPMatrixScope matrix;
    glLoadIdentity(); // the frame of the eye
    Send(BehindEye);
}

TSunLight::TSunLight(TZEPScene* scene) : TViewLight(scene) {
    SetCastShadows(true);
    SetExactShadows(true);
}

void TSunLight::ShineOn(const TBox& content) {
    const double away = FarFrom(content);
    TGLArrayd3 place = ToSun;
    Normalized(place);
    for (std::size_t k = 0; k < 3; ++k)
        place[k] = (content.Min[k] + content.Max[k]) / 2 + place[k] * away;
    Position()->SetData(place[0], place[1], place[2]);
}

// Its place tells where shadows come from; seen from the origin it may be anywhere.
void TSunLight::DrawLight(bool shadowPass) {
    TViewLight::DrawLight(shadowPass);
    Send(ToSun);
}

double FarFrom(const TBox& content) {
    return FarAway * DiagonalOf(content);
}

} // namespace ZEP
