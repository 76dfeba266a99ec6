#pragma once

#include <zep/view/PanelControl.h>

#include <QObject>

class QMouseEvent;

namespace ZEP {

class TZEPPanel;

/// Gives the middle button a navigation mode of its own, which the panel has for the other two.
class TMiddleButton : public QObject {
    Q_OBJECT
public:
    /// \param panel  owns the control
    explicit TMiddleButton(TZEPPanel* panel);

    /// A drag with the middle button works as one with the left button in that mode.
    void SetMode(TZEPMouseMode mode) { m_control.SetMouseLeft(mode); }
    [[nodiscard]] TZEPMouseMode Mode() const { return m_control.MouseLeft(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool Press(const QMouseEvent& event);
    bool Drag(const QMouseEvent& event);
    bool Release(const QMouseEvent& event);
    bool GiveUp();
    [[nodiscard]] QPoint DevicePosition(const QMouseEvent& event) const;

    TZEPPanel* m_panel;
    TZEPPanelControl m_control;
};

} // namespace ZEP
