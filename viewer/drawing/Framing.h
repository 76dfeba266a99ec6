#pragma once

#include <zep/scene/Geom.h>

#include <vector>

namespace ZEP {

class TZEPCamera;

/// Moves a perspective camera along and across its view to where the points fill a view of that
/// width to height as far as they can, with an even margin. Direction and planes stay.
void FrameTightly(TZEPCamera& camera, const std::vector<TGLArrayd3>& points, double aspect);

} // namespace ZEP
