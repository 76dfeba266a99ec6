#pragma once

#include <QStringList>

namespace ZEP {

/// \file
/// The texts of a drawing without the codes that format them.

/// A text of one line (TEXT, ATTRIB): "%%c" is a diameter sign, "%%d" a degree sign, "%%p" a plus
/// minus sign, "%%%" a percent sign, "%%065" the character of that number; "%%u", "%%o", "%%k"
/// (underlined, overlined, struck through) are left out. Other codes stay as they are.
[[nodiscard]] QString PlainDXFText(const QString& text);

/// The lines of a text with inline codes (MTEXT), of which there is one at least. Fonts, heights,
/// colours, alignments and groups are left out, a stacked fraction is "1/2", columns and
/// paragraphs begin new lines; the codes of `PlainDXFText` hold here, too.
[[nodiscard]] QStringList PlainDXFLines(const QString& text);

} // namespace ZEP
