#pragma once

#include "framework/Color.h"

namespace ZEP {

/// The colour that drawing programs show for a colour number from 1 to 255: nine named ones, 24
/// hues in ten shades each, six greys. White beyond.
[[nodiscard]] TColor DXFPaletteColor(int number);

/// A true colour (group 420, 0x00RRGGBB).
[[nodiscard]] TColor DXFTrueColor(int value);

} // namespace ZEP
