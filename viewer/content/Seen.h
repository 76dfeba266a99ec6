#pragma once

#include <zep/view/Extent.h>

#include <vector>

namespace ZEP {

/// Nothing is hidden, neither the object nor anything below it; sheets are seen by themselves.
[[nodiscard]] bool IsSeenWhole(const TZEPObject& object);

/// Absolute, of what can be seen of objects and all that is below them.
[[nodiscard]] TZEPExtent SeenOf(const std::vector<TZEPObject*>& objects);

} // namespace ZEP
