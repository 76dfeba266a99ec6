#pragma once

#include <QIcon>

namespace ZEP {

/// A drawing of the viewer's own by its name; null where Qt's SVG plugin is missing.
[[nodiscard]] QIcon Icon(const char* name);

} // namespace ZEP
