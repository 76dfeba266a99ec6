#pragma once

#include <zep/view/SnapPoint.h>

#include <optional>
#include <utility>
#include <vector>

namespace ZEP {

/// A circle or an arc of one, or of an ellipse: centre + cos t · u + sin t · v.
struct TSnapCircle {
    TGLArrayd3 Center, U, V;
    double From = 0;
    double Sweep = 0; ///< radians
    bool IsWhole = true;

    [[nodiscard]] TGLArrayd3 At(double angle) const;
    /// The angle lies on it.
    [[nodiscard]] bool Holds(double angle) const;
    /// None of an ellipse.
    [[nodiscard]] std::optional<double> Radius() const;
};

/// What is near a line of sight, within a box. Absolute.
struct TSnapBox {
    TGLArrayd3 Min, Max;
    TGLArrayd3 Eye, Sight; ///< the line, and its direction of length 1
    double Reach;          ///< from it

    /// A box meets it, or nearly does. \param half  of its extents
    [[nodiscard]] bool Meets(const TGLArrayd3& middle, const TGLArrayd3& half) const;
};

/// What of an object can be snapped to, in absolute coordinates.
struct TSnapShape {
    std::vector<std::pair<TZEPSnapKind, TGLArrayd3>> Points;
    std::vector<std::pair<TGLArrayd3, TGLArrayd3>> Edges; ///< their middles can be, too
    std::vector<TSnapCircle> Circles;
    bool IsSurface = false; ///< what stands behind it is hidden

    /// \param near  of a mesh only faces that reach into this count
    [[nodiscard]] static TSnapShape Of(TZEPObject& object, const TSnapBox& near);
};

} // namespace ZEP
