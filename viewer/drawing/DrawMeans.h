#pragma once

#include "viewer/drawing/LookChoices.h"

namespace ZEP {

class TZEPContext;

/// What a rendering context offers to shadows and mirrors.
struct TDrawMeans {
    int StencilBits = 0;
    int AccumBits = 0;
    bool Subtracts = false; ///< blending can subtract
    int Samples = 0;        ///< of a pixel, where there are several

    /// Of one that was created.
    [[nodiscard]] static TDrawMeans Of(const TZEPContext& context);
    /// Why such shadows cannot be drawn; empty where they can.
    [[nodiscard]] QString WhyNo(TViewLook::TShadows shadows) const;
    [[nodiscard]] QString WhyNoMirrors() const;
};

} // namespace ZEP
