#pragma once

#include <QSize>
#include <QString>

class QImage;

namespace ZEP {

class TDocument;
struct TViewLook;

/// Draws what the camera of the document sees and writes it as a PNG of that size in pixels; needs
/// a display, but shows no window. Raises `Exception` where it cannot be drawn or written.
void WritePicture(TDocument& document, const TViewLook& look, const QSize& size,
                  const QString& fileName);

/// Writes a frame as a PNG. Raises `Exception` where it is empty or cannot be written.
void WritePicture(const QImage& frame, const QString& fileName);

} // namespace ZEP
