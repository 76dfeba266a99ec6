#pragma once

#include <zep/framework/Color.h>

namespace ZEP {

/// The colour that drawing programs show for a colour number from 1 to 255: nine named ones, 24
/// hues in ten shades each, six greys. White beyond.
[[nodiscard]] TColor DXFPaletteColor(int number);

/// A true colour (group 420, 0x00RRGGBB) that stands beside a colour number. Black with number 7
/// means what is drawn on a sheet without a colour of its own: white, as number 7 alone.
[[nodiscard]] TColor DXFTrueColor(int value, int number);

} // namespace ZEP
