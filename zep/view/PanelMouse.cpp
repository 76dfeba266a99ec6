#include <zep/gl/Names.h>
#include <zep/view/Camera.h>
#include <zep/view/Cursors.h>
#include <zep/view/Panel.h>
#include <zep/view/RubberBand.h>

#include <QCoreApplication>
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
    m_control.MouseDown(*this, button, shift, at.x(), at.y());
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
    m_control.MouseMove(*this, shift, at.x(), at.y());
    emit AfterMouseMove(this, shift, at.x(), at.y());
    QWidget::mouseMoveEvent(event);
    event->accept();
}

void TZEPPanel::mouseReleaseEvent(QMouseEvent* event) {
    TMouseButton button{};
    if (ToMouseButton(event->button(), button)) {
        const TShiftState shift = ShiftOf(*event);
        const QPoint at = DevicePosition(event->position());
        const QPointer<TZEPPanel> alive(this);
        emit BeforeMouseUp(this, button, shift, at.x(), at.y());
        m_control.MouseUp(*this, button, shift, at.x(), at.y());
        if (!alive) return; // a handler of the selection closed the window
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
    m_control.MouseWheelMove(*this, shift, delta, at);
    emit AfterMouseWheel(this, shift, delta, at.x(), at.y());
    QWidget::wheelEvent(event);
    event->accept();
}

// --- what the mouse control asks ---------------------------------------------------------------

bool TZEPPanel::MakeCurrent() {
    m_context.MakeCurrent();
    if (!m_drawing) SetContextIsCurrent(false); // a host may draw elsewhere before the next frame
    return m_context.IsCurrent();
}

void TZEPPanel::RepaintFull() {
    m_fullNext = true;
    Invalidate();
}

void TZEPPanel::CaptureMouse() {
    if (isVisible()) grabMouse();
}

void TZEPPanel::ReleaseCapture() {
    if (mouseGrabber() == this) releaseMouse();
}

void TZEPPanel::ShowCursor(int index) {
    if (index >= 0) {
        if (!m_ownCursor) m_ownCursor = testAttribute(Qt::WA_SetCursor) ? cursor() : QCursor();
        return setCursor(NavigationCursor(index));
    }
    if (m_ownCursor) setCursor(*m_ownCursor);
    m_ownCursor.reset();
}

void TZEPPanel::ShowRubberBand(const QRect& place) {
    if (!m_band) m_band = std::make_unique<TZEPRubberBand>(this);
    const qreal ratio = devicePixelRatioF();
    m_band->Stretch(
        QRectF(place.x() / ratio, place.y() / ratio, place.width() / ratio, place.height() / ratio)
            .toAlignedRect());
}

void TZEPPanel::HideRubberBand() {
    m_band.reset();
}

void TZEPPanel::ProcessMessages() {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace ZEP
