#pragma once

#include <zep/Export.h>
#include <zep/scene/Geom.h>

#include <array>
#include <span>

namespace ZEP {

/// The sixteen control points of a bicubic patch, row by row. Columns to the right and rows
/// downwards show its inside, so that the cross product of the derivatives along a row and along
/// a column points outwards.
using TBezierPatch = std::array<TGLArrayf3, 16>;

/// In the order of the teapot's published parts.
enum class TTeapotGroup : unsigned char { Body, Handle, Spout, Lid };

/// A patch of the teapot's table.
struct TTeapotPatch {
    TTeapotGroup Group;
    int Images; ///< 2: itself and its mirror image in y; 4: these and theirs in x
    std::array<unsigned char, 16> Points;
};

[[nodiscard]] ZEP_CORE_EXPORT std::span<const TTeapotPatch> TeapotPatches();

/// Image `image` (0 to `Images` - 1) of a patch, in the table's units.
[[nodiscard]] ZEP_CORE_EXPORT TBezierPatch TeapotImage(const TTeapotPatch& patch, int image);

} // namespace ZEP
