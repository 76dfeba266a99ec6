#pragma once

#include <zep/Export.h>
#include <zep/scene/ColoredObject.h>

namespace ZEP {

class TZEPLight;

/// A drawable object that can cast shadows and have shadows of others fall on it. What it casts is
/// the shadow of all that it draws when it is filled, its children apart: they cast their own.
///
/// The shadow volume under each light is made anew when the light, the object, something above it
/// or what it draws has changed; of a class that is not registered by `TRegisterObject` it is
/// looked at in each frame whether it draws the same.
///
/// Defaults: neither.
class ZEP_CORE_EXPORT TZEPShadowedObject : public TZEPColoredObject {
    Q_OBJECT
    Q_PROPERTY(bool CastShadows READ CastsShadows WRITE SetCastShadows)
    Q_CLASSINFO("CastShadows", "false")
    Q_PROPERTY(bool ReceiveShadows READ ReceivesShadows WRITE SetReceiveShadows)
    Q_CLASSINFO("ReceiveShadows", "false")
public:
    using TZEPColoredObject::TZEPColoredObject;

    void SetCastShadows(bool casts) { SetShadows(0, casts); }
    void SetReceiveShadows(bool receives) { SetShadows(1, receives); }

    /// Makes the volumes under all lights of its scene that cast shadows.
    void BuildShadowVolumes() override;
    /// Makes the volume under one light. Raises `Exception` where it draws what has no outline.
    void DoBuildShadowVolumes(TZEPLight& light);
    /// Draws what the light of this pass does to it, unless its material is transparent.
    void DrawShadows(bool draft) override;

    void Invalidate(TObject* sender) override;
    [[nodiscard]] bool WantsInvalidation() const override;

protected:
    [[nodiscard]] TZEPPassSet SidePasses() const override;
    /// Every change of what it draws calls `Invalidate`, but for what `ShadowLook` tells.
    [[nodiscard]] virtual bool KeepsShape() const { return IsOfKnownClass(); }
    /// Changes with what it draws where that follows from things outside of it.
    [[nodiscard]] virtual std::uint64_t ShadowLook() const { return 0; }
    /// Its shadow volumes are out of date.
    void ForgetShape() { m_shape = 0; }

private:
    [[nodiscard]] std::uint64_t Shape();

    std::uint64_t m_shape = 0; // 0: none was made since the last change
};

} // namespace ZEP
