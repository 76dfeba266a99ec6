#pragma once

#include <zep/framework/Color.h>

namespace ZEP {

class TZEPMaterial;

/// Smooth lines carry this transparency: enough to be drawn where blending is on.
inline constexpr float LineTransparency = 1e-5F;

/// What the own material of an object would be that has only a colour: objects draw with it as
/// long as nobody asked for their own. It must not be changed.
/// \param color  ambient and diffuse colour of both faces; null: those of a new material
/// \param line   with the transparency of smooth lines
/// Stays valid until the next call of `TrimSharedMaterials`.
TZEPMaterial& SharedMaterial(const TColor* color, bool line);

/// Forgets the shared materials when there are more than a scene of few colours needs; called
/// between frames.
void TrimSharedMaterials();

} // namespace ZEP
