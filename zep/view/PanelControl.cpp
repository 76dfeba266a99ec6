#include <zep/view/PanelControl.h>

#include <zep/framework/Watch.h>
#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>
#include <zep/view/MousePanel.h>

#include <GL/glu.h>

#include <algorithm>
#include <cstdlib>

namespace ZEP {

namespace {

constexpr int RollCursor = 100;
constexpr int OrbitCursor = 101;
constexpr int PerspectiveCursor = 103;
constexpr int OwnCursor = -1;
constexpr int Threshold = 4; // pixels: beyond, a press becomes a rectangle
constexpr QSize Point{4, 4};
constexpr TShiftState DragButtons = ssLeft | ssRight;

/// Values from outside the enumeration may carry flags above these bits.
TZEPMouseMode Known(TZEPMouseMode mode) {
    const int value = mode & 0x7F;
    return value <= mmPerspective ? static_cast<TZEPMouseMode>(value) : mmNone;
}

TZEPScene* SceneOf(const TZEPMousePanel& panel) {
    return panel.Camera() ? panel.Camera()->Scene() : nullptr;
}

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

TZEPMouseMode TZEPPanelControl::ModeOf(TShiftState shift) const {
    if (shift & ssLeft) return Known(m_mouseLeft);
    return shift & ssRight ? Known(m_mouseRight) : mmNone;
}

TZEPPanelControl::~TZEPPanelControl() {
    TZEPWatch::Forget(this);
}

// --- press and release -------------------------------------------------------------------------

void TZEPPanelControl::MouseDown(TZEPMousePanel& panel, TMouseButton, TShiftState, int x, int y) {
    if (!panel.Camera()) return;
    m_camera = panel.Camera();
    TZEPScene* scene = SceneOf(panel);
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
    if (button == mbMiddle) return last ? End(panel) : void();
    m_mouseDowned = false;
    if (Known(button == mbLeft ? m_mouseLeft : m_mouseRight) == mmSelect && panel.Camera()) {
        if (m_corner)
            SelectRectangle(panel, shift);
        else
            SelectPoint(panel, {x, y}, shift);
        if (!alive) return;
        m_moved = true;
    }
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
    panel.HideRubberBand();
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
    if (mode == mmSelect) return Stretch(panel, at);
    m_moved = true;
    m_camera->Restore();
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

void TZEPPanelControl::Stretch(TZEPMousePanel& panel, QPoint at) {
    const QPoint moved = at - m_press;
    if (!m_corner && std::max(std::abs(moved.x()), std::abs(moved.y())) <= Threshold) return;
    m_corner = at;
    panel.ShowRubberBand(
        QRect(QPoint(std::min(at.x(), m_press.x()), std::min(at.y(), m_press.y())),
              QPoint(std::max(at.x(), m_press.x()), std::max(at.y(), m_press.y()))));
}

// --- selection ---------------------------------------------------------------------------------

void TZEPPanelControl::SelectPoint(TZEPMousePanel& panel, QPoint at, TShiftState shift) {
    Select(panel, {at.x(), panel.Height() - at.y()}, Point, true, !(shift & ssCtrl));
}

void TZEPPanelControl::SelectRectangle(TZEPMousePanel& panel, TShiftState shift) {
    const QPoint sum = m_press + *m_corner;
    const QPoint size = m_press - *m_corner;
    Select(panel, {sum.x() / 2, panel.Height() - sum.y() / 2},
           {std::abs(size.x()), std::abs(size.y())}, shift.testFlag(ssShift),
           !(shift & (ssCtrl | ssShift)));
}

void TZEPPanelControl::Select(TZEPMousePanel& panel, QPoint center, QSize size, bool toggle,
                              bool clearFirst) {
    const TZEPWatch alive(this);
    panel.MakeCurrent();
    panel.FireBeforSelect();
    if (!alive) return;
    panel.MakeCurrent(); // whatever the handler did
    if (TZEPScene* scene = SceneOf(panel))
        scene->Select(panel.Camera(), panel.Width(), panel.Height(), center.x(), center.y(),
                      size.width(), size.height(), true, toggle, clearFirst);
    if (alive) panel.FireAfterSelect();
    if (alive) panel.DoneCurrent();
}

// --- wheel -------------------------------------------------------------------------------------

void TZEPPanelControl::MouseWheelMove(TZEPMousePanel& panel, TShiftState, int delta, QPoint) {
    TZEPCamera* camera = panel.Camera();
    if (!camera) return;
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
