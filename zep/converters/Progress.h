#pragma once

#include <QtGlobal>

#include <functional>

namespace ZEP {

/// Called now and then by a reader with the bytes read and the bytes in all, so that the host can
/// show progress and keep its windows alive. False cancels; what was read until then stays.
using TProgress = std::function<bool(qint64 done, qint64 total)>;

} // namespace ZEP
