#include <zep/view/RubberBand.h>

#include <QPainter>

namespace ZEP {

namespace {

struct TBandLook {
    QColor Gaps, Line;
    int Border; ///< pixels
    bool Dashed;
};

TBandLook LookOf(TZEPBand band) {
    switch (band) {
    case TZEPBand::Inside:
        return {QColor(0x3B, 0x8E, 0xFF), QColor(0x3B, 0x8E, 0xFF), 2, false};
    case TZEPBand::Touched:
        return {QColor(0x10, 0x30, 0x10), QColor(0x4C, 0xD9, 0x4C), 2, true};
    case TZEPBand::Plain:
        break;
    }
    return {Qt::white, Qt::black, 1, true};
}

} // namespace

TZEPRubberBand::TZEPRubberBand(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_NativeWindow);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void TZEPRubberBand::SetBand(TZEPBand band) {
    m_band = band;
    Stretch(geometry());
}

void TZEPRubberBand::Stretch(const QRect& place) {
    const int border = LookOf(m_band).Border;
    setGeometry(place);
    setMask(QRegion(rect()).subtracted(rect().adjusted(border, border, -border, -border)));
    show();
    raise();
    update();
}

void TZEPRubberBand::paintEvent(QPaintEvent*) {
    const TBandLook look = LookOf(m_band);
    QPainter painter(this);
    painter.fillRect(rect(), look.Gaps);
    QPen pen(look.Line, look.Border);
    pen.setCapStyle(Qt::FlatCap);
    if (look.Dashed) pen.setDashPattern({4, 4});
    painter.setPen(pen);
    const int half = look.Border / 2;
    painter.drawRect(rect().adjusted(half, half, half - look.Border, half - look.Border));
}

} // namespace ZEP
