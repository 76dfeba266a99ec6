#include "viewer/files/Picture.h"

#include "viewer/drawing/ViewLook.h"
#include "viewer/files/Document.h"
#include <zep/framework/Exception.h>
#include <zep/framework/FileSaving.h>
#include <zep/scene/Scene.h>
#include <zep/view/Panel.h>
#include <zep/view/PanelVectors.h>

#include <QBuffer>
#include <QFileInfo>
#include <QImageWriter>
#include <QScopeGuard>

#include <optional>

namespace ZEP {

namespace {

constexpr int Samples = 15;
constexpr int Quality = 92; // of a JPEG

/// The backdrop shows no more than is wished while this lives.
class TBackdropLoan {
public:
    TBackdropLoan(TZEPBackdrop& backdrop, const TPictureWish& wish)
        : m_backdrop(backdrop), m_guides(backdrop.Guides()) {
        backdrop.SetGuides(m_guides && wish.Guides);
        backdrop.SetBackground(!wish.Transparent);
    }
    ~TBackdropLoan() {
        m_backdrop.SetGuides(m_guides);
        m_backdrop.SetBackground(true);
    }
    TBackdropLoan(const TBackdropLoan&) = delete;
    TBackdropLoan& operator=(const TBackdropLoan&) = delete;

private:
    TZEPBackdrop& m_backdrop;
    bool m_guides;
};

/// As the name ends.
QByteArray EncodingOf(const QString& fileName) {
    const QByteArray suffix = QFileInfo(fileName).suffix().toLower().toLatin1();
    return suffix.isEmpty() ? "png" : suffix;
}

std::optional<TZEPVectorFormat> VectorFormatOf(const QString& fileName) {
    if (!HasVectorPictures()) return {};
    const QByteArray encoding = EncodingOf(fileName);
    if (encoding == "svg") return TZEPVectorFormat::Svg;
    if (encoding == "pdf") return TZEPVectorFormat::Pdf;
    return {};
}

void CheckName(const QString& fileName) {
    if (IsPictureName(fileName)) return;
    throw Exception(QStringLiteral("It does not end as a picture does: .png and .jpg do."),
                    {.File = fileName});
}

/// Lines and letters that are thicker than in the view: those of a smaller page.
QByteArray DrawVectors(TZEPPanel& panel, TZEPBackdrop& backdrop, const TPictureWish& wish,
                       TZEPVectorFormat format) {
    TPictureWish bare = wish;
    bare.Transparent = true;
    const TBackdropLoan loan(backdrop, bare);
    TZEPScene& scene = *panel.Camera()->Scene();
    const TColor background = scene.BackgroundColor();
    scene.SetBackgroundColor(backdrop.MiddleColor());
    const auto back = qScopeGuard([&] { scene.SetBackgroundColor(background); });
    const QSize page = (QSizeF(wish.Size) / wish.Scale).toSize().expandedTo({1, 1});
    return RenderVectors(panel, page, format, wish.Transparent);
}

} // namespace

QImage DrawPicture(TZEPPanel& panel, TZEPBackdrop& backdrop, const TPictureWish& wish) {
    const TBackdropLoan loan(backdrop, wish);
    return panel.RenderPicture(
        wish.Size, {.Transparent = wish.Transparent, .Samples = Samples, .Widths = wish.Scale});
}

void WritePicture(TZEPPanel& panel, TZEPBackdrop& backdrop, const TPictureWish& wish,
                  const QString& fileName) {
    CheckName(fileName);
    if (wish.Transparent && !KeepsTransparency(fileName))
        throw Exception(QStringLiteral("It cannot be transparent: a PNG, WebP or TIFF can."),
                        {.File = fileName});
    const std::optional<TZEPVectorFormat> format = VectorFormatOf(fileName);
    if (!format) return WritePicture(DrawPicture(panel, backdrop, wish), fileName);
    const QByteArray content = DrawVectors(panel, backdrop, wish, *format);
    SaveFile(fileName, [&](QIODevice& device) { device.write(content); });
}

void WritePicture(TDocument& document, const TViewLook& look, const TPictureWish& wish,
                  const QString& fileName) {
    TZEPPanel panel;
    panel.SetCamera(document.Camera());
    TDressedView(
        &panel, [](const auto&) {}, [&] { return document.Backdrop().MiddleColor(); })
        .Dress(look);
    WritePicture(panel, document.Backdrop(), wish, fileName);
}

void WritePicture(const QImage& picture, const QString& fileName) {
    CheckName(fileName);
    if (picture.isNull())
        throw Exception(QStringLiteral("OpenGL cannot draw here: check the graphics driver."));
    QBuffer encoded;
    encoded.open(QIODevice::WriteOnly);
    QImageWriter writer(&encoded, EncodingOf(fileName));
    if (writer.format().startsWith("jp")) writer.setQuality(Quality);
    if (!writer.write(picture))
        throw Exception(QStringLiteral("It cannot be written: %1.").arg(writer.errorString()),
                        {.File = fileName});
    SaveFile(fileName, [&](QIODevice& device) { device.write(encoded.data()); });
}

bool IsPictureName(const QString& fileName) {
    return VectorFormatOf(fileName) ||
           QImageWriter::supportedImageFormats().contains(EncodingOf(fileName));
}

bool KeepsTransparency(const QString& fileName) {
    const QByteArray encoding = EncodingOf(fileName);
    return VectorFormatOf(fileName) || encoding == "png" || encoding == "webp" ||
           encoding == "tif" || encoding == "tiff";
}

QString PictureFilters() {
    QString filters = QStringLiteral("PNG (*.png);;JPEG (*.jpg *.jpeg)");
    if (HasVectorPictures()) filters += QStringLiteral(";;SVG (*.svg);;PDF (*.pdf)");
    return filters + QStringLiteral(";;All pictures (*)");
}

} // namespace ZEP
