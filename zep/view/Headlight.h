#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/Light.h>

namespace ZEP {

/// A light that a view adds to what it shows, infinitely far away. It gives no ambient light, so
/// that the slope of a surface shows whatever its ambient colour is, and little gloss: a surface
/// without shininess has its gloss all over. It stands before its siblings, whenever it comes:
/// OpenGL has eight lights, and a file may bring more.
class ZEP_CORE_EXPORT TZEPViewLight : public TZEPLight {
    Q_OBJECT
public:
    using TZEPLight::TZEPLight;
    /// As the first child, whatever `append` says.
    void SetParentComponentExt(TComponent* parent, bool append) override;

protected:
    /// Sets up OpenGL's light. \param direction  where it comes from, in the loaded frame
    void Send(const TGLArrayd3& direction) const;
};

/// A light that goes with the camera: behind it, somewhat to the left and above, so that it lights
/// what is near and what is far alike, whatever is looked at. One line puts it into a scene:
///
///     Add<TZEPHeadlight>(&scene);
///
/// Surfaces that face the eye are bright, and those that turn away get darker, which shows their
/// shape. What a surface shows beside it is the scene's `SceneAmbientColor` times the material's
/// ambient colour: a dark grey (0x303030) leaves the shades deep, white washes them out.
///
/// Lines and points have no surface. They are lit by the normal that was drawn with last, which is
/// that of a neighbour: under any light they come out in chance shades of their colour. A scene of
/// lines has no lights and a white `SceneAmbientColor`, which shows each line in its own colour. In
/// a mixed one lines glow: black (`SetColor`), with their colour as their material's emission.
///
/// `Color` and `Visible` are for it, place, target, cone, attenuation and shadows are not.
///
/// Defaults: those of any light.
class ZEP_CORE_EXPORT TZEPHeadlight : public TZEPViewLight {
    Q_OBJECT
public:
    using TZEPViewLight::TZEPViewLight;
    void DrawLight(bool shadowPass) override;
};

} // namespace ZEP
