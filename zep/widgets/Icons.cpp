#include <zep/widgets/ObjectLook.h>

#include <QApplication>
#include <QIconEngine>
#include <QImageReader>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPixmapCache>

// Of a static library the linker takes in resources only where something asks for them. The macro
// stands in no namespace.
static bool TakeInIcons() {
    Q_INIT_RESOURCE(zep);
    return true;
}

namespace ZEP {

namespace {

constexpr int Side = 16;

/// Drawn anew for each size and colour, so that it is sharp on any screen and follows the palette.
class TSymbolEngine : public QIconEngine {
public:
    TSymbolEngine(const QString& file, const QColor& color) : m_file(file), m_color(color) {}

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
        const QColor color = ColorFor(mode);
        const QString key = QStringLiteral("%1 %2 %3x%4")
                                .arg(m_file, color.name(QColor::HexArgb))
                                .arg(size.width())
                                .arg(size.height());
        QPixmap pixmap;
        if (QPixmapCache::find(key, &pixmap)) return pixmap;
        pixmap = QPixmap::fromImage(Drawn(size, color));
        QPixmapCache::insert(key, pixmap);
        return pixmap;
    }
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State state) override {
        const qreal ratio = painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state));
    }
    [[nodiscard]] QIconEngine* clone() const override { return new TSymbolEngine(*this); }

private:
    [[nodiscard]] QColor ColorFor(QIcon::Mode mode) const {
        const QPalette palette = QApplication::palette();
        if (mode == QIcon::Disabled) return palette.color(QPalette::Disabled, QPalette::Text);
        if (m_color.isValid()) return m_color;
        return palette.color(mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::Text);
    }
    [[nodiscard]] QImage Drawn(const QSize& size, const QColor& color) const {
        QImageReader reader(m_file);
        reader.setScaledSize(size);
        QImage image = reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
        if (image.isNull()) return image;
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), color);
        return image;
    }

    QString m_file;
    QColor m_color; ///< invalid: that of text
};

} // namespace

QIcon SymbolIcon(const QString& file, const QColor& color) {
    static const bool canDraw =
        TakeInIcons() && QImageReader::supportedImageFormats().contains("svg");
    return canDraw ? QIcon(new TSymbolEngine(file, color)) : QIcon();
}

QIcon ColorIcon(TColor color) {
    const qreal ratio = qApp->devicePixelRatio();
    QPixmap pixmap((QSizeF(Side, Side) * ratio).toSize());
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QApplication::palette().color(QPalette::Mid), 1));
    painter.setBrush(ToQColor(color));
    painter.drawRoundedRect(QRectF(2.5, 2.5, Side - 5, Side - 5), 2, 2);
    return pixmap;
}

} // namespace ZEP
