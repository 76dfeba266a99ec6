#include <zep/framework/Exception.h>
#include <zep/gl/Names.h>
#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>
#include <zep/view/FrameState.h>
#include <zep/view/Panel.h>

#include <GL/glu.h>

#include <QPointer>
#include <QScopeGuard>

#include <algorithm>
#include <cstring>

namespace ZEP {

namespace {

/// A tile costs some 25 bytes of the driver's memory for each pixel.
constexpr int LargestTile = 2048;
/// Drawn beyond each side of a tile: OpenGL leaves out points and wide lines whose middle is
/// outside.
constexpr int Margin = 16;

QRgb OverNothing(QRgb onBlack, QRgb onWhite) {
    // White shines through by what is not covered.
    const int through = std::min({qRed(onWhite) - qRed(onBlack), qGreen(onWhite) - qGreen(onBlack),
                                  qBlue(onWhite) - qBlue(onBlack)});
    const int alpha = 255 - std::clamp(through, 0, 255);
    const auto bound = [alpha](int value) { return std::min(value, alpha); };
    return qRgba(bound(qRed(onBlack)), bound(qGreen(onBlack)), bound(qBlue(onBlack)), alpha);
}

void CopyUpsideDown(const QImage& tile, QImage& image, const QPoint& to) {
    for (int y = 0; y < tile.height(); ++y)
        std::memcpy(reinterpret_cast<QRgb*>(image.scanLine(to.y() + y)) + to.x(),
                    tile.constScanLine(tile.height() - 1 - y),
                    static_cast<std::size_t>(tile.width()) * sizeof(QRgb));
}

} // namespace

QImage TZEPPanel::RenderToCanvas(const QSize& size, bool transparent) {
    if (size.isEmpty()) return {};
    QImage image(size, transparent ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    if (image.isNull())
        throw Exception(QStringLiteral("RenderToCanvas: no memory for %1 by %2 pixels")
                            .arg(size.width())
                            .arg(size.height()));
    image.fill(transparent ? Qt::transparent : Qt::black);
    OpenWindow();
    const QSize buffer = size.grownBy({Margin, Margin, Margin, Margin});
    const QPointer<TZEPPanel> alive(this);
    const auto done = qScopeGuard([&alive] {
        if (alive) alive->DoneCurrent();
    });
    std::optional<TFrame> frame;
    if (!m_drawing && !m_goes) frame.emplace(*this);
    if (!frame || !*frame ||
        !m_context.BeginPicture(std::min(buffer.width(), TileLength() + 2 * Margin),
                                std::min(buffer.height(), TileLength() + 2 * Margin)))
        throw Exception(QStringLiteral("RenderToCanvas: Can't set pixel format"));
    const auto end = qScopeGuard([this, &frame] {
        if (!*frame) return;
        if (m_camera) m_camera->SetDrawnPart({});
        m_context.EndPicture();
        glViewport(0, 0, Width(), Height());
    });
    const TZEPNamesScope names;
    if (!Enabled() || !m_camera || !m_scene) return image;
    if (transparent)
        DrawTransparent(image);
    else
        DrawTiles(image);
    return image;
}

void TZEPPanel::DrawTransparent(QImage& image) {
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
    DrawTiles(onWhite);
    if (!alive || !scene) return;
    scene->SetBackgroundColor(clBlack);
    DrawTiles(image);
    for (int y = 0; y < image.height(); ++y) {
        auto* pixel = reinterpret_cast<QRgb*>(image.scanLine(y));
        const auto* white = reinterpret_cast<const QRgb*>(onWhite.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) pixel[x] = OverNothing(pixel[x], white[x]);
    }
}

int TZEPPanel::TileLength() const {
    return std::clamp(m_context.MaxViewportSize() - 2 * Margin, 1, LargestTile);
}

void TZEPPanel::DrawTiles(QImage& image) {
    const int length = TileLength();
    const bool whole = image.width() <= length && image.height() <= length;
    if (whole) return DrawTile(image, image.rect(), 0);
    const QPointer<TZEPPanel> alive(this);
    for (int y = 0; y < image.height(); y += length)
        for (int x = 0; x < image.width(); x += length)
            if (alive) DrawTile(image, image.rect() & QRect(x, y, length, length), Margin);
}

void TZEPPanel::DrawTile(QImage& image, const QRect& tile, int margin) {
    if (!m_camera || !m_scene) return;
    QRect part = tile.adjusted(-margin, -margin, margin, margin);
    glViewport(0, 0, part.width(), part.height());
    part.moveTop(image.height() - 1 - part.bottom()); // from below
    m_camera->SetDrawnPart(part);
    const TZEPFrameState before;
    const QPointer<TZEPPanel> alive(this);
    auto restore = qScopeGuard([&alive, &before] {
        before.Restore();
        if (alive) alive->m_appliedOptions.reset();
    });
    Render(image.width(), image.height(), false);
    if (!alive || !MakeCurrent()) return;
    restore.dismiss();
    const QRect inner(margin, margin, tile.width(), tile.height());
    CopyUpsideDown(ReadPixels(inner), image, tile.topLeft());
}

} // namespace ZEP
