#pragma once

#include <zep/framework/Color.h>

#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace ZEP {

/// \file
/// The texts of a drawing and the codes that format them.

/// Lines along a text.
enum TDXFRule : unsigned char { drNone = 0, drUnder = 1, drOver = 2, drThrough = 4 };

/// Which of them run along some of its letters.
struct TDXFTextRules {
    int Rules = drNone;
    qsizetype From = 0, To = 0;
};

/// A text of one line (TEXT, ATTRIB): "%%c" is a diameter sign, "%%d" a degree sign, "%%p" a plus
/// minus sign, "%%%" a percent sign, "%%065" the character of that number; "%%u", "%%o", "%%k"
/// begin and end lines along it. Other codes stay as they are.
/// \param rules  gets those lines; may be null
[[nodiscard]] QString PlainDXFText(const QString& text,
                                   std::vector<TDXFTextRules>* rules = nullptr);

/// How a piece of a text looks.
struct TDXFTextLook {
    double Height = 1;             ///< in heights of the text
    double Width = 1;              ///< of its letters
    double Oblique = 0;            ///< degrees to the right
    std::optional<TColor> Color{}; ///< none: that of the text
    int Rules = drNone;
    int Alignment = 0; ///< on a line of higher letters: 0 below, 1 in the middle, 2 above

    bool operator==(const TDXFTextLook&) const = default;
};

/// Letters of one look, one behind the other, or a stack: `Text` above `Lower`.
struct TDXFRun {
    QString Text;
    TDXFTextLook Look{};
    QString Lower{};
    QChar Bar{}; ///< of a stack: '/' with a line between both, '^' without one; else null

    [[nodiscard]] bool IsStack() const { return !Bar.isNull(); }
};

using TDXFTextLine = std::vector<TDXFRun>;

/// The lines of a text with inline codes (MTEXT), of which there is one at least. Heights, widths,
/// obliquings, colours, alignments, lines along them and stacks make runs; fonts and tracking are
/// left out, a slanted fraction is "1/2", columns and paragraphs begin new lines; the codes of
/// `PlainDXFText` hold here, too.
/// \param height  of the text, which absolute heights in it are told by
[[nodiscard]] std::vector<TDXFTextLine> DXFTextLines(const QString& text, double height = 1,
                                                     const TDXFTextLook& look = {});

/// How wide a run is, in heights of the text.
using TDXFMeasure = std::function<double(const TDXFRun& run)>;

/// The lines, broken at blanks where they are wider; a word that is too wide has a line for itself.
[[nodiscard]] std::vector<TDXFTextLine> WrappedDXFLines(const std::vector<TDXFTextLine>& lines,
                                                        double width, const TDXFMeasure& measure);

} // namespace ZEP
