#pragma once

#include <array>

namespace ZEP {

/// The 80-bit float of streams: 64 bits of mantissa with its leading one, 15 bits of exponent (bias
/// 16383), sign; little-endian.
using TExtendedFloat = std::array<unsigned char, 10>;

/// Exact for every double, infinities included; of a NaN the sign is kept.
[[nodiscard]] TExtendedFloat ToExtended(double value);

/// The nearest double; infinity beyond its range.
[[nodiscard]] double FromExtended(const TExtendedFloat& bytes);

} // namespace ZEP
