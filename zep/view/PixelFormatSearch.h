#pragma once

#include <zep/view/ContextBinding.h>

#include <optional>

namespace ZEP {

/// What a format must offer at least.
struct TFormatRequirement {
    bool Accelerated = true; ///< false: the system's own software renderer and nothing else
    int ColorBits = 0;
    int AlphaBits = 0;
    int StencilBits = 0;
};

/// A format that the window has got.
struct TGrantedFormat {
    int Index = 0;
    TPixelFormat Format;
    TPaletteHandle Palette = 0; ///< only where the format needs one
};

/// Reads all formats, sets the best one that meets the requirement on the binding's window and
/// realises its palette. The deepest wins, of equally deep ones the last; among software formats
/// the first double-buffered one ends the contest. A format that the system refuses is left out
/// and the search goes on.
[[nodiscard]] std::optional<TGrantedFormat> SearchFormat(TContextBinding& binding,
                                                         const TFormatRequirement& requirement);

/// `SearchFormat` with 8 bits of alpha and stencil and 32, 24, 16 and 15 bits of colour in turn.
[[nodiscard]] std::optional<TGrantedFormat> SearchFormat(TContextBinding& binding,
                                                         bool accelerated);

/// Lets the system choose for 48 requests of falling quality and takes the first answer that has
/// exactly the pixel type and the bits of colour, depth, stencil and alpha asked for.
[[nodiscard]] std::optional<TGrantedFormat> RequestFormat(TContextBinding& binding);

/// Request `counter` (0..47) of `RequestFormat`: accelerated ones on even counts, then without
/// accumulation buffer, then less depth, then fewer colours.
[[nodiscard]] TPixelFormat FormatRequest(int counter);

} // namespace ZEP
