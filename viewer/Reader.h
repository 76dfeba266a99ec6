#pragma once

#include <QMap>
#include <QString>

#include <functional>

namespace ZEP {

class TZEPObject;

/// What was passed over: kind to count.
using TPassedOver = QMap<QString, qint64>;

/// Called now and then with what is done and the whole; false cancels.
using TLoadProgress = std::function<bool(qint64 done, qint64 total)>;

/// Reads the file into objects below `root`. Raises `Exception`, which names the file, and the
/// line where there is one.
[[nodiscard]] TPassedOver ReadProgram(TZEPObject& root, const QString& fileName, bool plain,
                                      const TLoadProgress& progress);

} // namespace ZEP
