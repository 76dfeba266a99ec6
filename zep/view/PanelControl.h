#pragma once

#include <zep/Export.h>
#include <zep/framework/Persistent.h>
#include <zep/view/MouseInput.h>

#include <QPoint>
#include <QPointer>

#include <optional>

namespace ZEP {

class TZEPCamera;
class TZEPMousePanel;
class TZEPScene;

/// Turns the mouse input of a panel into movements of its camera and into selections. Every drag is
/// absolute: the view at the press is stored, and each move applies the whole displacement to it,
/// so that rounding never adds up and a drag back to its start gives the very view back. While a
/// button is held the scene's animation stands still.
///
/// Places are device pixels from the upper left corner of the panel.
///
/// Defaults: no action for either button nor for the wheel.
class ZEP_EXPORT TZEPPanelControl : public TPersistent {
    Q_GADGET
    Q_PROPERTY(TZEPMouseMode MouseLeft READ MouseLeft WRITE SetMouseLeft)
    Q_CLASSINFO("MouseLeft", "mmNone")
    Q_PROPERTY(TZEPMouseMode MouseRight READ MouseRight WRITE SetMouseRight)
    Q_CLASSINFO("MouseRight", "mmNone")
    Q_PROPERTY(TZEPMouseMode MouseWheel READ MouseWheel WRITE SetMouseWheel)
    Q_CLASSINFO("MouseWheel", "mmNone")
    Q_PROPERTY(bool MouseDowned READ MouseDowned)
public:
    /// What a drag does. Two pixels pan by one degree, four orbit by one degree, one rolls by one
    /// degree; a drag across the height of the panel dollies by the distance to the target; ten
    /// pixels widen the field of view by one degree; a thousand double the perspective's distance.
    enum TZEPMouseMode : unsigned char {
        mmNone,
        mmSelect, ///< a click selects one object, with Ctrl it toggles; a drag opens a rectangle
        mmPan,
        mmTruck,
        mmOrbit,
        mmRoll,
        mmDolly,
        mmFOV,
        mmPerspective
    };
    Q_ENUM(TZEPMouseMode)

    ~TZEPPanelControl() override;
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    [[nodiscard]] TZEPMouseMode MouseLeft() const { return m_mouseLeft; }
    void SetMouseLeft(TZEPMouseMode mode) { m_mouseLeft = mode; }
    [[nodiscard]] TZEPMouseMode MouseRight() const { return m_mouseRight; }
    void SetMouseRight(TZEPMouseMode mode) { m_mouseRight = mode; }
    /// `mmRoll` to `mmPerspective`; the others leave the wheel without effect.
    [[nodiscard]] TZEPMouseMode MouseWheel() const { return m_mouseWheel; }
    void SetMouseWheel(TZEPMouseMode mode) { m_mouseWheel = mode; }
    /// A button is held that was pressed while the panel had a camera.
    [[nodiscard]] bool MouseDowned() const { return m_mouseDowned; }
    [[nodiscard]] bool GetMouseDowned() const { return m_mouseDowned; }

    void MouseDown(TZEPMousePanel& panel, TMouseButton button, TShiftState shift, int x, int y);
    void MouseMove(TZEPMousePanel& panel, TShiftState shift, int x, int y);
    /// \param shift  what is still held
    void MouseUp(TZEPMousePanel& panel, TMouseButton button, TShiftState shift, int x, int y);
    /// \param delta  120 for each notch, positive away from the user
    void MouseWheelMove(TZEPMousePanel& panel, TShiftState shift, int delta, QPoint position);
    /// The release will never come: the drag ends where it is and selects nothing.
    void Cancel(TZEPMousePanel& panel);

private:
    [[nodiscard]] TZEPMouseMode ModeOf(TShiftState shift) const;
    void Drag(TZEPMousePanel& panel, TZEPMouseMode mode, QPoint at);
    void Navigate(TZEPMousePanel& panel, TZEPMouseMode mode, QPoint at);
    void Truck(TZEPMousePanel& panel, QPoint at);
    void Stretch(TZEPMousePanel& panel, QPoint at);
    void SelectPoint(TZEPMousePanel& panel, QPoint at, TShiftState shift);
    void SelectRectangle(TZEPMousePanel& panel, TShiftState shift);
    void Select(TZEPMousePanel& panel, QPoint center, QSize size, bool toggle, bool clearFirst);
    void ResumeAnimation();
    void End(TZEPMousePanel& panel);

    TZEPMouseMode m_mouseLeft = mmNone;
    TZEPMouseMode m_mouseRight = mmNone;
    TZEPMouseMode m_mouseWheel = mmNone;
    bool m_mouseDowned = false;
    bool m_dragging = false; ///< also between two releases
    bool m_moved = false;
    bool m_wasAnimating = false;
    QPoint m_press;
    std::optional<QPoint> m_corner; ///< of the rectangle, once it was drawn
    QPointer<TZEPCamera> m_camera;  ///< whose view was stored at the press
    QPointer<TZEPScene> m_scene;    ///< whose animation was stopped
};

using TZEPMouseMode = TZEPPanelControl::TZEPMouseMode;
using enum TZEPPanelControl::TZEPMouseMode;

} // namespace ZEP
