#pragma once

#include <zep/Export.h>
#include <zep/framework/Color.h>

#include <optional>

namespace ZEP {

/// The colours of a drawing's colour numbers. From 6 on they are not those that drawing programs
/// show; pictures of many years rely on them.
extern ZEP_CORE_EXPORT const std::array<TColor, 256> DXF_Layer_Colors;

/// The number of the colour nearest to `color` by the squared distance of red, green and blue; the
/// lowest one of several.
[[nodiscard]] ZEP_CORE_EXPORT int find_DXF_color(TColor color);

/// The colour of a number, or of its amount where it is negative (a layer that is off); nothing for
/// 256, which leaves the choice to the layer, and beyond.
[[nodiscard]] ZEP_CORE_EXPORT std::optional<TColor> DXFColor(int number);

} // namespace ZEP
