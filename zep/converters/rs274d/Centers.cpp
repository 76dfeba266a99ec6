#include <zep/converters/rs274d/Centers.h>

namespace ZEP {

namespace {

bool Fits(TRS274DPlanePoint start, TRS274DPlanePoint end, TRS274DPlanePoint center) {
    const TRS274DTurn turn(start, end, center, true, 1);
    return turn.HasRadius() && !turn.IsSpiral();
}

} // namespace

TRS274DCenters CentersOf(TRS274DPlanePoint start, TRS274DPlanePoint end,
                         const TRS274DCenterChoice& center) {
    if (IsSamePoint(start, end)) return TRS274DCenters::Unknown;
    const bool isIncremental = Fits(start, end, center.Incremental);
    if (isIncremental == Fits(start, end, center.Absolute)) return TRS274DCenters::Unknown;
    return isIncremental ? TRS274DCenters::Incremental : TRS274DCenters::Absolute;
}

} // namespace ZEP
