#pragma once

#include <zep/framework/Color.h>

#include <optional>

namespace ZEP {

/// How a view shows its scene: what the View menu chooses.
struct TViewLook {
    enum class TFog { Off, Linear, Exp, Exp2 };
    /// How shadows are drawn: as the scene itself has it, not at all, or by one of the two methods.
    enum class TShadows { Own, Off, Subtracted, Accumulated };

    /// How surfaces are drawn.
    enum class TFaces { Shaded, Edged, HiddenLine, Wire };

    /// Multisampling, which smooths what moves, too.
    enum class TSamples { ByHardware, Always, Never };

    bool Lights = true;
    bool Headlight = false;
    TFog Fog = TFog::Off;
    bool Flat = false;
    TFaces Faces = TFaces::Shaded;
    TShadows Shadows = TShadows::Own;
    bool Reflections = true; ///< mirrors mirror
    bool Ground = false;     ///< below surfaces; see `TGround`
    TSamples Samples = TSamples::ByHardware;
    std::optional<TColor> Background{}; ///< none: the view's own

    bool operator==(const TViewLook&) const = default;

    /// As the user's settings keep it; what they do not hold, or hold wrongly, is as above.
    [[nodiscard]] static TViewLook Load();
    void Save() const;
};

} // namespace ZEP
