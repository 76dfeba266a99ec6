#pragma once

namespace ZEP {

class TZEPObject;

/// It draws surfaces: lines, points and text have none.
[[nodiscard]] bool HasFaces(const TZEPObject& object);

/// Its surfaces may be seen from behind, and may have been made in any order of their corners.
[[nodiscard]] bool IsOpenSurface(const TZEPObject& object);

} // namespace ZEP
