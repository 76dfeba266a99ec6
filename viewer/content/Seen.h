#pragma once

#include "viewer/content/Objects.h"

#include <vector>

namespace ZEP {

/// Nothing is hidden, neither the object nor anything below it.
[[nodiscard]] bool IsSeenWhole(TZEPObject& object);

/// Absolute, of what can be seen of objects and all that is below them.
[[nodiscard]] TExtent SeenOf(const std::vector<TZEPObject*>& objects);

} // namespace ZEP
