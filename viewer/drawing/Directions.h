#pragma once

#include <zep/scene/Geom.h>

namespace ZEP {

/// From where the camera looks: `Iso` from the front, right and above, `Top` with y upwards,
/// `Front` along y, `Right` against x; `Left`, `Back`, `Bottom` against these.
enum class TDirection { Iso, Top, Front, Right, Left, Back, Bottom };

/// From what is looked at to the eye, of any length. From the top it leans a little to the front,
/// so that y points up.
[[nodiscard]] TGLArrayd3 ToEye(TDirection direction);

} // namespace ZEP
