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

/// Buttons that a panel does not know, back and forward, are its parent's.
bool Takes(QMouseEvent& event, TMouseButton& button) {
    event.setAccepted(ToMouseButton(event.button(), button));
    return event.isAccepted();
}

} // namespace

QPoint TZEPPanel::DevicePosition(const QPointF& position) const {
    return (position * devicePixelRatioF()).toPoint();
}

// Handlers of each of these events may free the panel.

void TZEPPanel::Press(QMouseEvent* event, TShiftState extra) {
    TMouseButton button{};
    if (!Takes(*event, button)) return;
    const TShiftState shift = ShiftOf(*event) | extra;
    const QPoint at = DevicePosition(event->position());
    const QPointer<TZEPPanel> alive(this);
    Q_EMIT BeforeMouseDown(this, button, shift, at.x(), at.y());
    if (alive) m_control.MouseDown(*this, button, shift, at.x(), at.y());
    if (alive) Q_EMIT AfterMouseDown(this, button, shift, at.x(), at.y());
}

void TZEPPanel::mousePressEvent(QMouseEvent* event) {
    QWidget::mousePressEvent(event);
    Press(event, {});
}

void TZEPPanel::mouseMoveEvent(QMouseEvent* event) {
    QWidget::mouseMoveEvent(event);
    event->accept();
    const TShiftState shift = ShiftOf(*event);
    const QPoint at = DevicePosition(event->position());
    const QPointer<TZEPPanel> alive(this);
    Q_EMIT BeforeMouseMove(this, shift, at.x(), at.y());
    if (alive) m_control.MouseMove(*this, shift, at.x(), at.y());
    if (alive) Q_EMIT AfterMouseMove(this, shift, at.x(), at.y());
}

void TZEPPanel::mouseReleaseEvent(QMouseEvent* event) {
    QWidget::mouseReleaseEvent(event);
    TMouseButton button{};
    if (!Takes(*event, button)) return;
    const TShiftState shift = ShiftOf(*event);
    const QPoint at = DevicePosition(event->position());
    const QPointer<TZEPPanel> alive(this);
    Q_EMIT BeforeMouseUp(this, button, shift, at.x(), at.y());
    if (alive) m_control.MouseUp(*this, button, shift, at.x(), at.y());
    if (!alive) return;
    if (m_drewDraft && !DrawsDraft()) Invalidate(); // now in full quality
    Q_EMIT AfterMouseUp(this, button, shift, at.x(), at.y());
}

void TZEPPanel::mouseDoubleClickEvent(QMouseEvent* event) {
    TMouseButton button{};
    if (!Takes(*event, button)) return;
    const QPointer<TZEPPanel> alive(this);
    const QPoint at = DevicePosition(event->position());
    Q_EMIT AfterMouseDblClick(this, button, ShiftOf(*event) | ssDouble, at.x(), at.y());
    // The second press is a press like any other: a drag may begin with it.
    if (alive) Press(event, ssDouble);
}

void TZEPPanel::wheelEvent(QWheelEvent* event) {
    QWidget::wheelEvent(event);
    event->accept();
    const TShiftState shift = ShiftOf(*event);
    const QPoint at = DevicePosition(event->position());
    const QPoint turned = event->angleDelta(); // with Alt held it is told as sideways
    const int delta = turned.y() != 0 ? turned.y() : turned.x();
    const QPointer<TZEPPanel> alive(this);
    Q_EMIT BeforeMouseWheel(this, shift, delta, at.x(), at.y());
    if (alive) m_control.MouseWheelMove(*this, shift, delta, at);
    if (alive) Q_EMIT AfterMouseWheel(this, shift, delta, at.x(), at.y());
}

// --- what the mouse control asks ---------------------------------------------------------------

bool TZEPPanel::MakeCurrent() {
    m_context.MakeCurrent();
    return m_context.IsCurrent();
}

void TZEPPanel::DoneCurrent() {
    if (m_drawing) return;
    m_context.Release();
    TFrame::Resume();
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
        if (!std::exchange(m_showsCursor, true) && testAttribute(Qt::WA_SetCursor))
            m_ownCursor = cursor();
        return setCursor(NavigationCursor(index));
    }
    if (!std::exchange(m_showsCursor, false)) return;
    if (m_ownCursor)
        setCursor(*m_ownCursor);
    else
        unsetCursor();
    m_ownCursor.reset();
}

void TZEPPanel::ShowRubberBand(const QRect& place) {
    if (!m_band) m_band = std::make_unique<TZEPRubberBand>(this);
    const qreal ratio = devicePixelRatioF();
    m_band->Stretch(
        QRectF(place.x() / ratio, place.y() / ratio, place.width() / ratio, place.height() / ratio)
            .toAlignedRect());
}

void TZEPPanel::ShowBand(const QRect& place, TZEPBand band) {
    ShowRubberBand(place);
    m_band->SetBand(band);
}

void TZEPPanel::ShowPivot(const TGLArrayd3& point) {
    m_pivot = point; // the movement that it is for repaints
}

void TZEPPanel::HidePivot() {
    m_pivot.reset(); // a drag that has moved the view ends with a frame
}

void TZEPPanel::HideRubberBand() {
    m_band.reset();
}

void TZEPPanel::ProcessMessages() {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace ZEP
