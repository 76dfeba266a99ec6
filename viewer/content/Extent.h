#pragma once

#include "viewer/content/Box.h"

#include <array>
#include <optional>
#include <vector>

namespace ZEP {

/// How far boxes reach to all sides: their bounds, and for some fifty directions the corner that
/// lies farthest there, so that a view can be fitted to them whatever their number is.
class TExtent {
public:
    void Add(const TBox& box);
    void Add(const TExtent& other);
    /// None of nothing.
    [[nodiscard]] const std::optional<TBox>& Bounds() const { return m_bounds; }
    [[nodiscard]] std::vector<TGLArrayd3> Corners() const;

private:
    static constexpr std::size_t Directions = 50;

    std::optional<TBox> m_bounds;
    std::array<TGLArrayd3, Directions> m_farthest{};
    std::array<double, Directions> m_reach{};
};

} // namespace ZEP
