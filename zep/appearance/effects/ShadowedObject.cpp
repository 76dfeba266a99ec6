#include <zep/appearance/effects/ShadowedObject.h>

#include <zep/appearance/effects/DrawnPlace.h>
#include <zep/appearance/effects/Light.h>
#include <zep/appearance/effects/ShadowVolume.h>
#include <zep/appearance/materials/Material.h>
#include <zep/framework/Watch.h>
#include <zep/gl/Scopes.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Vectors.h>

#include <QScopedValueRollback>

namespace ZEP {

namespace {

/// The ball about the box: the centre of an object may be another one, and its own ball smaller.
void Surround(const TZEPObject& object, TZEPCasting& casting) {
    TGLArrayd3 min;
    TGLArrayd3 max;
    object.GetSize(min, max);
    XformBoxd(casting.Place, min, max);
    casting.Center = Middle(min, max);
    casting.Radius = Distance(min, max) / 2;
}

std::uint64_t NextShape() {
    static std::uint64_t last = 0;
    return ++last;
}

} // namespace

TZEPPassSet TZEPShadowedObject::SidePasses() const {
    return (CastsShadows() ? PassBit(dsBuildShadowVolumes) : 0) |
           (ReceivesShadows() ? PassBit(dsShadows) : 0);
}

void TZEPShadowedObject::Invalidate(TObject* sender) {
    ForgetShape();
    TZEPColoredObject::Invalidate(sender);
}

// What was made of it is out of date, also where the scene is updated by hand.
bool TZEPShadowedObject::WantsInvalidation() const {
    return m_shape != 0 || TZEPColoredObject::WantsInvalidation();
}

std::uint64_t TZEPShadowedObject::Shape() {
    if (m_shape == 0) m_shape = NextShape();
    return m_shape;
}

void TZEPShadowedObject::BuildShadowVolumes() {
    if (!CastsShadows()) return;
    const TZEPWatch alive(this);
    TZEPLight::ForEachCasting(SceneContext(), [this, &alive](TZEPLight& light) {
        if (alive) DoBuildShadowVolumes(light);
    });
}

// What it draws may free it or the light, or ask for another frame, which then has no new shadows.
void TZEPShadowedObject::DoBuildShadowVolumes(TZEPLight& light) {
    if (DrawFrame().IsNotRendering) return;
    TZEPShadowLists& volumes = light.Volumes();
    TZEPVolumeKey key{.Look = ShadowLook(),
                      .Place = MatrixAsDrawn(DrawFrame(), *this),
                      .Eye = light.Eye(),
                      .IsAimed = light.Directional(),
                      .IsExact = light.ExactShadows()};
    const bool keeps = KeepsShape();
    if (keeps) {
        key.Shape = Shape();
        if (volumes.Use(key)) return;
    }
    TZEPCasting casting{.Place = key.Place,
                        .Eye = key.Eye,
                        .IsAimed = light.Directional(),
                        .IsExact = light.ExactShadows()};
    Surround(*this, casting);
    const auto volume = TZEPShadowVolume::Of(casting);
    if (!volume) return;
    DrawFrame().Run.End();
    const TZEPWatch alive(this);
    const TZEPWatch lightAlive(&light);
    const auto tokens = volume->Look([this, &frame = DrawFrame()] {
        const QScopedValueRollback feedsBack(frame.IsNotRendering, true);
        DrawSpecific(GL_FRONT_AND_BACK, false);
    });
    if (!alive || !lightAlive) return;
    if (!keeps) {
        key.Shape = HashOf(tokens);
        if (volumes.Use(key)) return;
    }
    volumes.Add(key, volume->Compile(tokens));
}

void TZEPShadowedObject::DrawShadows(bool draft) {
    if (!ReceivesShadows()) return;
    TZEPMaterial& material = DrawnMaterial();
    if (!material.IsTransparent()) DrawUnselected(material, draft);
}

} // namespace ZEP
