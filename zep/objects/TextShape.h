#pragma once

#include <zep/framework/Font.h>

#include <QImage>

#include <array>
#include <vector>

namespace ZEP {

using TTextPoint = std::array<float, 2>;

/// A rectangle about text; all zero about none.
struct TTextBox {
    TTextPoint Min{}, Max{};
};

/// Text as areas in a plane: x to the right from the left end of the first line, y upwards from
/// its baseline, in units of the font's cap height, the height of a flat capital letter.
struct TTextShape {
    std::vector<TTextPoint> Triangles; ///< three points each, counter-clockwise
    std::vector<std::vector<TTextPoint>> Outlines;
};

/// Text as a picture of one bit for each pixel, the lowest row first, rows padded to four bytes,
/// the leftmost pixel in the highest bit.
struct TTextBitmap {
    QImage Bits;
    int Baseline = 0; ///< of the first line, in pixels above the lowest row
};

/// Only this many characters of a text are drawn.
inline constexpr int MaxTextLength = 4096;

/// \name Text in any language that the system has fonts for; line feeds begin new lines
/// All are empty in a program without a `QGuiApplication`, which has no fonts.
/// @{
[[nodiscard]] TTextShape MakeTextShape(const QString& text, const TFont& font);
/// What is seen of the shape: a fifth of the work.
[[nodiscard]] TTextBox MeasureText(const QString& text, const TFont& font);
/// How far the text moves its pen, blanks at its end included; of a text of one line.
[[nodiscard]] double AdvanceOfText(const QString& text, const TFont& font);
[[nodiscard]] TTextBitmap MakeTextBitmap(const QString& text, const TFont& font);
/// @}

} // namespace ZEP
