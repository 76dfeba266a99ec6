#pragma once

#include <zep/scene/ForEach.h>
#include <zep/view/Extent.h>

#include <optional>

namespace ZEP {

/// Absolute, of all that draws below `root`, seen or not, but for what is on sheets.
[[nodiscard]] TZEPExtent ExtentOf(TZEPObject& root);

} // namespace ZEP
