#include "viewer/content/Extent.h"

#include <algorithm>
#include <cstdlib>

namespace ZEP {

namespace {

/// Along the axes, between them, and what is up and down in isometric views: (1, 1, 2) and its
/// like.
std::vector<std::array<int, 3>> MakeDirections() {
    std::vector<std::array<int, 3>> directions;
    for (int x = -2; x <= 2; ++x)
        for (int y = -2; y <= 2; ++y)
            for (int z = -2; z <= 2; ++z) {
                const int largest = std::max({std::abs(x), std::abs(y), std::abs(z)});
                const int sum = std::abs(x) + std::abs(y) + std::abs(z);
                const bool up = largest == 2 && sum == 4 && x != 0 && y != 0 && z != 0;
                if (largest == 1 || up) directions.push_back({x, y, z});
            }
    return directions;
}

const std::vector<std::array<int, 3>>& AllDirections() {
    static const std::vector<std::array<int, 3>> directions = MakeDirections();
    return directions;
}

double Reach(const std::array<int, 3>& direction, const TGLArrayd3& point) {
    return direction[0] * point[0] + direction[1] * point[1] + direction[2] * point[2];
}

} // namespace

void TExtent::Add(const TBox& box) {
    const bool first = !m_bounds;
    Widen(m_bounds, box);
    const auto& directions = AllDirections();
    for (std::size_t i = 0; i < Directions; ++i) {
        TGLArrayd3 corner;
        for (std::size_t k = 0; k < 3; ++k)
            corner[k] = directions[i][k] < 0 ? box.Min[k] : box.Max[k];
        const double reach = Reach(directions[i], corner);
        if (!first && !(reach > m_reach[i])) continue;
        m_reach[i] = reach;
        m_farthest[i] = corner;
    }
}

void TExtent::Add(const TExtent& other) {
    for (const TGLArrayd3& corner : other.Corners()) Add(TBox{corner, corner});
}

std::vector<TGLArrayd3> TExtent::Corners() const {
    if (!m_bounds) return {};
    return {m_farthest.begin(), m_farthest.end()};
}

} // namespace ZEP
