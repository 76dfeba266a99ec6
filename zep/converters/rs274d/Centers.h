#pragma once

#include <zep/converters/rs274d/Arc.h>

#include <cstdint>

namespace ZEP {

/// What the words I, J and K of an arc count from.
enum class TRS274DCenters : std::uint8_t {
    Unknown, ///< nothing tells
    Incremental,
    Absolute
};

/// A stated centre in both ways.
struct TRS274DCenterChoice {
    TRS274DPlanePoint Incremental, Absolute;
};

/// The one way in which both ends of an arc are as far from its centre; unknown where both are, or
/// neither. A full circle, which fits about any centre, tells nothing.
[[nodiscard]] TRS274DCenters CentersOf(TRS274DPlanePoint start, TRS274DPlanePoint end,
                                       const TRS274DCenterChoice& center);

} // namespace ZEP
