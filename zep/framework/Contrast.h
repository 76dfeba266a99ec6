#pragma once

#include <zep/Export.h>
#include <zep/framework/Color.h>

namespace ZEP {

/// Dark colours stand out from it better than bright ones.
[[nodiscard]] ZEP_CORE_EXPORT bool IsBright(TColor color);

/// The colour itself, or where it could not be told from that background, one that can: greys turn
/// to the other end, so that white becomes black, others get as dark or bright as they must. What
/// can be told has a contrast of 3 to 1 at least (Web Content Accessibility Guidelines 2.1,
/// 1.4.11).
[[nodiscard]] ZEP_CORE_EXPORT TColor Readable(TColor color, TColor background);

} // namespace ZEP
