#pragma once

#include <QtGlobal>

#include <cstddef>
#include <functional>

namespace ZEP {

/// Called now and then by a reader with the bytes read and the bytes in all, so that the host can
/// show progress and keep its windows alive. False cancels; what was read until then stays.
using TProgress = std::function<bool(qint64 done, qint64 total)>;

/// Bytes between two calls.
inline constexpr std::size_t ProgressStep = 65536;

} // namespace ZEP
