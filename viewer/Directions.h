#pragma once

namespace ZEP {

/// From where the camera looks: `Iso` from the front, right and above, `Top` with y upwards,
/// `Front` along y, `Right` against x; `Left`, `Back`, `Bottom` against these.
enum class TDirection { Iso, Top, Front, Right, Left, Back, Bottom };

} // namespace ZEP
