#pragma once

#include <zep/Export.h>

namespace ZEP {

class TZEPPanelControl;

/// What programs of a kind do with the mouse.
enum class TZEPMousePreset {
    /// Left orbits, with Shift out of a locked 2D view, and with Ctrl selects in a rectangle;
    /// middle and right shift; middle with Shift orbits, with Ctrl zooms into a rectangle; the
    /// wheel comes nearer to the pointer.
    Cad,
    /// Left selects; middle orbits, with Shift shifts, with Ctrl dollies; right looks around; the
    /// wheel comes nearer to the pointer.
    Modeller,
    /// Left orbits about the target, right shifts, middle and wheel dolly, away from the user
    /// farther.
    Plain
};

/// Sets all that the mouse does, but for `WheelReversed`; nothing is locked or waits.
ZEP_EXPORT void SetMousePreset(TZEPPanelControl& control, TZEPMousePreset preset);

} // namespace ZEP
