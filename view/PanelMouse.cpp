#include "view/Camera.h"
#include "view/Panel.h"

#include <QMouseEvent>
#include <QWheelEvent>

namespace ZEP {

namespace {

TShiftState ShiftOf(const QSinglePointEvent& event) {
    return ToShiftState(event.modifiers(), event.buttons());
}

} // namespace

QPoint TZEPPanel::DevicePosition(const QPointF& position) const {
    return (position * devicePixelRatioF()).toPoint();
}

void TZEPPanel::Press(QMouseEvent* event, TShiftState extra) {
    TMouseButton button{};
    if (!ToMouseButton(event->button(), button)) return;
    const TShiftState shift = ShiftOf(*event) | extra;
    const QPoint at = DevicePosition(event->position());
    emit BeforeMouseDown(this, button, shift, at.x(), at.y());
    m_mouseDowned = true;
    emit AfterMouseDown(this, button, shift, at.x(), at.y());
}

void TZEPPanel::mousePressEvent(QMouseEvent* event) {
    Press(event, {});
    QWidget::mousePressEvent(event);
    event->accept();
}

void TZEPPanel::mouseMoveEvent(QMouseEvent* event) {
    const TShiftState shift = ShiftOf(*event);
    const QPoint at = DevicePosition(event->position());
    emit BeforeMouseMove(this, shift, at.x(), at.y());
    emit AfterMouseMove(this, shift, at.x(), at.y());
    QWidget::mouseMoveEvent(event);
    event->accept();
}

void TZEPPanel::mouseReleaseEvent(QMouseEvent* event) {
    TMouseButton button{};
    if (ToMouseButton(event->button(), button)) {
        const TShiftState shift = ShiftOf(*event);
        const QPoint at = DevicePosition(event->position());
        emit BeforeMouseUp(this, button, shift, at.x(), at.y());
        m_mouseDowned = event->buttons() != Qt::NoButton;
        if (m_drewDraft && !DrawsDraft()) Invalidate(); // now in full quality
        emit AfterMouseUp(this, button, shift, at.x(), at.y());
    }
    QWidget::mouseReleaseEvent(event);
    event->accept();
}

void TZEPPanel::mouseDoubleClickEvent(QMouseEvent* event) {
    TMouseButton button{};
    if (ToMouseButton(event->button(), button)) {
        const QPoint at = DevicePosition(event->position());
        emit AfterMouseDblClick(this, button, ShiftOf(*event) | ssDouble, at.x(), at.y());
    }
    // The second press is a press like any other: a drag may begin with it.
    Press(event, ssDouble);
    event->accept();
}

void TZEPPanel::wheelEvent(QWheelEvent* event) {
    const TShiftState shift = ShiftOf(*event);
    const QPoint at = DevicePosition(event->position());
    const int delta = event->angleDelta().y();
    emit BeforeMouseWheel(this, shift, delta, at.x(), at.y());
    emit AfterMouseWheel(this, shift, delta, at.x(), at.y());
    QWidget::wheelEvent(event);
    event->accept();
}

} // namespace ZEP
