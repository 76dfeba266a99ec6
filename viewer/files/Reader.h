#pragma once

#include "viewer/files/Format.h"
#include "viewer/files/ReadTarget.h"

#include <functional>

namespace ZEP {

/// Called now and then with what is done and the whole; false cancels.
using TLoadProgress = std::function<bool(qint64 done, qint64 total)>;

/// Reads the file into objects below the root. Raises `Exception`, which names the file, and the
/// line where there is one.
/// \param plain  programs and drawings by the bare rules of their formats
[[nodiscard]] std::vector<TPassedOver> ReadFile(const TReadTarget& target, const QString& fileName,
                                                TFileFormat format, bool plain,
                                                const TLoadProgress& progress);

} // namespace ZEP
