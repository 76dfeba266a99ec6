#include <zep/converters/rs274d/ToolPathStatistics.h>

namespace ZEP {

namespace {

void Add(const TToolMove& move, TPathSums& sums) {
    const double seconds = move.End - move.Begin;
    ++sums.Moves;
    switch (move.Kind) {
    case TToolMoveKind::Dwell:
        sums.DwellSeconds += seconds;
        return;
    case TToolMoveKind::Rapid:
        sums.RapidLength += move.Length;
        sums.RapidSeconds += seconds;
        return;
    default:
        sums.CutLength += move.Length;
        sums.CutSeconds += seconds;
    }
}

/// Pecks go down where the one before has ended, or away from there along the same axis.
bool IsOfSameHole(const TToolMove& last, const TToolMove& move) {
    if (last.Line != move.Line || move.Length == 0) return false;
    int others = 0;
    for (std::size_t i = 0; i < move.To.size(); ++i)
        others += move.From[i] == move.To[i] && last.To[i] == move.To[i];
    return others >= 2;
}

} // namespace

TPathSums& TPathSums::operator+=(const TPathSums& other) {
    Moves += other.Moves;
    RapidLength += other.RapidLength;
    CutLength += other.CutLength;
    RapidSeconds += other.RapidSeconds;
    CutSeconds += other.CutSeconds;
    DwellSeconds += other.DwellSeconds;
    return *this;
}

TToolPathStatistics StatisticsOf(const TToolPath& path) {
    TToolPathStatistics statistics;
    statistics.ByTool.resize(path.Tools().size());
    std::optional<TToolMove> lastDrill;
    for (int i = 0; i < path.Count(); ++i) {
        const TToolMove move = path.Move(i);
        Add(move, statistics.ByTool[move.Tool]);
        ++statistics.MovesByKind[static_cast<std::size_t>(move.Kind)];
        const TZEPBounds bounds = path.BoundsOf(i);
        Widen(statistics.Bounds, bounds);
        if (move.Kind == TToolMoveKind::Rapid || move.Kind == TToolMoveKind::Dwell) continue;
        Widen(statistics.CutBounds, bounds);
        statistics.Untimed += move.Length > 0 && move.Feed <= 0;
        if (move.Kind != TToolMoveKind::Drill) continue;
        Widen(statistics.HoleBounds, bounds);
        statistics.Holes += !lastDrill || !IsOfSameHole(*lastDrill, move);
        lastDrill = move;
    }
    for (const TPathSums& sums : statistics.ByTool) statistics.All += sums;
    return statistics;
}

} // namespace ZEP
