#pragma once

#include <zep/framework/Color.h>

namespace ZEP {

class TZEPMaterialLibrary;
class TZEPObject;

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
