#include <zep/framework/Contrast.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr double LeastContrast = 3;
constexpr double GreyChroma = 24; // between the parts of a colour, of 255
/// Of black and of white from this grey alike: sqrt(1.05 * 0.05) - 0.05.
constexpr double MiddleLuminance = 0.179;

/// How bright a part of a colour shines, 0 to 1, by the transfer function of sRGB.
double Linear(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color) {
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) +
           0.0722 * Linear(color.blueF());
}

/// The contrast ratio that accessibility guidelines use: 1 to 21.
double Contrast(const QColor& a, const QColor& b) {
    const double brightness[] = {Luminance(a) + 0.05, Luminance(b) + 0.05};
    return std::max(brightness[0], brightness[1]) / std::min(brightness[0], brightness[1]);
}

bool IsGrey(const QColor& color) {
    const auto [least, most] = std::minmax({color.red(), color.green(), color.blue()});
    return most - least < GreyChroma;
}

QColor Mixed(const QColor& color, const QColor& other, double part) {
    const auto mix = [part](double a, double b) { return static_cast<float>(a + (b - a) * part); };
    return QColor::fromRgbF(mix(color.redF(), other.redF()), mix(color.greenF(), other.greenF()),
                            mix(color.blueF(), other.blueF()));
}

} // namespace

bool IsBright(TColor color) {
    return Luminance(ToQColor(color)) > MiddleLuminance;
}

TColor Readable(TColor color, TColor background) {
    const QColor given = ToQColor(color);
    const QColor behind = ToQColor(background);
    if (Contrast(given, behind) >= LeastContrast) return color;
    const QColor end = IsBright(background) ? Qt::black : Qt::white;
    if (IsGrey(given)) return FromQColor(end);
    double part = 0;
    QColor shown = given;
    while (part < 1 && Contrast(shown, behind) < LeastContrast)
        shown = Mixed(given, end, part += 0.1);
    return FromQColor(shown);
}

} // namespace ZEP
