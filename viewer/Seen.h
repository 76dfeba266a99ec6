#pragma once

#include "viewer/Objects.h"

#include <vector>

namespace ZEP {

/// What can be seen of objects and all that is below them.
struct TSeen {
    bool All = true;                 ///< nothing is hidden
    std::optional<TBox> Bounds;      ///< absolute; none where nothing draws
    std::vector<TGLArrayd3> Corners; ///< of boxes in it, some ten thousand at most
};

/// \param known  the bounds of all of it, where nothing is hidden; else they are measured
[[nodiscard]] TSeen SeenOf(const std::vector<TZEPObject*>& objects,
                           const std::optional<TBox>& known = {});

} // namespace ZEP
