#pragma once

#include <zep/Export.h>

#include <QString>

#include <functional>

namespace ZEP {

enum class TMessageIcon { Information, Warning, Hand };

using TMessageHandler =
    std::function<void(const QString& text, const QString& title, TMessageIcon icon)>;

/// Tells the user something that has no caller to report to. Without a window system it writes to
/// standard error; the library with windows shows a message box.
ZEP_CORE_EXPORT void ShowMessage(const QString& text, const QString& title, TMessageIcon icon);

/// Replaces what `ShowMessage` does and gives back what it did; an empty handler restores writing
/// to standard error.
ZEP_CORE_EXPORT TMessageHandler SetMessageHandler(TMessageHandler handler);

} // namespace ZEP
