#pragma once

#include <QStringList>

namespace ZEP {

/// What a scene may be saved as: ends in ".zep" (binary) or ".zept" (text).
[[nodiscard]] bool IsSceneName(const QString& fileName);

/// Reads files and writes what the readers made of them, without what the viewer adds for the eye,
/// as one component stream, in the form that the name ends in. A stream that stands alone stays
/// what it is; of several files each becomes an object below the scene, with the file's name as its
/// ident. Raises `Exception`; an old file of that name then stands.
void SaveScene(const QStringList& files, bool plain, const QString& fileName);

} // namespace ZEP
