#pragma once

#include <zep/view/PanelControl.h>

#include <QObject>

class QMainWindow;
class QMenu;

namespace ZEP {

class TMiddleButton;
class TZEPPanel;

/// What the mouse buttons and the wheel do in the view: chosen in a menu, in a tool bar, or by
/// keys. A letter is for the left button, with Shift for the right one, with Alt and Shift for the
/// middle one.
class TNavigation : public QObject {
    Q_OBJECT
public:
    enum TButton : unsigned char { Left, Right, Middle, Wheel };

    /// Adds the menu "&Mouse" and the tool bar. \param window  owns this
    TNavigation(QMainWindow* window, TZEPPanel* panel);

    [[nodiscard]] TZEPMouseMode Mode(TButton button) const;

private:
    QMenu* MenuOf(TButton button, const QString& title, TZEPMouseMode first);
    void SetMode(TButton button, TZEPMouseMode mode);

    QMainWindow* m_window;
    TZEPPanel* m_panel;
    TMiddleButton* m_middle;
};

} // namespace ZEP
