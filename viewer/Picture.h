#pragma once

#include <QSize>
#include <QString>

namespace ZEP {

class TDocument;

/// Draws what the camera of the document sees and writes it as a PNG of that size in pixels; needs
/// a display, but shows no window. Raises `Exception` where it cannot be drawn or written.
void WritePicture(TDocument& document, const QSize& size, const QString& fileName);

} // namespace ZEP
