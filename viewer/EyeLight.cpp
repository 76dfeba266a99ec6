#include "viewer/EyeLight.h"

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
    constexpr std::array<float, 4> Behind{0, 0, 1, 0};
    const GLenum light = GL_LIGHT0 + static_cast<GLenum>(LightNum());
    glLightfv(light, GL_AMBIENT, None.data());
    glPushMatrix();
    glLoadIdentity(); // the frame of the eye
    glLightfv(light, GL_POSITION, Behind.data());
    glPopMatrix();
}

} // namespace ZEP
