#pragma once

/// \file
/// Which names the shared libraries show: `ZEP_CORE_EXPORT` those of `zepcore`, `ZEP_EXPORT` those
/// of `zep`. Everything else stays inside. A static library, whose hosts are compiled with
/// `ZEP_STATIC`, needs neither. CMake's targets and pkg-config's files define what is to be
/// defined.

#include <QtGlobal>

#if defined(ZEP_STATIC)
#define ZEP_CORE_EXPORT
#define ZEP_EXPORT
#elif defined(ZEP_BUILDS_LIBRARIES)
#define ZEP_CORE_EXPORT Q_DECL_EXPORT
#define ZEP_EXPORT Q_DECL_EXPORT
#else
#define ZEP_CORE_EXPORT Q_DECL_IMPORT
#define ZEP_EXPORT Q_DECL_IMPORT
#endif
