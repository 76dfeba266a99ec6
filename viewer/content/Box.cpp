#include "viewer/content/Box.h"

#include <cmath>

namespace ZEP {

double DiagonalOf(const TBox& box) {
    return std::hypot(box.Max[0] - box.Min[0], box.Max[1] - box.Min[1], box.Max[2] - box.Min[2]);
}

bool IsFlat(const TBox& box) {
    constexpr double LeastRise = 1e-6; // of the diagonal
    return box.Max[2] - box.Min[2] <= LeastRise * DiagonalOf(box);
}

void Widen(std::optional<TBox>& bounds, const std::optional<TBox>& box) {
    if (!box) return;
    if (!bounds) bounds = box;
    MinBoundsd(bounds->Min, box->Min);
    MaxBoundsd(bounds->Max, box->Max);
}

} // namespace ZEP
