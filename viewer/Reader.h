#pragma once

#include "viewer/Format.h"

#include <QString>

#include <functional>
#include <vector>

namespace ZEP {

class TZEPObject;

/// A kind of what was passed over in a file.
struct TPassedOver {
    QString Kind;
    qint64 Count = 0;
    qint64 FirstLine = 0; ///< 0: the file has no lines
};

/// Called now and then with what is done and the whole; false cancels.
using TLoadProgress = std::function<bool(qint64 done, qint64 total)>;

/// Reads the file into objects below `root`. Raises `Exception`, which names the file, and the
/// line where there is one.
[[nodiscard]] std::vector<TPassedOver> ReadFile(TZEPObject& root, const QString& fileName,
                                                TFileFormat format, bool plain,
                                                const TLoadProgress& progress);

} // namespace ZEP
