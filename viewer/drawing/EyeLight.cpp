#include "viewer/drawing/EyeLight.h"

#include "scene/Scene.h"

#include <array>

namespace ZEP {

TEyeLight::TEyeLight(TZEPScene* scene) : TZEPLight(scene) {
    // Before all others: OpenGL has eight lights, and a file may bring more.
    SetParentComponentExt(scene, false);
}

void TEyeLight::DrawLight(bool shadowPass) {
    TZEPLight::DrawLight(shadowPass);
    constexpr std::array<float, 4> None{0, 0, 0, 1};
    // From beside and above the eye, so that faces that turn away from it alike are told apart.
    constexpr std::array<float, 4> Behind{-0.2F, 0.3F, 1, 0};
    constexpr float Gloss = 0.35F;
    TGLColor shine = ToGLColor(GetColor(), 1);
    for (std::size_t k = 0; k < 3; ++k) shine[k] *= Gloss;
    const GLenum light = GL_LIGHT0 + static_cast<GLenum>(LightNum());
    glLightfv(light, GL_AMBIENT, None.data());
    glLightfv(light, GL_SPECULAR, shine.data());
    glPushMatrix();
    glLoadIdentity(); // the frame of the eye
    glLightfv(light, GL_POSITION, Behind.data());
    glPopMatrix();
}

} // namespace ZEP
