#pragma once

#include <zep/Export.h>

#include <QString>

#include <cstdio>
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

/// Writes a text to standard output or error. Control characters in it, which names and files may
/// bring along and terminals would obey, stand as "\\u001b"; line feeds and tabs stay.
ZEP_CORE_EXPORT void PrintText(std::FILE* stream, const QString& text);

} // namespace ZEP
