#include <zep/framework/UserError.h>
#include <zep/gl/Names.h>
#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>
#include <zep/view/FrameMean.h>
#include <zep/view/FrameState.h>
#include <zep/view/Panel.h>

#include <GL/glu.h>

#include <QPointer>
#include <QScopeGuard>

#include <algorithm>
#include <cmath>
#include <span>

#include <unistd.h>

namespace ZEP {

namespace {

/// A tile costs some 25 bytes of the driver's memory for each pixel.
constexpr int LargestTile = 2048;
/// Drawn beyond each side of a tile: OpenGL leaves out points and wide lines whose middle is
/// outside.
constexpr int Margin = 16;
constexpr double LargestMargin = 512;

QRgb OverNothing(QRgb onBlack, QRgb onWhite) {
    // White shines through by what is not covered.
    const int through = std::min({qRed(onWhite) - qRed(onBlack), qGreen(onWhite) - qGreen(onBlack),
                                  qBlue(onWhite) - qBlue(onBlack)});
    const int alpha = 255 - std::clamp(through, 0, 255);
    const auto bound = [alpha](int value) { return std::min(value, alpha); };
    return qRgba(bound(qRed(onBlack)), bound(qGreen(onBlack)), bound(qBlue(onBlack)), alpha);
}

/// What OpenGL leaves as alpha says nothing: all of it is opaque.
void CopyUpsideDown(const QImage& tile, QImage& image, const QPoint& to) {
    for (int y = 0; y < tile.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(tile.constScanLine(tile.height() - 1 - y));
        std::transform(from, from + tile.width(),
                       reinterpret_cast<QRgb*>(image.scanLine(to.y() + y)) + to.x(),
                       [](QRgb pixel) { return pixel | 0xFF000000U; });
    }
}

double Usable(double widths) {
    return widths > 0 && std::isfinite(widths) ? widths : 1;
}

/// What is wider reaches farther.
int MarginFor(double widths) {
    return static_cast<int>(std::clamp(std::ceil(Margin * widths), 1.0 * Margin, LargestMargin));
}

/// Linux hands out memory that is not there, and ends the program that uses it.
bool HasMemoryFor(const QSize& size, int images) {
    const double bytes = 4.0 * size.width() * size.height() * images;
    return bytes < static_cast<double>(sysconf(_SC_PHYS_PAGES)) *
                       static_cast<double>(sysconf(_SC_PAGESIZE)) / 2;
}

QImage NewImage(const QSize& size, bool transparent) {
    QImage image;
    if (HasMemoryFor(size, transparent ? 2 : 1))
        image =
            QImage(size, transparent ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    if (image.isNull())
        throw TUserError(QStringLiteral("RenderToCanvas: no memory for %1 by %2 pixels")
                             .arg(size.width())
                             .arg(size.height()),
                         QStringLiteral("There is no memory for a picture of %1 by %2 pixels: "
                                        "choose a smaller one.")
                             .arg(size.width())
                             .arg(size.height()));
    image.fill(transparent ? Qt::transparent : Qt::black);
    return image;
}

} // namespace

/// What is drawn into an image.
struct TZEPPanel::TPicture {
    QSize View;    ///< pixels
    QPoint Origin; ///< of the image in it, from the upper left corner
    std::span<const TZEPJitter> Samples;
    int Margin;
};

QImage TZEPPanel::RenderToCanvas(const QSize& size, bool transparent) {
    return RenderPicture(size, {.Transparent = transparent});
}

QImage TZEPPanel::RenderPicture(const QSize& view, const TZEPPictureOptions& options) {
    if (view.isEmpty()) return {};
    const QRect part = options.Part.isEmpty() ? QRect(QPoint(0, 0), view) : options.Part;
    if (m_drawing) throw Exception(QStringLiteral("RenderToCanvas: the panel draws a frame"));
    QImage image = NewImage(part.size(), options.Transparent);
    OpenWindow();
    const double widths = Usable(options.Widths);
    const int margin = MarginFor(widths);
    const QSize buffer = part.size()
                             .boundedTo({TileLength(), TileLength()})
                             .grownBy({margin, margin, margin, margin});
    const QPointer<TZEPPanel> alive(this);
    const auto done = qScopeGuard([&alive] {
        if (alive) alive->DoneCurrent();
    });
    std::optional<TFrame> frame;
    if (!m_goes) frame.emplace(*this);
    if (!frame || !*frame || !m_context.BeginPicture(buffer.width(), buffer.height()))
        throw TUserError(QStringLiteral("RenderToCanvas: Can't set pixel format"),
                         QStringLiteral("OpenGL cannot draw here: check the graphics driver."));
    const auto end = qScopeGuard([this, &frame] {
        if (!*frame) return;
        m_widths = 1;
        if (m_camera) m_camera->SetDrawnPart({});
        m_context.EndPicture();
        glViewport(0, 0, Width(), Height());
    });
    const TZEPNamesScope names;
    if (!Enabled() || !m_camera || !m_scene) return image;
    m_widths = widths;
    const TPicture picture{view, part.topLeft(), SmoothSamples(options.Samples), margin};
    if (options.Transparent)
        DrawTransparent(image, picture);
    else
        DrawTiles(image, picture);
    return image;
}

void TZEPPanel::DrawTransparent(QImage& image, const TPicture& picture) {
    const QPointer<TZEPPanel> alive(this); // what is drawn may free it, and the scene
    const QPointer<TZEPScene> scene(m_scene);
    const TColor background = scene->BackgroundColor();
    const bool manual = scene->ManualUpdate();
    scene->SetManualUpdate(true);
    const auto back = qScopeGuard([&scene, background, manual] {
        if (!scene) return;
        scene->SetBackgroundColor(background);
        scene->SetManualUpdate(manual);
    });
    scene->SetBackgroundColor(clWhite);
    QImage onWhite(image.size(), QImage::Format_RGB32);
    DrawTiles(onWhite, picture);
    if (!alive || !scene) return;
    scene->SetBackgroundColor(clBlack);
    DrawTiles(image, picture);
    for (int y = 0; y < image.height(); ++y) {
        auto* pixel = reinterpret_cast<QRgb*>(image.scanLine(y));
        const auto* white = reinterpret_cast<const QRgb*>(onWhite.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) pixel[x] = OverNothing(pixel[x], white[x]);
    }
}

int TZEPPanel::TileLength() const {
    return std::clamp(m_context.MaxViewportSize() - 2 * Margin, 1, LargestTile);
}

void TZEPPanel::DrawTiles(QImage& image, const TPicture& picture) {
    const int length = TileLength();
    const bool whole =
        image.width() <= length && image.height() <= length && image.size() == picture.View;
    if (whole) return DrawTile(image, picture, image.rect(), 0);
    const QPointer<TZEPPanel> alive(this);
    for (int y = 0; y < image.height(); y += length)
        for (int x = 0; x < image.width(); x += length)
            if (alive)
                DrawTile(image, picture, image.rect() & QRect(x, y, length, length),
                         picture.Margin);
}

void TZEPPanel::DrawTile(QImage& image, const TPicture& picture, const QRect& tile, int margin) {
    QRect part = tile.adjusted(-margin, -margin, margin, margin).translated(picture.Origin);
    part.moveTop(picture.View.height() - 1 - part.bottom()); // from below
    if (picture.Samples.empty())
        return CopyUpsideDown(DrawSample(picture, part, margin), image, tile.topLeft());
    TZEPFrameMean mean;
    const QPointer<TZEPPanel> alive(this);
    for (const auto& [x, y] : picture.Samples) {
        if (!alive) return;
        const QImage sample = DrawSample(
            picture, QRectF(part).translated(static_cast<double>(x), static_cast<double>(y)),
            margin);
        if (sample.isNull()) return;
        mean.Add(sample);
    }
    CopyUpsideDown(mean.Mean(), image, tile.topLeft());
}

/// \return  without the margin, the lowest row first; null where what was drawn has ended it
QImage TZEPPanel::DrawSample(const TPicture& picture, const QRectF& part, int margin) {
    if (!m_camera || !m_scene) return {};
    const QSize size = part.size().toSize();
    glViewport(0, 0, size.width(), size.height());
    m_camera->SetDrawnPart(part);
    const TZEPFrameState before;
    const QPointer<TZEPPanel> alive(this);
    auto restore = qScopeGuard([&alive, &before] {
        before.Restore();
        if (alive) alive->m_appliedOptions.reset();
    });
    Render(picture.View.width(), picture.View.height(), false);
    if (!alive || !MakeCurrent()) return {};
    restore.dismiss();
    return ReadPixels(QRect(QPoint(0, 0), size).adjusted(margin, margin, -margin, -margin));
}

} // namespace ZEP
