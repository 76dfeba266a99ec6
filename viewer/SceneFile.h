#pragma once

#include "viewer/Reader.h"

#include <QStringList>

namespace ZEP {

/// Reads a component stream in either form: what stands in its root becomes children of `root`.
/// Raises `Exception`, which names the file and the place in it.
[[nodiscard]] std::vector<TPassedOver> ReadScene(TZEPObject& root, const QString& fileName);

/// What a scene may be saved as: ends in ".zep" (binary) or ".zept" (text).
[[nodiscard]] bool IsSceneName(const QString& fileName);

/// Reads files and writes what the readers made of them, without what the viewer adds for the eye,
/// as one component stream, in the form that the name ends in. A stream that stands alone stays
/// what it is; of several files each becomes an object below the scene, with the file's name as its
/// ident. Raises `Exception`; an old file of that name then stands.
void SaveScene(const QStringList& files, bool plain, const QString& fileName);

} // namespace ZEP
