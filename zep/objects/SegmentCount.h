#pragma once

#include <algorithm>

namespace ZEP {

/// More pieces than any screen or sheet of paper shows of a curve.
inline constexpr int MostSegments = 1'000'000;

/// A count of a curve's pieces, brought into 3 to `MostSegments`.
[[nodiscard]] inline int SegmentCount(int wanted) {
    return std::clamp(wanted, 3, MostSegments);
}

} // namespace ZEP
