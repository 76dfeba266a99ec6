#include "viewer/window/TimeSlider.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ZEP {

namespace {

constexpr int Steps = 1'000'000;
constexpr int TickHeight = 5; // pixels

} // namespace

TTimeSlider::TTimeSlider() : QSlider(Qt::Horizontal) {
    setMaximum(Steps);
    setFocusPolicy(Qt::NoFocus); // the arrow keys step through the program
    connect(this, &QSlider::valueChanged, this,
            [this](int value) { Q_EMIT PlaceWanted(1.0 * value / Steps); });
}

void TTimeSlider::SetTicks(std::vector<double> ticks) {
    m_ticks = std::move(ticks);
    update();
}

void TTimeSlider::SetPlace(double place) {
    const QSignalBlocker blocker(this);
    setValue(static_cast<int>(std::lround(std::clamp(place, 0.0, 1.0) * Steps)));
}

QRect TTimeSlider::Way() const {
    QStyleOptionSlider option;
    initStyleOption(&option);
    const auto part = [&](QStyle::SubControl control) {
        return style()->subControlRect(QStyle::CC_Slider, &option, control, this);
    };
    const int half = part(QStyle::SC_SliderHandle).width() / 2;
    return part(QStyle::SC_SliderGroove).adjusted(half, 0, -half, 0);
}

double TTimeSlider::PlaceAt(int x) const {
    const QRect way = Way();
    return std::clamp(1.0 * (x - way.left()) / std::max(way.width(), 1), 0.0, 1.0);
}

bool TTimeSlider::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || !m_tip) return QSlider::event(event);
    const auto& help = static_cast<const QHelpEvent&>(*event);
    QToolTip::showText(help.globalPos(), m_tip(PlaceAt(help.pos().x())), this);
    return true;
}

void TTimeSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        setValue(static_cast<int>(std::lround(PlaceAt(event->pos().x()) * Steps)));
    QSlider::mousePressEvent(event); // a drag goes on from there
}

void TTimeSlider::paintEvent(QPaintEvent* event) {
    QSlider::paintEvent(event);
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Highlight));
    const QRect way = Way();
    int last = -1;
    for (const double tick : m_ticks) {
        const int x = way.left() + static_cast<int>(std::lround(tick * way.width()));
        if (x == std::exchange(last, x)) continue; // thousands of tools are a hundred pixels
        painter.drawLine(x, 0, x, TickHeight);
    }
}

} // namespace ZEP
