#pragma once

#include <zep/Export.h>

#include <QString>

#include <functional>

class QIODevice;

namespace ZEP {

/// Saves a file so that nothing is lost: what `write` puts into the device goes to a file beside
/// the old one, which it replaces when it is whole and on the disk. Whatever goes wrong before, the
/// old file stands.
///
/// The file keeps its permissions and, where the user may give it away, its owner. A symbolic link
/// stays one, and what it leads to is saved. A device or a pipe is written and never replaced. A
/// file that may be written in a folder that may not is written in place, once `write` has ended
/// and the disk has room for all of it.
///
/// Raises `Exception` with the file and the system's reason, and what `write` raises.
ZEP_CORE_EXPORT void SaveFile(const QString& fileName,
                              const std::function<void(QIODevice&)>& write);

/// Both names lead to the same file on the disk, through whatever links.
[[nodiscard]] ZEP_CORE_EXPORT bool IsSameFile(const QString& a, const QString& b);

} // namespace ZEP
