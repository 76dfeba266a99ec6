#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <vector>

namespace ZEP {

enum class TFileFormat { Unknown, RS274D, DXF, F3DS, Model, Scene };

/// Surfaces with materials.
[[nodiscard]] constexpr bool IsModel(TFileFormat format) {
    return format == TFileFormat::F3DS || format == TFileFormat::Model;
}

/// Those that can be opened.
[[nodiscard]] std::vector<TFileFormat> KnownFormats();
/// The patterns of a file dialog: "*.nc", "*.ngc", ...
[[nodiscard]] QStringList PatternsOf(TFileFormat format);
/// The filters of a dialog that opens files: all that can be opened, each format, all files.
[[nodiscard]] QString OpenFilters();

/// The format of a file. Scenes, drawings and models are told by how they begin, whatever their
/// suffix: a drawing with its first section, after comments; a 3DS model with its main chunk.
/// Others are told by their suffix, and those without a known one by how they begin: a program is
/// text, and its first line that is no comment is a "%" or starts with a word: a letter and a
/// number. \param head  the first bytes of the file
[[nodiscard]] TFileFormat FormatOf(const QString& fileName, QByteArrayView head);

/// The same for a file on disk. Raises `Exception` when it cannot be read or its format is not
/// known.
[[nodiscard]] TFileFormat FormatOf(const QString& fileName);

[[nodiscard]] QString FormatName(TFileFormat format);

} // namespace ZEP
