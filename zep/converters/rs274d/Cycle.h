#pragma once

#include <vector>

namespace ZEP {

/// A hole of a drilling cycle: levels on the axis normal to the plane, millimetres.
struct TRS274DHole {
    int Cycle = 81; ///< 73, 74, 76 or 81 to 89
    double R = 0;   ///< level where drilling begins
    double Bottom = 0;
    double Clear = 0; ///< level that the tool goes back to
    double Peck = 0;  ///< depth of each peck (G73, G83); 0 or less drills at once
    double Dwell = 0; ///< seconds at the bottom (G82, G86, G88, G89)
};

struct TRS274DLevelMove {
    bool Rapid;
    double Level;
};

/// Whether the tool stands still at the bottom.
[[nodiscard]] bool Dwells(const TRS274DHole& hole);

/// How many pecks the hole takes; 1 where it is drilled at once.
[[nodiscard]] double PeckCount(const TRS274DHole& hole);

/// The moves from the R level to the bottom and back to `Clear`. G73 breaks the chip after each
/// peck, G83 goes back to R; both come within 0.254 mm of the last depth. G74, G84 and G85 feed
/// out of the hole as far as R, G89 all the way; the others leave it as a rapid.
void HoleMoves(const TRS274DHole& hole, std::vector<TRS274DLevelMove>& moves);

} // namespace ZEP
