#pragma once

namespace ZEP {

/// From where the camera looks: `Iso` from the front, right and above, `Top` with y upwards,
/// `Front` along y, `Right` against x.
enum class TDirection { Iso, Top, Front, Right };

} // namespace ZEP
