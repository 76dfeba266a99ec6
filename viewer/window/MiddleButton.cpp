#include "viewer/window/MiddleButton.h"

#include <zep/view/Panel.h>

#include <QMouseEvent>

namespace ZEP {

namespace {

TShiftState ShiftOf(const QMouseEvent& event) {
    return ToShiftState(event.modifiers(), Qt::NoButton);
}

} // namespace

TMiddleButton::TMiddleButton(TZEPPanel* panel) : QObject(panel), m_panel(panel) {
    panel->installEventFilter(this);
}

QPoint TMiddleButton::DevicePosition(const QMouseEvent& event) const {
    return (event.position() * m_panel->devicePixelRatioF()).toPoint();
}

bool TMiddleButton::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return Press(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseMove:
        return Drag(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseButtonRelease:
        return Release(*static_cast<QMouseEvent*>(event));
    case QEvent::WindowDeactivate:
    case QEvent::Hide:
        return GiveUp();
    default:
        return QObject::eventFilter(watched, event);
    }
}

bool TMiddleButton::Press(const QMouseEvent& event) {
    if (event.buttons() != Qt::MiddleButton) return GiveUp(); // the other buttons are the panel's
    const QPoint at = DevicePosition(event);
    m_control.MouseDown(*m_panel, mbLeft, ShiftOf(event) | ssLeft, at.x(), at.y());
    return true;
}

bool TMiddleButton::Drag(const QMouseEvent& event) {
    if (!m_control.MouseDowned()) return false;
    const QPoint at = DevicePosition(event);
    const TShiftState held = event.buttons() & Qt::MiddleButton ? ssLeft : TShiftState();
    m_control.MouseMove(*m_panel, ShiftOf(event) | held, at.x(), at.y());
    return true;
}

bool TMiddleButton::Release(const QMouseEvent& event) {
    if (event.button() != Qt::MiddleButton || !m_control.MouseDowned()) return false;
    const QPoint at = DevicePosition(event);
    m_control.MouseUp(*m_panel, mbLeft, ShiftOf(event), at.x(), at.y());
    return true;
}

bool TMiddleButton::GiveUp() {
    m_control.Cancel(*m_panel);
    return false;
}

} // namespace ZEP
