#include <zep/converters/dxf/annotation/DimensionText.h>

#include <zep/converters/dxf/annotation/DimensionStyle.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>
#include <numeric>

namespace ZEP {

namespace {

constexpr int MostDecimals = 8;
constexpr int DefaultDecimals = 4;
constexpr double InchesOfFoot = 12;

enum TLengthUnit { luScientific = 1, luDecimal, luEngineering, luArchitectural, luFractional };
enum TAngleUnit { auDegrees, auMinutes, auGrads, auRadians };
/// Of the value that says which zeros are left out.
enum TZeroFlag { zfKeepFeet = 1, zfKeepInches = 2, zfLeading = 4, zfTrailing = 8 };

std::string FormattedNumber(double value, std::chars_format format, int decimals) {
    constexpr std::size_t longest = 400;
    std::array<char, longest> digits{};
    const auto result =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, format, decimals);
    return {digits.data(), result.ptr};
}

std::string WithoutZeros(std::string text, int zeros) {
    if ((zeros & zfTrailing) != 0 && text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.ends_with('.')) text.pop_back();
    }
    if ((zeros & zfLeading) != 0 && text.starts_with("0.")) text.erase(0, 1);
    return text;
}

char SeparatorOf(const TDXFDimensionStyle& style) {
    const int separator = style.Integer(dvSeparator, '.');
    return separator > ' ' && separator < 127 ? static_cast<char>(separator) : '.';
}

/// Of a number that is not negative.
std::string Decimal(double value, int decimals, int zeros, const TDXFDimensionStyle& style) {
    std::string text = WithoutZeros(
        FormattedNumber(value, std::chars_format::fixed, std::clamp(decimals, 0, MostDecimals)),
        zeros);
    std::ranges::replace(text, '.', SeparatorOf(style));
    return text;
}

/// "3-1/2" or "3 1/2".
std::string Fraction(double value, int decimals, const char* between) {
    const auto parts = 1LL << std::clamp(decimals, 0, MostDecimals);
    const auto all = std::llround(value * static_cast<double>(parts));
    const auto whole = all / parts, rest = all % parts;
    if (rest == 0) return std::to_string(whole);
    const auto common = std::gcd(rest, parts);
    const std::string fraction =
        std::to_string(rest / common) + "/" + std::to_string(parts / common);
    return whole == 0 ? fraction : std::to_string(whole) + between + fraction;
}

/// Feet and inches. Without flags neither feet nor inches of 0 are shown.
std::string FeetAndInches(double inches, int decimals, int zeros, bool isArchitectural,
                          const TDXFDimensionStyle& style) {
    constexpr int kinds = 3;
    const double step = isArchitectural ? std::exp2(decimals) : std::pow(10, decimals);
    const double rounded = std::round(inches * step) / step;
    const double feet = std::floor(rounded / InchesOfFoot);
    const double rest = rounded - feet * InchesOfFoot;
    const int kind = zeros & kinds; // 0 neither, 1 both, 2 feet, 3 inches
    const bool showsFeet = feet != 0 || kind == 1 || kind == 2;
    const bool showsInches = rest != 0 || kind == 1 || kind == 3 || !showsFeet;
    std::string text;
    if (showsFeet) text = FormattedNumber(feet, std::chars_format::fixed, 0) + "'";
    if (showsFeet && showsInches) text += "-";
    if (showsInches)
        text += (isArchitectural ? Fraction(rest, decimals, " ")
                                 : Decimal(rest, decimals, zeros, style)) +
                "\"";
    return text;
}

std::string Scientific(double value, int decimals, const TDXFDimensionStyle& style) {
    std::string text = FormattedNumber(value, std::chars_format::scientific, decimals);
    std::ranges::replace(text, 'e', 'E');
    std::ranges::replace(text, '.', SeparatorOf(style));
    return text;
}

std::string Unsigned(double value, int decimals, int zeros, const TDXFDimensionStyle& style) {
    constexpr double most = 1e15; // beyond, no fraction is exact
    decimals = std::clamp(decimals, 0, MostDecimals);
    const int unit = value < most ? style.Integer(dvUnit, luDecimal) : luDecimal;
    switch (unit) {
    case luScientific:
        return Scientific(value, decimals, style);
    case luEngineering:
    case luArchitectural:
        return FeetAndInches(value, decimals, zeros, unit == luArchitectural, style);
    case luFractional:
        return Fraction(value, decimals, " ");
    default:
        return Decimal(value, decimals, zeros, style);
    }
}

std::string Signed(double value, int decimals, int zeros, const TDXFDimensionStyle& style) {
    std::string text(value < 0 ? 1 : 0, '-');
    return text.append(Unsigned(std::abs(value), decimals, zeros, style));
}

std::string ToleranceText(double value, const char* plus, const TDXFDimensionStyle& style) {
    const int decimals = style.Integer(dvToleranceDecimals, DefaultDecimals);
    std::string text = value < 0 ? "-" : plus;
    return text.append(Unsigned(std::abs(value), decimals, style.Integer(dvZeros), style));
}

std::string WithTolerances(double length, std::string text, const TDXFDimensionStyle& style) {
    const double upper = style.Number(dvUpperTolerance, 0);
    const double lower = style.Number(dvLowerTolerance, 0);
    const bool hasLimits = style.Integer(dvLimits) != 0;
    if (!hasLimits && style.Integer(dvTolerances) == 0) return text;
    if (!hasLimits && upper == lower) return text + "%%p" + ToleranceText(upper, "", style);
    const double times = style.Number(dvToleranceHeight, 1);
    const std::string height =
        "{\\H" + FormattedNumber(times, std::chars_format::general, 6) + "x;\\S";
    if (hasLimits) {
        const double factor = style.Number(dvLengthFactor, 1);
        const auto limit = [&](double value) {
            return Signed(value, style.Integer(dvDecimals, DefaultDecimals), style.Integer(dvZeros),
                          style);
        };
        const double value = length * std::abs(factor);
        return height + limit(value + upper) + "^ " + limit(value - lower) + ";}";
    }
    return text + height + ToleranceText(upper, "+", style) + "^ " +
           ToleranceText(-lower, "+", style) + ";}";
}

std::string Minutes(double degrees, int decimals, const TDXFDimensionStyle& style) {
    constexpr double sixty = 60;
    const double parts = decimals > 2 ? sixty * sixty : decimals > 0 ? sixty : 1;
    const double all = std::round(degrees * parts) / parts;
    std::string text = FormattedNumber(std::floor(all + 1e-9), std::chars_format::fixed, 0) + "%%d";
    const double minutes = std::max((all - std::floor(all + 1e-9)) * sixty, 0.0);
    if (decimals > 0)
        text += FormattedNumber(std::floor(minutes + 1e-6), std::chars_format::fixed, 0) + "'";
    if (decimals > 2)
        text += Decimal((minutes - std::floor(minutes + 1e-6)) * sixty + 1e-9,
                        decimals > 4 ? decimals - 4 : 0, 0, style) +
                "\"";
    return text;
}

} // namespace

std::string DXFLengthText(double length, const TDXFDimensionStyle& style) {
    double value = length * std::abs(style.Number(dvLengthFactor, 1));
    const double step = style.Number(dvRound, 0);
    if (step > 0 && std::isfinite(value / step)) value = std::round(value / step) * step;
    if (!std::isfinite(value)) return {};
    return Signed(value, style.Integer(dvDecimals, DefaultDecimals), style.Integer(dvZeros), style);
}

std::string DXFAngleText(double angle, const TDXFDimensionStyle& style) {
    constexpr double straight = 180, grads = 200;
    int decimals = style.Integer(dvAngleDecimals, 0);
    if (decimals < 0) decimals = style.Integer(dvDecimals, DefaultDecimals);
    const int zeros = style.Integer(dvAngleZeros) << 2; // 1 leading, 2 trailing
    switch (style.Integer(dvAngleUnit)) {
    case auMinutes:
        return Minutes(angle * straight / std::numbers::pi, decimals, style);
    case auGrads:
        return Decimal(angle * grads / std::numbers::pi, decimals, zeros, style) + "g";
    case auRadians:
        return Decimal(angle, decimals, zeros, style) + "r";
    default:
        return Decimal(angle * straight / std::numbers::pi, decimals, zeros, style) + "%%d";
    }
}

std::string DXFMeasuredText(double length, const TDXFDimensionStyle& style,
                            const std::string& prefix) {
    const std::string post(style.Text(dvPost));
    const std::string text = DXFLengthText(length, style);
    const auto mark = post.find("<>");
    const std::string before =
        mark == std::string::npos || mark == 0 ? prefix : post.substr(0, mark);
    const std::string after = mark == std::string::npos ? post : post.substr(mark + 2);
    return WithTolerances(length, before + text, style) + after;
}

} // namespace ZEP
