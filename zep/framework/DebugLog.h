#pragma once

#include <zep/Export.h>

#include <QString>

#include <functional>

namespace ZEP {

using TDebugLogHandler = std::function<void(const QString& line)>;

/// A line for developers. It is discarded unless a handler is set.
ZEP_CORE_EXPORT void DebugLog(const QString& line);

/// Whether anyone listens, so that nothing is formatted for nobody.
[[nodiscard]] ZEP_CORE_EXPORT bool DebugLogEnabled();

/// Replaces what takes the lines and gives back what did; an empty handler discards them.
ZEP_CORE_EXPORT TDebugLogHandler SetDebugLogHandler(TDebugLogHandler handler);

} // namespace ZEP
