#include <zep/converters/rs274d/Cycle.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr double PeckClearance = 0.254;

bool FeedsToR(int cycle) {
    return cycle == 74 || cycle == 84 || cycle == 85;
}

/// All the way that the tool goes back.
bool FeedsOut(int cycle) {
    return cycle == 89;
}

} // namespace

bool Dwells(const TRS274DHole& hole) {
    constexpr int dwelling[] = {82, 86, 88, 89};
    return hole.Dwell > 0 && std::ranges::binary_search(dwelling, hole.Cycle);
}

double PeckCount(const TRS274DHole& hole) {
    const double depth = hole.R - hole.Bottom;
    const bool pecks = (hole.Cycle == 73 || hole.Cycle == 83) && hole.Peck > 0 && depth > 0;
    // A last peck that is thinner than rounding belongs to the one before.
    return pecks ? std::fmax(1.0, std::ceil(depth / hole.Peck - 1e-9)) : 1.0;
}

void HoleMoves(const TRS274DHole& hole, std::vector<TRS274DLevelMove>& moves) {
    moves.clear();
    const auto pecks = static_cast<long>(PeckCount(hole));
    for (long i = 1; i < pecks; ++i) {
        const double depth = hole.R - static_cast<double>(i) * hole.Peck;
        moves.push_back({false, depth});
        if (hole.Cycle == 83) moves.push_back({true, hole.R});
        moves.push_back({true, depth + PeckClearance});
    }
    moves.push_back({false, hole.Bottom});
    if (FeedsToR(hole.Cycle)) moves.push_back({false, hole.R});
    if (!FeedsToR(hole.Cycle) || hole.Clear != hole.R)
        moves.push_back({!FeedsOut(hole.Cycle), hole.Clear});
}

} // namespace ZEP
