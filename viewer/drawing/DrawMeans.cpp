#include "viewer/drawing/DrawMeans.h"

#include <zep/gl/Names.h>
#include <zep/view/Context.h>

namespace ZEP {

TDrawMeans TDrawMeans::Of(const TZEPContext& context) {
    return {.StencilBits = context.StencilBits(),
            .AccumBits = context.PixelFormat().AccumBits,
            .Subtracts = BlendEquationEXT != nullptr,
            .Samples = context.PixelFormat().Samples};
}

QString TDrawMeans::WhyNo(TViewLook::TShadows shadows) const {
    using enum TViewLook::TShadows;
    if (shadows != Subtracted && shadows != Accumulated) return {};
    if (StencilBits == 0)
        return QStringLiteral("The graphics driver gives this window no stencil buffer, which "
                              "shadows are counted in");
    if (shadows == Subtracted && !Subtracts)
        return QStringLiteral("The graphics driver cannot subtract colours "
                              "(GL_EXT_blend_subtract)");
    if (shadows == Accumulated && AccumBits == 0 && Samples > 1)
        return QStringLiteral("With multisampling there is no accumulation buffer: choose View / "
                              "Multisampling / Never");
    if (shadows == Accumulated && AccumBits == 0)
        return QStringLiteral("The graphics driver gives this window no accumulation buffer");
    return {};
}

QString TDrawMeans::WhyNoMirrors() const {
    if (StencilBits > 0) return {};
    return QStringLiteral("The graphics driver gives this window no stencil buffer, which mirrors "
                          "are marked in");
}

} // namespace ZEP
