#include <zep/view/PixelFormat.h>

#include <algorithm>
#include <array>
#include <tuple>

namespace ZEP {

namespace {

constexpr int MaxPaletteBits = 16;

std::uint8_t Channel(std::uint32_t index, int bits, int shift) {
    if (bits <= 0) return 0;
    const std::uint32_t full = (1U << std::min(bits, MaxPaletteBits)) - 1;
    return static_cast<std::uint8_t>(((index >> shift) & full) * 255U / full);
}

bool Fits(const TPixelFormat& format, const TPixelFormat& request) {
    constexpr std::uint32_t Decisive = pfDrawToWindow | pfSupportOpenGL | pfDoubleBuffer;
    return (format.Flags & Decisive) == (request.Flags & Decisive) &&
           format.PixelType == request.PixelType;
}

/// A quality and what each bit of it costs that is missing; a surplus bit costs 1.
struct Quality {
    int TPixelFormat::*Bits;
    int MissingBit;
};

int Distance(const TPixelFormat& format, const TPixelFormat& request) {
    constexpr std::array Qualities = {
        Quality{&TPixelFormat::StencilBits, 4000}, Quality{&TPixelFormat::AlphaBits, 2000},
        Quality{&TPixelFormat::ColorBits, 1000}, Quality{&TPixelFormat::DepthBits, 1000},
        Quality{&TPixelFormat::AccumBits, 250}};
    int distance = 0;
    for (const Quality& quality : Qualities) {
        const int surplus = format.*quality.Bits - request.*quality.Bits;
        distance += surplus < 0 ? -surplus * quality.MissingBit : surplus;
    }
    return distance;
}

auto Rank(const TPixelFormat& format) {
    const bool software = format.Has(pfGenericFormat) && !format.Has(pfGenericAccelerated);
    const int sign = software ? -1 : 1;
    return std::tuple(!software, sign * format.Has(pfDoubleBuffer), sign * format.DepthBits,
                      sign * format.AccumBits, sign * format.StencilBits, sign * format.ColorBits,
                      sign * format.AlphaBits);
}

} // namespace

std::vector<TPaletteEntry> BuildPalette(const TPixelFormat& format) {
    std::vector<TPaletteEntry> palette(std::size_t{1}
                                       << std::clamp(format.ColorBits, 0, MaxPaletteBits));
    for (std::uint32_t i = 0; i < palette.size(); ++i)
        palette[i] = {Channel(i, format.RedBits, format.RedShift),
                      Channel(i, format.GreenBits, format.GreenShift),
                      Channel(i, format.BlueBits, format.BlueShift)};
    return palette;
}

int ClosestFormat(const std::vector<TPixelFormat>& formats, const TPixelFormat& request) {
    int best = 0;
    int bestDistance = 0;
    for (int i = 1; const TPixelFormat& format : formats) {
        if (Fits(format, request)) {
            const int distance = Distance(format, request);
            if (best == 0 || distance < bestDistance) {
                best = i;
                bestDistance = distance;
            }
        }
        ++i;
    }
    return best;
}

bool ListedBefore(const TPixelFormat& left, const TPixelFormat& right) {
    return Rank(left) < Rank(right);
}

} // namespace ZEP
