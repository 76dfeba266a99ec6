#pragma once

#include <zep/Export.h>

#include <span>

namespace ZEP {

/// \name Sub-pixel samples
/// Offsets within a pixel, -0.5 to 0.5 on both axes, spread so that the mean of as many frames,
/// each shifted by one of them, has smooth edges. They are the published sample sets of the
/// accumulation-buffer examples of the OpenGL programming guide; the number in a name is that of
/// its samples.
/// @{
struct TZEPJitter {
    float X, Y;
};

extern ZEP_CORE_EXPORT const std::span<const TZEPJitter> j2;
extern ZEP_CORE_EXPORT const std::span<const TZEPJitter> j3;
extern ZEP_CORE_EXPORT const std::span<const TZEPJitter> j4;
extern ZEP_CORE_EXPORT const std::span<const TZEPJitter> j8;
extern ZEP_CORE_EXPORT const std::span<const TZEPJitter> j15;
extern ZEP_CORE_EXPORT const std::span<const TZEPJitter> j24;
extern ZEP_CORE_EXPORT const std::span<const TZEPJitter> j66;
/// @}

/// The table that the jitter index of a camera counts in; `j8` at first.
[[nodiscard]] ZEP_CORE_EXPORT std::span<const TZEPJitter> CurrentJitter();
/// \param table  stays the caller's and must live on
ZEP_CORE_EXPORT void SetCurrentJitter(std::span<const TZEPJitter> table);

} // namespace ZEP
