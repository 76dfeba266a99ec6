#include <zep/framework/Watch.h>
#include <zep/scene/Scene.h>
#include <zep/scene/SelectHits.h>
#include <zep/view/Camera.h>
#include <zep/view/MousePanel.h>
#include <zep/view/PanelControl.h>

#include <algorithm>
#include <cstdlib>

// Clicks and rectangles.

namespace ZEP {

namespace {

constexpr int ZoomWindowCursor = 102;
constexpr int Threshold = 4; // pixels: beyond, a press becomes a rectangle
constexpr QSize Point{4, 4};

} // namespace

void TZEPPanelControl::Stretch(TZEPMousePanel& panel, TZEPMouseMode mode, QPoint at) {
    const QPoint moved = at - m_press;
    if (!m_corner && std::max(std::abs(moved.x()), std::abs(moved.y())) <= Threshold) return;
    m_corner = at;
    const QRect place(QPoint(std::min(at.x(), m_press.x()), std::min(at.y(), m_press.y())),
                      QPoint(std::max(at.x(), m_press.x()), std::max(at.y(), m_press.y())));
    if (mode == mmZoomWindow) panel.ShowCursor(ZoomWindowCursor);
    if (mode == mmZoomWindow || !m_extended) return panel.ShowRubberBand(place);
    panel.ShowBand(place, SelectsInside() ? TZEPBand::Inside : TZEPBand::Touched);
}

bool TZEPPanelControl::SelectsInside() const {
    return m_extended && m_corner && m_corner->x() >= m_press.x();
}

void TZEPPanelControl::SelectPoint(TZEPMousePanel& panel, QPoint at, TShiftState shift) {
    Select(panel, [&](TZEPScene& scene) {
        scene.Select(panel.Camera(), panel.Width(), panel.Height(), at.x(), panel.Height() - at.y(),
                     Point.width(), Point.height(), true, true, !(shift & ssCtrl));
    });
}

void TZEPPanelControl::SelectRectangle(TZEPMousePanel& panel, TShiftState shift) {
    const QPoint sum = m_press + *m_corner;
    const QPoint size = m_press - *m_corner;
    const TZEPPickRegion region{panel.Width(),      panel.Height(),
                                sum.x() / 2,        panel.Height() - sum.y() / 2,
                                std::abs(size.x()), std::abs(size.y())};
    const bool clear = !(shift & (ssCtrl | ssShift));
    if (SelectsInside() && panel.Camera()->Scene() && panel.Camera()->Scene()->SelectionEnabled())
        return Select(panel, [&](TZEPScene& scene) {
            const TZEPWatch alive(&scene);
            const auto found = scene.ObjectsIn(*panel.Camera(), region, TZEPReach::Inside);
            if (alive) scene.SelectObjects(found, clear);
        });
    Select(panel, [&](TZEPScene& scene) {
        scene.Select(panel.Camera(), region.ViewWidth, region.ViewHeight, region.X, region.Y,
                     region.Width, region.Height, true, shift.testFlag(ssShift), clear);
    });
}

void TZEPPanelControl::Select(TZEPMousePanel& panel,
                              const std::function<void(TZEPScene&)>& select) {
    const TZEPWatch alive(this);
    panel.MakeCurrent();
    panel.FireBeforSelect();
    if (!alive) return;
    panel.MakeCurrent(); // whatever the handler did
    const TZEPCamera* camera = panel.Camera();
    if (TZEPScene* scene = camera ? camera->Scene() : nullptr)
        panel.TryFind([&] { select(*scene); });
    if (alive) panel.FireAfterSelect();
    if (alive) panel.DoneCurrent();
}

void TZEPPanelControl::EndSelect(TZEPMousePanel& panel, TShiftState shift, QPoint at) {
    m_moved = true;
    if (m_corner)
        SelectRectangle(panel, shift);
    else
        SelectPoint(panel, at, shift);
}

} // namespace ZEP
