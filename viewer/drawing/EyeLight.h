#pragma once

#include "appearance/Light.h"

namespace ZEP {

/// A light that goes with the camera: infinitely far behind it, somewhat to the left and above, so
/// that it lights what is near and what is far alike. It gives no ambient light, so that the slope
/// of a surface shows whatever its ambient colour is, and little gloss: a surface without shininess
/// has its gloss all over.
class TEyeLight : public TZEPLight {
    Q_OBJECT
public:
    /// \param scene  owns it; it takes the first of OpenGL's lights there
    explicit TEyeLight(TZEPScene* scene);

    void DrawLight(bool shadowPass) override;
};

} // namespace ZEP
