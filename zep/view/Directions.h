#pragma once

#include <zep/Export.h>
#include <zep/scene/Geom.h>

namespace ZEP {

class TZEPCamera;

/// From where the camera looks: `Iso` from the front, right and above, `Top` with y upwards,
/// `Front` along y, `Right` against x; `Left`, `Back`, `Bottom` against these.
enum class TDirection { Iso, Top, Front, Right, Left, Back, Bottom };

/// From what is looked at to the eye, of any length. From the top it leans a little to the front,
/// so that y points up.
[[nodiscard]] ZEP_CORE_EXPORT TGLArrayd3 ToEye(TDirection direction);

/// Has the camera look at its target from there, in its own frame, from as far as before. Ends all
/// offsets. `FitCamera` then brings into view what is to be seen.
ZEP_CORE_EXPORT void LookFrom(TZEPCamera& camera, TDirection direction);

} // namespace ZEP
