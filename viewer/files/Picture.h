#pragma once

#include <QSize>
#include <QString>

class QImage;

namespace ZEP {

class TDocument;
struct TViewLook;

/// Whether the name ends as that of a picture that can be written, or in no suffix at all, which
/// makes a PNG.
[[nodiscard]] bool IsPictureName(const QString& fileName);

/// Draws what the camera of the document sees and writes it, of that size in pixels, in the format
/// that the name ends in; needs a display, but shows no window. Raises `Exception` where it cannot
/// be drawn or written; an old file then stands.
void WritePicture(TDocument& document, const TViewLook& look, const QSize& size,
                  const QString& fileName);

/// Writes a frame likewise. Raises `Exception` also where it is empty.
void WritePicture(const QImage& frame, const QString& fileName);

} // namespace ZEP
