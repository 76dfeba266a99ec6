#pragma once

#include <QString>

namespace ZEP {

/// What mouse buttons and keys do, as a table of rich text.
[[nodiscard]] QString KeysHelp();

} // namespace ZEP
