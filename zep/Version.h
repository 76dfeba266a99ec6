#pragma once

/// \file
/// The library's version: of the headers by macros, of the library that runs by a function. The
/// build reads it from here.

#include <zep/Export.h>

#include <QString>

#define ZEP_VERSION_MAJOR 0
#define ZEP_VERSION_MINOR 1
#define ZEP_VERSION_PATCH 0
/// "0.1.0"
#define ZEP_VERSION_STR                                                                            \
    QT_STRINGIFY(ZEP_VERSION_MAJOR)                                                                \
    "." QT_STRINGIFY(ZEP_VERSION_MINOR) "." QT_STRINGIFY(ZEP_VERSION_PATCH)

/// A version as a number that grows with it: `#if ZEP_VERSION >= ZEP_VERSION_CHECK(0, 2, 0)`.
#define ZEP_VERSION_CHECK(major, minor, patch) (((major) << 16) | ((minor) << 8) | (patch))
#define ZEP_VERSION ZEP_VERSION_CHECK(ZEP_VERSION_MAJOR, ZEP_VERSION_MINOR, ZEP_VERSION_PATCH)

namespace ZEP {

/// The version of the library that runs, "0.1.0"; a program that was compiled with the headers of
/// another one may compare it with `ZEP_VERSION_STR`.
[[nodiscard]] ZEP_CORE_EXPORT QString LibraryVersion();

} // namespace ZEP
