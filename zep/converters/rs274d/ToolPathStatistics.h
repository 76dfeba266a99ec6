#pragma once

#include <zep/converters/rs274d/ToolPath.h>

namespace ZEP {

/// Sums of moves: millimetres and seconds.
struct TPathSums {
    int Moves = 0;
    double RapidLength = 0, CutLength = 0;
    double RapidSeconds = 0, CutSeconds = 0, DwellSeconds = 0;

    TPathSums& operator+=(const TPathSums& other);
    [[nodiscard]] double Seconds() const { return RapidSeconds + CutSeconds + DwellSeconds; }
};

/// What a machinist asks before pressing start. A cut is a feed, an arc or the drilling of a hole,
/// wherever the material is.
struct TToolPathStatistics {
    TPathSums All;
    std::vector<TPathSums> ByTool; ///< as `TToolPath::Tools`
    std::array<int, ToolMoveKinds> MovesByKind{};
    int Holes = 0;                        ///< a hole that is pecked is one
    int Untimed = 0;                      ///< cuts with a way and without a feed: times lack them
    std::optional<TZEPBounds> Bounds;     ///< of all moves; none without moves
    std::optional<TZEPBounds> CutBounds;  ///< of the cuts; its lowest z is the deepest one
    std::optional<TZEPBounds> HoleBounds; ///< of what is drilled
};

/// In one pass over the moves: 1,000,000 take less than 0.1 s.
[[nodiscard]] ZEP_CORE_EXPORT TToolPathStatistics StatisticsOf(const TToolPath& path);

} // namespace ZEP
