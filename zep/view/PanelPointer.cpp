#include <zep/framework/Watch.h>
#include <zep/scene/ForEach.h>
#include <zep/scene/Scene.h>
#include <zep/scene/SelectHits.h>
#include <zep/scene/Vectors.h>
#include <zep/view/Camera.h>
#include <zep/view/Extent.h>
#include <zep/view/MousePanel.h>
#include <zep/view/PanelControl.h>
#include <zep/view/PointMoves.h>
#include <zep/view/ViewPlaces.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

// Extended navigation: about the point of the scene that is under the pointer.

namespace ZEP {

namespace {

constexpr int OrbitCursor = 101;
constexpr double Notch = 120;
constexpr double NotchFactor = 1.2;

/// Pixels about a place.
TZEPPickRegion RegionAt(const QSize& view, QPoint at, const QSize& size) {
    return {view.width(),           view.height(), at.x(),
            view.height() - at.y(), size.width(),  size.height()};
}

/// Of what is seen there; none where nothing is.
std::optional<double> DepthAt(TZEPMousePanel& panel, QPoint at,
                              std::initializer_list<QSize> sizes) {
    const TZEPCamera* camera = panel.Camera();
    if (!camera || !camera->Scene()) return {};
    const QPointer<TZEPCamera> alive(panel.Camera());
    std::optional<double> depth;
    const QSize view = panel.Size();
    panel.TryFind([&] {
        for (const QSize& size : sizes)
            if (!depth && alive && alive->Scene())
                depth = alive->Scene()->DepthIn(*alive, RegionAt(view, at, size));
    });
    return depth;
}

/// A place in the view, as deep as a point of the scene or as that depth.
std::optional<TGLArrayd3> PointAt(const TZEPMousePanel& panel, QPoint at, double depth) {
    return ToWorld(*panel.Camera(), panel.Size(), {1.0 * at.x(), 1.0 * at.y(), depth});
}

std::optional<TGLArrayd3> PointAsDeepAs(const TZEPMousePanel& panel, QPoint at,
                                        const TGLArrayd3& point) {
    const auto place = ToView(*panel.Camera(), panel.Size(), point);
    return place ? PointAt(panel, at, (*place)[2]) : std::nullopt;
}

TGLArrayd3 TargetOf(const TZEPCamera& camera) {
    TGLArrayd3 target = camera.GetTarget();
    Xformd(camera.GetAbsoluteMatrix(), target);
    return target;
}

std::optional<TGLArrayd3> MiddleOfSelected(TZEPScene& scene) {
    std::optional<TZEPBounds> bounds;
    ForEachObject(scene, [&bounds](TZEPObject& object) {
        if (!object.Selected() || !object.Visible()) return;
        TZEPBounds box;
        object.GetAbsoluteSize(box.Min, box.Max);
        Widen(bounds, box);
    });
    if (!bounds) return {};
    return Middle(bounds->Min, bounds->Max);
}

} // namespace

/// Takes hold of what is under the pointer at the press, as the camera sees it then.
void TZEPPanelControl::Grip(TZEPMousePanel& panel, bool selection) {
    const TZEPWatch alive(this); // what is drawn to find it may free the panel
    const auto depth = DepthAt(panel, m_press, {{4, 4}, {12, 12}});
    if (!alive || !m_camera || m_camera != panel.Camera()) return;
    if (depth) m_grip = PointAt(panel, m_press, *depth);
    if (!m_grip && selection && m_camera->Scene()) m_grip = MiddleOfSelected(*m_camera->Scene());
    if (!m_grip && !selection) m_grip = PointAsDeepAs(panel, m_press, TargetOf(*m_camera));
    if (!m_grip) m_grip = TargetOf(*m_camera);
}

/// \return  false for what is done as ever
bool TZEPPanelControl::NavigateExtended(TZEPMousePanel& panel, TZEPMouseMode mode, QPoint at) {
    if (mode != mmOrbit && mode != mmTruck && mode != mmDolly) return false;
    const TZEPWatch alive(this);
    if (!m_grip) Grip(panel, mode == mmOrbit);
    if (!alive || !m_grip) return true;
    const QPointF moved = at - m_press;
    if (mode == mmOrbit) {
        panel.ShowCursor(OrbitCursor);
        panel.ShowPivot(*m_grip);
        OrbitAbout(*m_camera, *m_grip, -moved.x() / 4, -moved.y() / 4);
    } else if (mode == mmDolly) {
        DollyAbout(*m_camera, *m_grip, moved.y() / std::max(panel.Height(), 1));
    } else if (at == m_press) {
        ShiftBy(*m_camera, zero3d);
    } else if (const auto from = PointAsDeepAs(panel, m_press, *m_grip),
               to = PointAsDeepAs(panel, at, *m_grip);
               from && to) {
        ShiftBy(*m_camera, *from - *to);
    }
    return true;
}

void TZEPPanelControl::DollyToPointer(TZEPMousePanel& panel, int delta, QPoint at) {
    const TZEPWatch alive(this);
    const QPointer<TZEPCamera> camera(panel.Camera());
    const auto depth = DepthAt(panel, at, {{4, 4}, {12, 12}});
    if (!alive || !camera || camera != panel.Camera()) return;
    const auto point =
        depth ? PointAt(panel, at, *depth) : PointAsDeepAs(panel, at, TargetOf(*camera));
    DollyAbout(*camera, point.value_or(TargetOf(*camera)),
               std::pow(NotchFactor, -delta / Notch) - 1);
    panel.RepaintFull();
}

void TZEPPanelControl::ZoomWindow(TZEPMousePanel& panel) {
    if (!m_corner || panel.Width() <= 0 || panel.Height() <= 0) return;
    const QPoint middle = (m_press + *m_corner) / 2;
    const QPoint size = m_press - *m_corner;
    const QSize region(std::abs(size.x()), std::abs(size.y()));
    const TZEPWatch alive(this);
    const QPointer<TZEPCamera> camera(panel.Camera());
    const auto depth = DepthAt(panel, middle, {{4, 4}, region});
    if (!alive || !camera || camera != panel.Camera()) return;
    const auto point =
        depth ? PointAt(panel, middle, *depth) : PointAsDeepAs(panel, middle, TargetOf(*camera));
    if (!point) return;
    m_moved = true;
    ZoomInto(
        *camera, *point,
        std::max(1.0 * region.width() / panel.Width(), 1.0 * region.height() / panel.Height()));
}

} // namespace ZEP
