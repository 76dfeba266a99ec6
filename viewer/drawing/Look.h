#pragma once

#include <zep/framework/Color.h>

namespace ZEP {

class TZEPMaterialLibrary;
class TZEPObject;

/// Colours of the view, chosen to be told apart on its dark background.
namespace Look {

inline constexpr TColor Sky{0x33261B};    ///< upper edge of the background
inline constexpr TColor Ground{0x17110D}; ///< lower edge
inline constexpr TColor Grid{0xD8C8B8};
inline constexpr TColor GridOnBright{0x483828};
inline constexpr TColor AxisX{0x5B5BF0};
inline constexpr TColor AxisY{0x6BCB6B};
inline constexpr TColor AxisZ{0xFF9B5C};

} // namespace Look

/// For a colour that the reader of programs gives; another one stays.
[[nodiscard]] TColor ShownFor(TColor color);

/// Gives what was read from a program the colours of the view in place of the reader's, which are
/// the pure ones: its tool colours in turn, and that of rapid moves. Moves and holes get their
/// widths.
void ApplyLook(TZEPObject& root);

/// Pictures take the place of the colour of a surface and are lit with it, as whoever made a model
/// saw them. The reader blends them with white.
void ApplyLook(TZEPMaterialLibrary& materials);

} // namespace ZEP
