#pragma once

#include <zep/Export.h>
#include <zep/framework/Persistent.h>
#include <zep/scene/Geom.h>
#include <zep/view/MouseInput.h>

#include <QPoint>
#include <QPointer>

#include <functional>
#include <map>
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
/// With `Extended` the mouse is as in CAD programs. The wheel comes nearer away from the user, by a
/// sixth a notch, and goes back the same way; `mmDolly` goes to the point under the pointer,
/// `mmTruck` keeps it there, and `mmOrbit` turns about it; where nothing is there, about the middle
/// of what is selected, and else about the target. A rectangle that is drawn to the right selects
/// what lies wholly inside, one to the left what it touches. `SetMousePreset`
/// (zep/view/MousePresets.h) sets all that at once.
///
/// Defaults: no action for any button nor for the wheel; not extended.
class ZEP_EXPORT TZEPPanelControl : public TPersistent {
    Q_GADGET
    Q_PROPERTY(TZEPMouseMode MouseLeft READ MouseLeft WRITE SetMouseLeft)
    Q_CLASSINFO("MouseLeft", "mmNone")
    Q_PROPERTY(TZEPMouseMode MouseRight READ MouseRight WRITE SetMouseRight)
    Q_CLASSINFO("MouseRight", "mmNone")
    Q_PROPERTY(TZEPMouseMode MouseWheel READ MouseWheel WRITE SetMouseWheel)
    Q_CLASSINFO("MouseWheel", "mmNone")
    Q_PROPERTY(bool MouseDowned READ MouseDowned)
    Q_PROPERTY(TZEPMouseMode MouseMiddle READ MouseMiddle WRITE SetMouseMiddle)
    Q_CLASSINFO("MouseMiddle", "mmNone")
    Q_PROPERTY(bool Extended READ Extended WRITE SetExtended)
    Q_CLASSINFO("Extended", "false")
    Q_PROPERTY(bool WheelReversed READ WheelReversed WRITE SetWheelReversed)
    Q_CLASSINFO("WheelReversed", "false")
    Q_PROPERTY(bool Lock2D READ Lock2D WRITE SetLock2D)
    Q_CLASSINFO("Lock2D", "false")
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
        mmPerspective,
        mmZoomWindow ///< a rectangle is to fill the view; extended, or as the next drag
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
    [[nodiscard]] TZEPMouseMode MouseMiddle() const { return m_mouseMiddle; }
    void SetMouseMiddle(TZEPMouseMode mode) { m_mouseMiddle = mode; }
    [[nodiscard]] bool Extended() const { return m_extended; }
    void SetExtended(bool extended) { m_extended = extended; }
    [[nodiscard]] bool WheelReversed() const { return m_wheelReversed; }
    /// Whatever the wheel does, it does the other way round.
    void SetWheelReversed(bool reversed) { m_wheelReversed = reversed; }
    [[nodiscard]] bool Lock2D() const { return m_lock2D; }
    /// For drawings that are seen from above: what would turn the view (`mmOrbit`, `mmPan`) shifts
    /// it as `mmTruck` does. A press with Shift that orbits ends it.
    void SetLock2D(bool lock) { m_lock2D = lock; }
    /// What a button does that is pressed while these keys are held.
    /// \param keys  of `ssShift`, `ssAlt` and `ssCtrl`, at least one
    /// \param mode  none, as at first: the same as without keys
    void SetMode(TMouseButton button, TShiftState keys, std::optional<TZEPMouseMode> mode);
    [[nodiscard]] TZEPMouseMode Mode(TMouseButton button, TShiftState keys = {}) const;
    /// The next press of the left button does this, whatever it does else; none: as ever.
    void SetNextDrag(std::optional<TZEPMouseMode> mode) { m_next = mode; }
    [[nodiscard]] std::optional<TZEPMouseMode> NextDrag() const { return m_next; }
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
    [[nodiscard]] TZEPMouseMode Known(TZEPMouseMode mode) const;
    [[nodiscard]] TZEPMouseMode PressedMode(TMouseButton button) const;
    [[nodiscard]] TZEPMouseMode ModeOf(TShiftState shift) const;
    void Drag(TZEPMousePanel& panel, TZEPMouseMode mode, QPoint at);
    void Navigate(TZEPMousePanel& panel, TZEPMouseMode mode, QPoint at);
    [[nodiscard]] bool NavigateExtended(TZEPMousePanel& panel, TZEPMouseMode mode, QPoint at);
    void Grip(TZEPMousePanel& panel, bool selection);
    void Truck(TZEPMousePanel& panel, QPoint at);
    void Stretch(TZEPMousePanel& panel, TZEPMouseMode mode, QPoint at);
    [[nodiscard]] bool SelectsInside() const;
    void EndSelect(TZEPMousePanel& panel, TShiftState shift, QPoint at);
    void SelectPoint(TZEPMousePanel& panel, QPoint at, TShiftState shift);
    void SelectRectangle(TZEPMousePanel& panel, TShiftState shift);
    void Select(TZEPMousePanel& panel, const std::function<void(TZEPScene&)>& select);
    void ZoomWindow(TZEPMousePanel& panel);
    void DollyToPointer(TZEPMousePanel& panel, int delta, QPoint at);
    void ResumeAnimation();
    void End(TZEPMousePanel& panel);

    TZEPMouseMode m_mouseLeft = mmNone;
    TZEPMouseMode m_mouseRight = mmNone;
    TZEPMouseMode m_mouseWheel = mmNone;
    TZEPMouseMode m_mouseMiddle = mmNone;
    std::map<std::pair<TMouseButton, TShiftState::Int>, TZEPMouseMode> m_withKeys;
    std::optional<TZEPMouseMode> m_next;
    bool m_extended = false;
    bool m_wheelReversed = false;
    bool m_lock2D = false;
    bool m_mouseDowned = false;
    bool m_dragging = false; ///< also between two releases
    bool m_moved = false;
    bool m_wasAnimating = false;
    QPoint m_press;
    TShiftState m_keys;                 ///< held at the press
    std::optional<TZEPMouseMode> m_own; ///< of this drag of the left button alone
    std::optional<TGLArrayd3> m_grip;   ///< what an extended drag took hold of
    std::optional<QPoint> m_corner;     ///< of the rectangle, once it was drawn
    QPointer<TZEPCamera> m_camera;      ///< whose view was stored at the press
    QPointer<TZEPScene> m_scene;        ///< whose animation was stopped
};

using TZEPMouseMode = TZEPPanelControl::TZEPMouseMode;
using enum TZEPPanelControl::TZEPMouseMode;

} // namespace ZEP
