#pragma once

#include <zep/Export.h>

#include <cstdint>
#include <vector>

namespace ZEP {

/// \name Flags of a pixel format
/// @{
inline constexpr std::uint32_t pfDoubleBuffer = 0x1;
inline constexpr std::uint32_t pfDrawToWindow = 0x4;
inline constexpr std::uint32_t pfSupportOpenGL = 0x20;
/// The system's own renderer answers, not one of the graphics card's maker.
inline constexpr std::uint32_t pfGenericFormat = 0x40;
/// Colours are indices of a palette that the program has to realise.
inline constexpr std::uint32_t pfNeedPalette = 0x80;
/// The system's own renderer, helped by the graphics card.
inline constexpr std::uint32_t pfGenericAccelerated = 0x1000;
/// @}

enum TPixelType : int { ptRGBA = 0, ptColorIndex = 1 };

/// What a window's buffers hold; all zero in what nobody set.
struct TPixelFormat {
    std::uint32_t Flags = 0;
    int PixelType = ptRGBA;
    int ColorBits = 0; ///< of one pixel, alpha included
    int RedBits = 0;
    int RedShift = 0; ///< 0..31
    int GreenBits = 0;
    int GreenShift = 0;
    int BlueBits = 0;
    int BlueShift = 0;
    int AlphaBits = 0;
    int AccumBits = 0; ///< sum over the four channels
    int DepthBits = 0;
    int StencilBits = 0;
    int Samples = 0; ///< of a pixel, where the window has got more than one

    [[nodiscard]] bool Has(std::uint32_t flags) const { return (Flags & flags) == flags; }
    bool operator==(const TPixelFormat&) const = default;
};

/// Multisampling that a host would like: a wish that no format is refused for.
struct TSampleWish {
    int Samples = 0; ///< of a pixel, at most; up to 1: no multisampling
    /// Also where a software renderer draws, which pays for each sample.
    bool InSoftware = false;

    bool operator==(const TSampleWish&) const = default;
};

/// A colour of a logical palette.
struct TPaletteEntry {
    std::uint8_t Red = 0;
    std::uint8_t Green = 0;
    std::uint8_t Blue = 0;

    bool operator==(const TPaletteEntry&) const = default;
};

/// The palette of a format that needs one: 2^ColorBits entries (at most 2^16), entry i made of the
/// bits that the format's shifts and counts cut out of i, spread over 0..255.
[[nodiscard]] ZEP_EXPORT std::vector<TPaletteEntry> BuildPalette(const TPixelFormat& format);

/// The 1-based position of the format nearest to `request`; 0 where none has its flags for window,
/// OpenGL and buffering and its pixel type. A missing bit weighs more than any surplus, one of the
/// stencil most, one of the accumulation buffer least; of equals the first is taken. Whether a
/// format is accelerated does not count.
[[nodiscard]] ZEP_EXPORT int ClosestFormat(const std::vector<TPixelFormat>& formats,
                                           const TPixelFormat& request);

/// The order in which a binding lists formats that it may put in any order: plain software ones
/// from the most useful to the least, then the others from the least useful to the most. The search
/// takes the first double-buffered one of the former and the last of the deepest of the latter, so
/// that it ends at one with an accumulation buffer.
[[nodiscard]] ZEP_EXPORT bool ListedBefore(const TPixelFormat& left, const TPixelFormat& right);

} // namespace ZEP
