#pragma once

#include <zep/scene/Geom.h>

#include <optional>

namespace ZEP {

/// An axis-aligned box in absolute coordinates.
struct TBox {
    TGLArrayd3 Min, Max;
};

[[nodiscard]] double DiagonalOf(const TBox& box);
/// It lies in a plane of one z, as good as.
[[nodiscard]] bool IsFlat(const TBox& box);
/// Makes room for the box.
void Widen(std::optional<TBox>& bounds, const std::optional<TBox>& box);

} // namespace ZEP
