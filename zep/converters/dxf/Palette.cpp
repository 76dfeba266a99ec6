#include <zep/converters/dxf/Palette.h>

#include <algorithm>
#include <cstdlib>

namespace ZEP {

namespace {

constexpr std::array<TColor, 10> Named = {clBlack, clRed,     clYellow, clLime, clAqua,
                                          clBlue,  clFuchsia, clWhite,  clGray, clSilver};
constexpr std::array<unsigned, 6> Greys = {51, 91, 132, 173, 214, 255};
constexpr std::array<double, 5> Values = {1, 0.65, 0.5, 0.3, 0.15};
constexpr int UncolouredNumber = 7;
constexpr int FirstHue = 10;
constexpr int FirstGrey = 250;
constexpr int HuesInSixth = 4;

constexpr TColor Mixed(unsigned red, unsigned green, unsigned blue) {
    return {red | green << 8U | blue << 16U};
}

/// How much of a primary colour is in a hue, 0 to 1, that lies `distance` hues of 24 from it.
double Share(int hue, int primary) {
    const int apart = std::abs(hue - primary);
    const int distance = apart > 12 ? 24 - apart : apart;
    return std::clamp(2 - static_cast<double>(distance) / HuesInSixth, 0.0, 1.0);
}

unsigned Byte(double share, double value, bool isPale) {
    return static_cast<unsigned>((isPale ? 0.5 + share / 2 : share) * value * 255);
}

} // namespace

TColor DXFPaletteColor(int number) {
    if (number < 0 || number > 255) return clWhite;
    if (number < FirstHue) return Named[static_cast<std::size_t>(number)];
    if (number >= FirstGrey) {
        const unsigned grey = Greys[static_cast<std::size_t>(number - FirstGrey)];
        return Mixed(grey, grey, grey);
    }
    const int hue = number / 10 - 1;
    const double value = Values[static_cast<std::size_t>(number % 10 / 2)];
    const bool isPale = number % 2 == 1;
    return Mixed(Byte(Share(hue, 0), value, isPale), Byte(Share(hue, 8), value, isPale),
                 Byte(Share(hue, 16), value, isPale));
}

TColor DXFTrueColor(int value, int number) {
    if (value == 0 && number == UncolouredNumber) return clWhite;
    const auto rgb = static_cast<unsigned>(value);
    return Mixed(rgb >> 16U & 0xFFU, rgb >> 8U & 0xFFU, rgb & 0xFFU);
}

} // namespace ZEP
