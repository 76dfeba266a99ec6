#pragma once

#include <QString>

#include <span>

namespace ZEP {

class TZEPMaterialLibrary;
struct TOpenedFile;

/// Writes what was read from files, at least one, as one component stream, in the form that the
/// name ends in. A scene that was opened alone, or an object that stands alone in its file, stays
/// what it is; every other file becomes a batch that has the file's name as its ident. What is
/// hidden is stored so; what a view adds for the eye is not.
///
/// Raises `Exception`, also where the name is that of one of the files that is no scene; an old
/// file then stands.
/// \param materials  that the files' objects refer to
void SaveScene(std::span<const TOpenedFile> files, TZEPMaterialLibrary& materials,
               const QString& fileName);

} // namespace ZEP
