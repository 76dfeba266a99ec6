#include "viewer/EyeLight.h"

#include "scene/Scene.h"

#include <array>

namespace ZEP {

TEyeLight::TEyeLight(TZEPScene* scene) : TZEPLight(scene) {
    SetDirectional(true);
    // Before all others: OpenGL has eight lights, and a file may bring more.
    SetParentComponentExt(scene, false);
}

void TEyeLight::DrawLight(bool shadowPass) {
    TZEPLight::DrawLight(shadowPass);
    constexpr std::array<float, 4> None{0, 0, 0, 1};
    glLightfv(GL_LIGHT0 + static_cast<GLenum>(LightNum()), GL_AMBIENT, None.data());
}

} // namespace ZEP
