#include <zep/view/RubberBand.h>

#include <QPainter>

namespace ZEP {

TZEPRubberBand::TZEPRubberBand(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_NativeWindow);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void TZEPRubberBand::Stretch(const QRect& place) {
    setGeometry(place);
    setMask(QRegion(rect()).subtracted(rect().adjusted(1, 1, -1, -1)));
    show();
    raise();
    update();
}

void TZEPRubberBand::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    QPen pen(Qt::black);
    pen.setDashPattern({4, 4});
    painter.setPen(pen);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace ZEP
