#include <zep/view/PanelControl.h>

#include <zep/framework/Watch.h>
#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>
#include <zep/view/MousePanel.h>

#include <GL/glu.h>

#include <algorithm>
#include <utility>

namespace ZEP {

namespace {

constexpr int RollCursor = 100;
constexpr int OrbitCursor = 101;
constexpr int PerspectiveCursor = 103;
constexpr int OwnCursor = -1;
constexpr TShiftState DragButtons = ssLeft | ssRight;
constexpr TShiftState Keys = ssShift | ssAlt | ssCtrl;

/// OpenGL's matrices and viewport, which lead from a window back into the scene.
class TUnproject {
public:
    TUnproject() {
        glGetDoublev(GL_MODELVIEW_MATRIX, m_modelView[0].data());
        glGetDoublev(GL_PROJECTION_MATRIX, m_projection[0].data());
        glGetIntegerv(GL_VIEWPORT, m_viewport.data());
    }
    bool operator()(double x, double y, TGLArrayd3& point) const {
        return gluUnProject(x, y, 0.5, m_modelView[0].data(), m_projection[0].data(),
                            m_viewport.data(), &point[0], &point[1], &point[2]) == GL_TRUE;
    }

private:
    TGLMatrixd4 m_modelView;
    TGLMatrixd4 m_projection;
    std::array<GLint, 4> m_viewport{};
};

} // namespace

// --- modes -------------------------------------------------------------------------------------

/// Values from outside the enumeration may carry flags above these bits.
TZEPMouseMode TZEPPanelControl::Known(TZEPMouseMode mode) const {
    const int value = mode & 0x7F;
    return value <= (m_extended ? mmZoomWindow : mmPerspective) ? static_cast<TZEPMouseMode>(value)
                                                                : mmNone;
}

void TZEPPanelControl::SetMode(TMouseButton button, TShiftState keys,
                               std::optional<TZEPMouseMode> mode) {
    if (!(keys & Keys)) return;
    const std::pair place(button, (keys & Keys).toInt());
    m_withKeys.erase(place);
    if (mode) m_withKeys[place] = *mode;
}

TZEPMouseMode TZEPPanelControl::Mode(TMouseButton button, TShiftState keys) const {
    const auto found = m_withKeys.find({button, (keys & Keys).toInt()});
    if (found != m_withKeys.end()) return Known(found->second);
    return Known(button == mbLeft ? m_mouseLeft : button == mbRight ? m_mouseRight : m_mouseMiddle);
}

/// What the drag that began with the last press does with that button.
TZEPMouseMode TZEPPanelControl::PressedMode(TMouseButton button) const {
    if (button == mbLeft && m_own) return *m_own;
    const TZEPMouseMode mode = Mode(button, m_keys);
    return m_lock2D && (mode == mmOrbit || mode == mmPan) ? mmTruck : mode;
}

TZEPMouseMode TZEPPanelControl::ModeOf(TShiftState shift) const {
    for (const auto& [held, button] :
         {std::pair{ssLeft, mbLeft}, {ssRight, mbRight}, {ssMiddle, mbMiddle}})
        if (shift & held) return PressedMode(button);
    return mmNone;
}

TZEPPanelControl::~TZEPPanelControl() {
    TZEPWatch::Forget(this);
}

// --- press and release -------------------------------------------------------------------------

void TZEPPanelControl::MouseDown(TZEPMousePanel& panel, TMouseButton button, TShiftState shift,
                                 int x, int y) {
    if (!panel.Camera()) return;
    m_keys = shift & Keys;
    m_own = button == mbLeft ? std::exchange(m_next, {}) : std::nullopt;
    m_grip.reset();
    if (shift.testFlag(ssShift) && Mode(button, m_keys) == mmOrbit) m_lock2D = false;
    m_camera = panel.Camera();
    TZEPScene* scene = m_camera->Scene();
    // A second button comes while the first one has stopped the animation.
    m_wasAnimating = (m_dragging && m_wasAnimating) || (scene && scene->Animation());
    m_scene = scene;
    m_mouseDowned = m_dragging = true;
    m_press = {x, y};
    m_corner.reset();
    m_moved = false;
    if (scene) scene->SetAnimation(false);
    m_camera->Store();
    panel.CaptureMouse();
}

void TZEPPanelControl::MouseUp(TZEPMousePanel& panel, TMouseButton button, TShiftState shift, int x,
                               int y) {
    const TZEPWatch alive(this); // handlers may free the panel, and this with it
    if (panel.SelectInMouseUp() && panel.Camera()) {
        SelectPoint(panel, {x, y}, shift);
        if (!alive) return;
        panel.ProcessMessages();
        if (!alive) return;
    }
    if (!m_dragging) return; // the press was not here
    const bool last = !(shift & DragButtons);
    if (last || button != mbMiddle) ResumeAnimation();
    const TZEPMouseMode mode = PressedMode(button);
    if (button == mbMiddle && mode == mmNone) return last ? End(panel) : void();
    m_mouseDowned = false;
    if (mode == mmSelect && panel.Camera()) EndSelect(panel, shift, {x, y});
    if (alive && mode == mmZoomWindow && panel.Camera()) ZoomWindow(panel);
    if (!alive) return;
    if (m_moved) panel.RepaintFull();
    const bool other = m_dragging && !last; // goes on from the same press
    End(panel);
    m_dragging = other;
}

void TZEPPanelControl::ResumeAnimation() {
    if (m_scene) m_scene->SetAnimation(m_wasAnimating);
}

void TZEPPanelControl::End(TZEPMousePanel& panel) {
    m_mouseDowned = m_dragging = false;
    m_corner.reset();
    m_own.reset();
    panel.HideRubberBand();
    panel.HidePivot();
    panel.ShowCursor(OwnCursor);
    panel.ReleaseCapture();
}

void TZEPPanelControl::Cancel(TZEPMousePanel& panel) {
    if (!m_dragging) return;
    ResumeAnimation();
    End(panel);
    if (m_moved) panel.RepaintFull();
}

// --- drags -------------------------------------------------------------------------------------

void TZEPPanelControl::MouseMove(TZEPMousePanel& panel, TShiftState shift, int x, int y) {
    if (!m_dragging) return;
    if (!(shift & (DragButtons | ssMiddle))) return Cancel(panel); // the release went elsewhere
    if (m_camera && m_camera == panel.Camera()) Drag(panel, ModeOf(shift), {x, y});
}

void TZEPPanelControl::Drag(TZEPMousePanel& panel, TZEPMouseMode mode, QPoint at) {
    if (mode == mmNone) return;
    if (mode == mmSelect || mode == mmZoomWindow) return Stretch(panel, mode, at);
    m_moved = true;
    m_camera->Restore();
    if (m_extended && NavigateExtended(panel, mode, at)) return;
    Navigate(panel, mode, at);
}

void TZEPPanelControl::Navigate(TZEPMousePanel& panel, TZEPMouseMode mode, QPoint at) {
    const double x = at.x() - m_press.x();
    const double y = at.y() - m_press.y();
    switch (mode) {
    case mmPan:
        return m_camera->Pan(-x / 2, y / 2);
    case mmTruck:
        return Truck(panel, at);
    case mmOrbit:
        panel.ShowCursor(OrbitCursor);
        return m_camera->Orbit(-x / 4, -y / 4);
    case mmRoll:
        panel.ShowCursor(RollCursor);
        return m_camera->Roll(-x);
    case mmDolly:
        return m_camera->Dolly(y / std::max(panel.Height(), 1));
    case mmFOV:
        m_camera->FOV(y * 0.1);
        return m_camera->Invalidate(m_camera); // a step that is refused leaves the view restored
    case mmPerspective:
        panel.ShowCursor(PerspectiveCursor);
        return m_camera->Perspective(y * 0.001);
    case mmNone:
    case mmSelect:
    case mmZoomWindow:
        return;
    }
}

// The factor and the window's y, which is negated instead of counted from below, give the feeling
// that users know.
void TZEPPanelControl::Truck(TZEPMousePanel& panel, QPoint at) {
    if (!panel.MakeCurrent()) return;
    const double s = m_camera->Orthographic() ? 1 : 5;
    const TUnproject unproject;
    TGLArrayd3 from;
    TGLArrayd3 to;
    if (unproject(s * m_press.x(), -s * m_press.y(), from) &&
        unproject(s * at.x(), -s * at.y(), to))
        m_camera->Truck(to[0] - from[0], to[1] - from[1], to[2] - from[2]);
    panel.DoneCurrent();
}

// --- wheel -------------------------------------------------------------------------------------

void TZEPPanelControl::MouseWheelMove(TZEPMousePanel& panel, TShiftState, int delta, QPoint at) {
    TZEPCamera* camera = panel.Camera();
    if (!camera) return;
    if (m_wheelReversed) delta = -delta;
    if (m_extended && Known(m_mouseWheel) == mmDolly) return DollyToPointer(panel, delta, at);
    switch (Known(m_mouseWheel)) {
    case mmRoll:
        camera->Roll(delta * -0.05);
        break;
    case mmDolly:
        camera->Dolly(delta * 0.001);
        break;
    case mmFOV:
        camera->FOV(delta * 0.01);
        break;
    case mmPerspective:
        camera->Perspective(delta * 0.0001);
        break;
    default:
        return;
    }
    panel.RepaintFull();
}

} // namespace ZEP
