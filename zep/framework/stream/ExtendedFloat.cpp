#include <zep/framework/stream/ExtendedFloat.h>

#include <QtEndian>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace ZEP {

namespace {

constexpr std::uint64_t LeadingOne = 1ULL << 63;
constexpr std::uint64_t QuietBit = 1ULL << 62; // all that is kept of a NaN but its sign
constexpr int MantissaShift = 11; // 63 bits behind the leading one here, 52 in a double
constexpr std::uint64_t LostBits = (1ULL << MantissaShift) - 1;
constexpr unsigned Bias = 16383;
constexpr unsigned DoubleBias = 1023;
constexpr unsigned Endless = 0x7FFF;
constexpr unsigned DoubleEndless = 0x7FF;

TExtendedFloat Pack(bool negative, unsigned exponent, std::uint64_t mantissa) {
    TExtendedFloat bytes;
    qToLittleEndian<quint64>(mantissa, bytes.data());
    qToLittleEndian(static_cast<quint16>(exponent | (negative ? 0x8000U : 0U)), bytes.data() + 8);
    return bytes;
}

} // namespace

TExtendedFloat ToExtended(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const bool negative = bits >> 63 != 0;
    const unsigned exponent = static_cast<unsigned>(bits >> 52) & DoubleEndless;
    const std::uint64_t fraction = bits << 12 >> 1; // without the leading one
    if (exponent == DoubleEndless)
        return Pack(negative, Endless, fraction == 0 ? LeadingOne : LeadingOne | QuietBit);
    if (exponent != 0) return Pack(negative, exponent - DoubleBias + Bias, LeadingOne | fraction);
    if (fraction == 0) return Pack(negative, 0, 0);
    const int shift = std::countl_zero(fraction);
    return Pack(negative, Bias - DoubleBias + 1 - static_cast<unsigned>(shift), fraction << shift);
}

double FromExtended(const TExtendedFloat& bytes) {
    const auto mantissa = qFromLittleEndian<quint64>(bytes.data());
    const unsigned head = qFromLittleEndian<quint16>(bytes.data() + 8);
    const bool negative = (head & 0x8000U) != 0;
    const unsigned exponent = head & Endless;
    const unsigned doubleExponent = exponent - Bias + DoubleBias;
    const bool isDouble = (mantissa & LeadingOne) != 0 && (mantissa & LostBits) == 0 &&
                          doubleExponent - 1 < DoubleEndless - 1;
    if (isDouble)
        return std::bit_cast<double>((negative ? LeadingOne : 0) |
                                     (std::uint64_t{doubleExponent} << 52) | (mantissa << 1 >> 12));
    if (exponent == Endless) {
        const double endless = mantissa << 1 == 0 ? std::numeric_limits<double>::infinity()
                                                  : std::numeric_limits<double>::quiet_NaN();
        return negative ? -endless : endless;
    }
    const long double magnitude =
        std::ldexp(static_cast<long double>(mantissa), static_cast<int>(exponent) - 16383 - 63);
    return static_cast<double>(negative ? -magnitude : magnitude);
}

} // namespace ZEP
