#pragma once

#include <zep/Export.h>
#include <zep/scene/Geom.h>

#include <array>
#include <cstddef>
#include <optional>

namespace ZEP {

/// A plane at which a view cuts the scene open, in absolute coordinates. What lies beyond it is
/// neither drawn nor picked.
///
/// Defaults: off, across the x axis at the origin.
struct TZEPSection {
    TGLArrayd3 Normal = unitx; ///< to what is cut away, of any length above 0
    double Distance = 0;       ///< of the plane from the origin, along the normal
    bool On = false;

    /// Cuts away the other side.
    [[nodiscard]] constexpr TZEPSection Flipped() const {
        return {{-Normal[0], -Normal[1], -Normal[2]}, -Distance, On};
    }
    /// What stays has a·x + b·y + c·z + d >= 0; none where it is off or no plane.
    [[nodiscard]] ZEP_CORE_EXPORT std::optional<TGLArrayd4> Plane() const;
    bool operator==(const TZEPSection&) const = default;
};

/// OpenGL's clip planes 1 to 3 are theirs; 0 is that of mirrors, and the others are the host's.
inline constexpr std::size_t SectionCount = 3;
using TZEPSections = std::array<TZEPSection, SectionCount>;

/// One of them cuts.
[[nodiscard]] ZEP_CORE_EXPORT bool AnyCuts(const TZEPSections& sections);

/// What the view that draws cuts away.
struct TZEPCut {
    TZEPSections Sections;
    std::optional<TGLMatrixd4> View; ///< `TZEPSceneCamera::ExactView`
};

} // namespace ZEP
