#pragma once

#include <zep/Export.h>
#include <zep/scene/Geom.h>

#include <QSize>

#include <optional>

namespace ZEP {

class TZEPCamera;

/// \name From a view into the scene and back
/// Inverses of each other, as the camera looks now. Places in a view are device pixels from its
/// upper left corner, whole numbers at the corners of pixels; the third coordinate is the depth, 0
/// at the near plane and 1 at the far one. None for a view without size.
/// @{
[[nodiscard]] ZEP_CORE_EXPORT std::optional<TGLArrayd3>
ToWorld(const TZEPCamera& camera, const QSize& view, const TGLArrayd3& place);
/// None for a point in the plane of the eye, too.
[[nodiscard]] ZEP_CORE_EXPORT std::optional<TGLArrayd3>
ToView(const TZEPCamera& camera, const QSize& view, const TGLArrayd3& world);
/// @}

} // namespace ZEP
