#include <zep/view/OverPixels.h>

#include <zep/gl/Scopes.h>

#include <QPainter>

namespace ZEP {

namespace {

constexpr double PivotSize = 26; // pixels
constexpr double PivotRadius = 8;

void Send(const QImage& picture, const QPoint& at) {
    const TZEPMatricesScope matrices;
    for (const GLenum matrix : std::initializer_list<GLenum>{GL_PROJECTION, GL_MODELVIEW}) {
        glMatrixMode(matrix);
        glLoadIdentity();
    }
    for (const GLenum off :
         std::initializer_list<GLenum>{GL_LIGHTING, GL_DEPTH_TEST, GL_FOG, GL_TEXTURE_2D,
                                       GL_STENCIL_TEST, GL_SCISSOR_TEST, GL_ALPHA_TEST})
        glDisable(off);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    // A raster position out of view draws nothing: one in view is shifted.
    glRasterPos2f(-1, -1);
    glBitmap(0, 0, 0, 0, static_cast<float>(at.x()), static_cast<float>(at.y()), nullptr);
    glDrawPixels(picture.width(), picture.height(), GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV,
                 picture.constBits());
    glPopClientAttrib();
}

} // namespace

void DrawPixels(const QImage& picture, const QPoint& at) {
    const TZEPAttribScope attributes(GL_ALL_ATTRIB_BITS);
    glDisable(GL_BLEND);
    Send(picture, at);
}

void DrawBlended(const QImage& picture, const QPoint& at) {
    const TZEPAttribScope attributes(GL_ALL_ATTRIB_BITS);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    Send(picture.mirrored(), at);
}

QImage PaintedMark(const QSizeF& size, const QPointF& middle, double pixelRatio,
                   const std::function<void(QPainter&)>& paint) {
    QImage mark((size * pixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied);
    mark.fill(Qt::transparent);
    QPainter painter(&mark);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(pixelRatio, pixelRatio);
    painter.translate(middle);
    paint(painter);
    return mark;
}

QImage PivotMark(double pixelRatio) {
    const QPointF middle(PivotSize / 2, PivotSize / 2);
    return PaintedMark({PivotSize, PivotSize}, middle, pixelRatio, [](QPainter& painter) {
        for (const auto& [color, width] :
             {std::pair{QColor(0, 0, 0, 160), 4.0}, {Qt::white, 1.6}}) {
            painter.setPen(QPen(color, width));
            painter.drawEllipse(QPointF(), PivotRadius, PivotRadius);
            painter.drawPoint(QPointF());
        }
    });
}

} // namespace ZEP
