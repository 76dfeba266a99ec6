#include <zep/appearance/effects/Light.h>

#include <zep/framework/Property.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/Vertex3.h>

#include <algorithm>
#include <utility>

namespace ZEP {

namespace {

const TRegisterObject<TZEPLight> RegisteredLight;

constexpr float MaxExponent = 128;
constexpr float WidestCone = 90;
constexpr float NoCone = 180;

/// No number counts as the lower bound.
float Clamped(float value, float least, float most) {
    if (!(value >= least)) return least;
    return value > most ? most : value;
}

} // namespace

std::vector<TZEPLight*>& TZEPLight::All() {
    static std::vector<TZEPLight*> lights;
    return lights;
}

TZEPLight::TZEPLight(TComponent* owner) : TZEPObject(owner) {}

TZEPLight::~TZEPLight() {
    if (SceneContext()) std::erase(All(), this);
}

void TZEPLight::SetExactShadows(bool exact) {
    if (Change(m_exactShadows, exact)) Invalidate(this);
}

void TZEPLight::SetDirectional(bool directional) {
    if (Change(m_directional, directional)) Invalidate(this);
}

void TZEPLight::ReadState(TReader& reader) {
    m_cutoff = 0;
    TZEPObject::ReadState(reader);
}

void TZEPLight::SetParam(int index, float value) {
    if (index == ExponentParam)
        m_exponent = Clamped(value, 0, MaxExponent);
    else if (index == CutoffParam)
        m_cutoff = value == NoCone ? NoCone : Clamped(value, 0, WidestCone);
    else
        return;
    Invalidate(this);
}

void TZEPLight::Attach(TZEPObject*& field, TZEPObject* object) {
    if (!Change(field, object)) return;
    if (object) object->FreeNotification(this);
    Invalidate(this);
}

void TZEPLight::Notification(TComponent* component, TOperation operation) {
    if (operation == opRemove) {
        if (component == m_positionObject) Attach(m_positionObject, nullptr);
        if (component == m_targetObject) Attach(m_targetObject, nullptr);
    }
    TZEPObject::Notification(component, operation);
}

// --- numbers -----------------------------------------------------------------------------------

void TZEPLight::SetLightNum(int number) {
    if (Change(m_lightNum, number)) Invalidate(this);
}

// With the subtree that it belongs to.
void TZEPLight::EnteredScene() {
    if (!SceneContext())
        std::erase(All(), this);
    else if (std::ranges::find(All(), this) == All().end())
        All().push_back(this);
    NumberLights();
}

void TZEPLight::NumberLights() {
    if (!SceneContext()) return;
    std::vector<TZEPObject*> lights;
    SceneContext()->AsObject()->ListChildren(lights, {&TZEPLight::staticMetaObject});
    int number = 0;
    for (TZEPObject* light : lights) static_cast<TZEPLight*>(light)->SetLightNum(number++);
}

// --- place -------------------------------------------------------------------------------------

TGLArrayd3 TZEPLight::GetCenter() const {
    // Lights that are attached to each other in a circle stand where their own positions are.
    if (!m_positionObject || m_following) return FirstPoint();
    m_following = true;
    const TGLArrayd3 center = m_positionObject->GetAbsoluteCenter();
    m_following = false;
    return center;
}

/// The centre of `object` in the light's frame; `point`, which lies in it, without an object.
TGLArrayd3 TZEPLight::InOwnFrame(const TZEPObject* object, const TGLArrayd3& point) const {
    if (!object || object == this) return point;
    TGLArrayd3 center;
    object->GetAbsoluteCenter3Real(center[0], center[1], center[2]);
    ConvertToLocal3Real(center[0], center[1], center[2], center[0], center[1], center[2]);
    return center;
}

// --- drawing -----------------------------------------------------------------------------------

TZEPPassSet TZEPLight::SidePasses() const {
    return PassBit(dsPre) | PassBit(dsAllLights) | PassBit(dsShadowLights) |
           PassBit(dsBuildShadowVolumes) | PassBit(dsDrawShadowVolumes);
}

void TZEPLight::DrawPre() {
    m_volumes.Drop();
}

void TZEPLight::DrawLight(bool shadowPass) {
    if (m_lightNum >= LightCount) return;
    const GLenum light = GL_LIGHT0 + static_cast<GLenum>(m_lightNum);
    SendPlace(light);
    SendColor(light);
    glLightf(light, GL_SPOT_EXPONENT, m_exponent);
    glLightf(light, GL_SPOT_CUTOFF, m_cutoff);
    if (m_attenuation > 0) glLightf(light, GL_LINEAR_ATTENUATION, m_attenuation);
    if (shadowPass) return SwitchForShadows(light);
    glEnable(light);
}

void TZEPLight::SendPlace(GLenum light) const {
    const TGLArrayd3 from = InOwnFrame(m_positionObject, FirstPoint());
    std::array<float, 4> position{0, 0, 0, m_directional ? 1.0F : 0.0F};
    std::array<float, 3> direction{0, 0, -1};
    for (std::size_t i = 0; i < 3; ++i) position[i] = static_cast<float>(from[i]);
    glLightfv(light, GL_POSITION, position.data());
    if (m_directional) {
        const TGLArrayd3 to = InOwnFrame(m_targetObject, SecondPoint());
        for (std::size_t i = 0; i < 3; ++i) direction[i] = static_cast<float>(to[i] - from[i]);
    }
    glLightfv(light, GL_SPOT_DIRECTION, direction.data());
}

void TZEPLight::SendColor(GLenum light) {
    TGLColor color = ToGLColor(GetColor(), std::exchange(m_alpha, 1.0F));
    glLightfv(light, GL_AMBIENT, color.data());
    color[3] = 1;
    glLightfv(light, GL_DIFFUSE, color.data());
    glLightfv(light, GL_SPECULAR, color.data());
}

void TZEPLight::SwitchForShadows(GLenum light) const {
    const TZEPSceneContext* scene = SceneContext();
    if (scene && CastsShadows() && scene->Shadows()) return;
    (scene && scene->AccumShadows() ? glEnable : glDisable)(light);
}

} // namespace ZEP
