#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>

namespace ZEP {

enum class TFileFormat { Unknown, RS274D };

/// The patterns of a file dialog: "*.nc", "*.ngc", ...
[[nodiscard]] QStringList ProgramPatterns();

/// The format of a file: by its suffix, and for other suffixes by how it begins. A program is
/// text, and its first line that is no comment is a "%" or starts with a word: a letter and a
/// number.
/// \param head  the first bytes of the file
[[nodiscard]] TFileFormat FormatOf(const QString& fileName, QByteArrayView head);

/// The same for a file on disk. Raises `Exception` when it cannot be read or its format is not
/// known.
[[nodiscard]] TFileFormat FormatOf(const QString& fileName);

[[nodiscard]] QString FormatName(TFileFormat format);

} // namespace ZEP
