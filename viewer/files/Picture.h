#pragma once

#include <QSize>
#include <QString>

class QImage;

namespace ZEP {

class TDocument;
class TZEPBackdrop;
class TZEPPanel;
struct TViewLook;

/// What a picture is to be.
///
/// Defaults: as the view shows it, 1280 by 960 pixels.
struct TPictureWish {
    static constexpr int LargestSide = 16384;
    static constexpr double LeastScale = 0.1;
    static constexpr double MostScale = 20;

    QSize Size{1280, 960};    ///< pixels, 1 to `LargestSide` each
    double Scale = 1;         ///< of the widths of lines and points, and of letters and marks
    bool Transparent = false; ///< without the background
    bool Guides = true;       ///< with grid, axes and directions, where the view has them
};

/// Whether the name ends as that of a picture that can be written, or in no suffix at all, which
/// makes a PNG.
[[nodiscard]] bool IsPictureName(const QString& fileName);

/// Whether a picture of that name can be without a background.
[[nodiscard]] bool KeepsTransparency(const QString& fileName);
/// For a file dialog.
[[nodiscard]] QString PictureFilters();

/// What a panel shows before a backdrop, smooth. Raises `Exception` where it cannot be drawn.
[[nodiscard]] QImage DrawPicture(TZEPPanel& panel, TZEPBackdrop& backdrop,
                                 const TPictureWish& wish);

/// Writes it in the format that the name ends in; what is drawn as SVG or PDF is lines and areas.
/// Raises `Exception` where it cannot be drawn or written; an old file then stands.
void WritePicture(TZEPPanel& panel, TZEPBackdrop& backdrop, const TPictureWish& wish,
                  const QString& fileName);

/// The same of what the camera of the document sees; needs a display, but shows no window.
void WritePicture(TDocument& document, const TViewLook& look, const TPictureWish& wish,
                  const QString& fileName);

/// Writes a picture of pixels likewise. Raises `Exception` also where it is empty.
void WritePicture(const QImage& picture, const QString& fileName);

} // namespace ZEP
