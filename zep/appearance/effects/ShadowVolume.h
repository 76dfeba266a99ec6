#pragma once

#include <zep/gl/DisplayList.h>
#include <zep/scene/Geom.h>

#include <GL/gl.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <span>

namespace ZEP {

/// Where a caster and its light stand, in the absolute frame.
struct TZEPCasting {
    TGLMatrixd4 Place = idd; ///< from the caster's frame
    TGLArrayd3 Center{};     ///< of a ball about the caster,
    double Radius = 0;       ///< and its radius
    TGLArrayd3 Eye{};        ///< of the light
    bool IsAimed = false;    ///< rays leave the light; else all go from it to the centre
    bool IsExact = false;    ///< each part casts for itself; else the outline of the whole alone
};

/// The shadow volume of one caster under one light: the space behind the caster, without end, as
/// the sides of its outline, in the absolute frame. Front faces look outwards.
///
/// The outline is that of all that the caster draws, as it is seen from the light. The method is
/// that of F. Crow, "Shadow algorithms for computer graphics", 1977.
class TZEPShadowVolume {
public:
    /// None where the light sees nothing of the caster: it stands at its centre, or something is no
    /// number.
    [[nodiscard]] static std::optional<TZEPShadowVolume> Of(const TZEPCasting& casting);

    /// Draws the caster as the light sees it, with culling as it is set.
    /// \return  what feedback mode tells of it; valid until the next call
    [[nodiscard]] std::span<const GLfloat> Look(const std::function<void()>& draw) const;
    /// A display list of the volume's sides; 0 where there are none. Raises `Exception`.
    [[nodiscard]] TDisplayList Compile(std::span<const GLfloat> tokens) const;

private:
    class TSides;

    TZEPShadowVolume() = default;

    TZEPCasting m_casting;
    TGLMatrixd4 m_view{}; ///< from the absolute frame to the light's
    TGLMatrixd4 m_projection{};
    int m_half = 0; ///< of the sides of the viewport, in pixels
};

/// Tells tokens of feedback mode apart.
[[nodiscard]] std::uint64_t HashOf(std::span<const GLfloat> tokens);

} // namespace ZEP
