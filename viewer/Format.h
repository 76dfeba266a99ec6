#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>

namespace ZEP {

enum class TFileFormat { Unknown, RS274D, Scene };

/// The patterns of a file dialog: "*.nc", "*.ngc", ...
[[nodiscard]] QStringList ProgramPatterns();
[[nodiscard]] QStringList ScenePatterns();

/// The format of a file. A scene is told by how it begins, whatever its suffix. Others are told by
/// their suffix, and those without a known one by how they begin: a program is text, and its first
/// line that is no comment is a "%" or starts with a word: a letter and a number. \param head  the
/// first bytes of the file
[[nodiscard]] TFileFormat FormatOf(const QString& fileName, QByteArrayView head);

/// The same for a file on disk. Raises `Exception` when it cannot be read or its format is not
/// known.
[[nodiscard]] TFileFormat FormatOf(const QString& fileName);

[[nodiscard]] QString FormatName(TFileFormat format);

} // namespace ZEP
