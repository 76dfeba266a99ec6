#include "viewer/files/Picture.h"

#include "viewer/drawing/ViewLook.h"
#include "viewer/files/Document.h"
#include <zep/framework/Exception.h>
#include <zep/framework/FileSaving.h>
#include <zep/view/Panel.h>

#include <QBuffer>
#include <QFileInfo>
#include <QImageWriter>

#include <cmath>

namespace ZEP {

namespace {

/// A panel of at least that many device pixels.
QSize WindowSize(const QSize& size, double ratio) {
    return {static_cast<int>(std::ceil(size.width() / ratio)),
            static_cast<int>(std::ceil(size.height() / ratio))};
}

/// As the name ends.
QByteArray EncodingOf(const QString& fileName) {
    const QByteArray suffix = QFileInfo(fileName).suffix().toLower().toLatin1();
    return suffix.isEmpty() ? "png" : suffix;
}

} // namespace

void WritePicture(TDocument& document, const TViewLook& look, const QSize& size,
                  const QString& fileName) {
    TZEPPanel panel;
    panel.resize(WindowSize(size, panel.devicePixelRatioF()));
    panel.SetCamera(document.Camera());
    TDressedView(
        &panel, [](const auto&) {}, [&] { return document.Backdrop().MiddleColor(); })
        .Dress(look);
    WritePicture(panel.GrabFrame().copy(QRect(QPoint(0, 0), size)), fileName);
}

bool IsPictureName(const QString& fileName) {
    return QImageWriter::supportedImageFormats().contains(EncodingOf(fileName));
}

void WritePicture(const QImage& frame, const QString& fileName) {
    if (!IsPictureName(fileName))
        throw Exception(QStringLiteral("%1 does not end as a picture does.").arg(fileName),
                        {.File = fileName});
    if (frame.isNull())
        throw Exception(QStringLiteral("OpenGL cannot draw here: no rendering context was made."));
    QBuffer encoded;
    encoded.open(QIODevice::WriteOnly);
    QImageWriter writer(&encoded, EncodingOf(fileName));
    if (!writer.write(frame))
        throw Exception(
            QStringLiteral("%1 cannot be written: %2.").arg(fileName, writer.errorString()),
            {.File = fileName});
    SaveFile(fileName, [&](QIODevice& device) { device.write(encoded.data()); });
}

} // namespace ZEP
