#pragma once

#include <zep/scene/Geom.h>

namespace ZEP {

/// The frame of flat entities whose plane is normal to `extrusion` (groups 210, 220, 230): the
/// rotation from it to the coordinates of the drawing. Its x axis is at right angles to the
/// drawing's z, or to its y where the extrusion is less than 1/64 off z in x and in y. The identity
/// where the extrusion is (0, 0, 1), of length 0 or not finite.
[[nodiscard]] TGLMatrixd4 ExtrusionFrame(const TGLArrayd3& extrusion);

/// Degrees about the x, y and z axes that make a transform (scene/XForm.h) turn as the matrix does.
/// \param rotation  at right angles and of unit scale
[[nodiscard]] TGLArrayd3 RotationAngles(const TGLMatrixd4& rotation);

} // namespace ZEP
