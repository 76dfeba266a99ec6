#pragma once

#include <zep/Export.h>
#include <zep/scene/Geom.h>

namespace ZEP {

class TZEPCamera;

/// \name Movements about a point of the scene
/// What the camera's own movements do about its target, done about any absolute point: this stays
/// where it is in the view. All go through `TZEPCamera::Move` and count as offsets; a movement by
/// nothing leaves the view bit for bit.
/// @{

/// Shifts eye and target. \param by  absolute
ZEP_CORE_EXPORT void ShiftBy(TZEPCamera& camera, const TGLArrayd3& by);
/// `TZEPCamera::Orbit`, within the same limits.
ZEP_CORE_EXPORT void OrbitAbout(TZEPCamera& camera, const TGLArrayd3& point, double a, double b);
/// `TZEPCamera::Dolly`: towards the point where `factor` is negative.
ZEP_CORE_EXPORT void DollyAbout(TZEPCamera& camera, const TGLArrayd3& point, double factor);
/// The point comes to the middle of the view and becomes the target, and is seen so near that what
/// was that part of the width fills it. Nothing for a part that is not above 0, and for a point
/// behind the eye.
ZEP_CORE_EXPORT void ZoomInto(TZEPCamera& camera, const TGLArrayd3& point, double part);
/// @}

} // namespace ZEP
