#pragma once

#include <zep/Export.h>
#include <zep/scene/Geom.h>

#include <array>
#include <optional>
#include <vector>

namespace ZEP {

class TZEPObject;

/// An axis-aligned box, in absolute coordinates where nothing else is said.
struct TZEPBounds {
    TGLArrayd3 Min, Max;
};

[[nodiscard]] ZEP_CORE_EXPORT double DiagonalOf(const TZEPBounds& bounds);
/// It lies in a plane of one z, as good as.
[[nodiscard]] ZEP_CORE_EXPORT bool IsFlat(const TZEPBounds& bounds);
/// Makes room for the box.
ZEP_CORE_EXPORT void Widen(std::optional<TZEPBounds>& bounds, const std::optional<TZEPBounds>& box);

/// How far boxes reach to all sides: their bounds, and for some fifty directions the corner that
/// lies farthest there, so that a view can be fitted to them whatever their number is.
class ZEP_CORE_EXPORT TZEPExtent {
public:
    /// Nothing where the minimum lies beyond the maximum, or a coordinate is no number that OpenGL
    /// can draw: beyond 1e30.
    void Add(const TZEPBounds& box);
    void Add(const TZEPExtent& other);
    /// What the object itself draws, as far as it reaches; nothing for one that only holds others,
    /// for lights and cameras. A mesh fills its box badly, so that its vertexes count.
    void Add(TZEPObject& object);
    /// The object and all below it, without what is invisible and without layouts; of a layout, the
    /// sheet, visible or not.
    void AddVisible(TZEPObject& object);

    /// None of nothing.
    [[nodiscard]] const std::optional<TZEPBounds>& Bounds() const { return m_bounds; }
    /// Fifty points or none; what was added reaches hardly beyond them, and nowhere beyond their
    /// bounds.
    [[nodiscard]] std::vector<TGLArrayd3> Corners() const;

private:
    static constexpr std::size_t Directions = 50;

    std::optional<TZEPBounds> m_bounds;
    std::array<TGLArrayd3, Directions> m_farthest{};
    std::array<double, Directions> m_reach{};
};

/// It has a place and a form of its own: no group, light or camera. Paper and viewports have, too.
[[nodiscard]] ZEP_CORE_EXPORT bool Draws(const TZEPObject& object);

/// Of all that can be seen of an object and of what is below it, as `TZEPExtent::AddVisible`.
[[nodiscard]] ZEP_CORE_EXPORT TZEPExtent VisibleExtent(TZEPObject& node);

} // namespace ZEP
