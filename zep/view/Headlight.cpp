#include <zep/view/Headlight.h>

#include <zep/gl/Scopes.h>
#include <zep/scene/Vectors.h>

namespace ZEP {

namespace {

const TRegisterObject<TZEPHeadlight> RegisteredHeadlight;

constexpr float Gloss = 0.35F;
/// From beside and above the eye, so that faces that turn away from it alike are told apart.
constexpr TGLArrayd3 BehindEye{-0.2, 0.3, 1};

} // namespace

void TZEPViewLight::SetParentComponentExt(TComponent* parent, bool) {
    TZEPLight::SetParentComponentExt(parent, false);
}

void TZEPViewLight::Send(const TGLArrayd3& direction) const {
    if (LightNum() > GL_LIGHT7 - GL_LIGHT0) return; // OpenGL has no more
    constexpr TGLColor None{0, 0, 0, 1};
    const TGLArrayf3 place = ToFloats(direction);
    const std::array from{place[0], place[1], place[2], 0.0F};
    TGLColor shine = ToGLColor(GetColor(), 1);
    for (std::size_t k = 0; k < 3; ++k) shine[k] *= Gloss;
    const GLenum light = GL_LIGHT0 + static_cast<GLenum>(LightNum());
    glLightfv(light, GL_AMBIENT, None.data());
    glLightfv(light, GL_SPECULAR, shine.data());
    glLightfv(light, GL_POSITION, from.data());
}

void TZEPHeadlight::DrawLight(bool shadowPass) {
    TZEPLight::DrawLight(shadowPass);
    const TZEPMatrixScope matrix;
    glLoadIdentity(); // the frame of the eye
    Send(BehindEye);
}

} // namespace ZEP
