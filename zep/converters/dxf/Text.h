#pragma once

#include <zep/framework/Color.h>

#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace ZEP {

/// \file
/// The texts of a drawing and the codes that format them.

/// A text of one line (TEXT, ATTRIB): "%%c" is a diameter sign, "%%d" a degree sign, "%%p" a plus
/// minus sign, "%%%" a percent sign, "%%065" the character of that number; "%%u", "%%o", "%%k"
/// (underlined, overlined, struck through) are left out. Other codes stay as they are.
[[nodiscard]] QString PlainDXFText(const QString& text);

/// How a piece of a text looks.
struct TDXFTextLook {
    double Height = 1;             ///< in heights of the text
    double Width = 1;              ///< of its letters
    double Oblique = 0;            ///< degrees to the right
    std::optional<TColor> Color{}; ///< none: that of the text

    bool operator==(const TDXFTextLook&) const = default;
};

/// Letters of one look, one behind the other.
struct TDXFRun {
    QString Text;
    TDXFTextLook Look{};
};

using TDXFTextLine = std::vector<TDXFRun>;

/// The lines of a text with inline codes (MTEXT), of which there is one at least. Heights, widths,
/// obliquings and colours make runs; fonts, alignments, underlines and tracking are left out, a
/// stacked fraction is "1/2", columns and paragraphs begin new lines; the codes of `PlainDXFText`
/// hold here, too.
/// \param height  of the text, which absolute heights in it are told by
[[nodiscard]] std::vector<TDXFTextLine> DXFTextLines(const QString& text, double height = 1,
                                                     const TDXFTextLook& look = {});

/// How wide a run is, in heights of the text.
using TDXFMeasure = std::function<double(const TDXFRun& run)>;

/// The lines, broken at blanks where they are wider; a word that is too wide has a line for itself.
[[nodiscard]] std::vector<TDXFTextLine> WrappedDXFLines(const std::vector<TDXFTextLine>& lines,
                                                        double width, const TDXFMeasure& measure);

} // namespace ZEP
