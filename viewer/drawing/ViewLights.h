#pragma once

#include "viewer/content/Box.h"
#include <zep/appearance/effects/Light.h>

namespace ZEP {

/// A light that the view adds, infinitely far away. It gives no ambient light, so that the slope of
/// a surface shows whatever its ambient colour is, and little gloss: a surface without shininess
/// has its gloss all over.
class TViewLight : public TZEPLight {
    Q_OBJECT
public:
    /// \param scene  owns it; it comes before all others: OpenGL has eight, and a file may bring
    /// more
    explicit TViewLight(TZEPScene* scene);

protected:
    /// Sets up OpenGL's light. \param direction  where it comes from, in the loaded frame
    void Send(const TGLArrayd3& direction);
};

/// A light that goes with the camera: behind it, somewhat to the left and above, so that it lights
/// what is near and what is far alike.
class TEyeLight : public TViewLight {
    Q_OBJECT
public:
    using TViewLight::TViewLight;
    void DrawLight(bool shadowPass) override;
};

/// A light that stands still and casts shadows: from the left, the front and above.
class TSunLight : public TViewLight {
    Q_OBJECT
public:
    explicit TSunLight(TZEPScene* scene);
    /// Moves to where the content lies far below it.
    void ShineOn(const TBox& content);
    void DrawLight(bool shadowPass) override;
};

/// How far off a light has to be that shines on all of the content in one direction.
[[nodiscard]] double FarFrom(const TBox& content);

} // namespace ZEP
