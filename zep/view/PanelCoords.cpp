#include <zep/view/Camera.h>
#include <zep/view/Panel.h>
#include <zep/view/ViewPlaces.h>

namespace ZEP {

std::optional<TGLArrayd3> TZEPPanel::GetWorldCoords(double x, double y, double depth) const {
    if (!m_camera) return {};
    return ToWorld(*m_camera, Size(), {x, y, depth});
}

std::optional<TGLArrayd3> TZEPPanel::GetScreenCoords(const TGLArrayd3& world) const {
    if (!m_camera) return {};
    return ToView(*m_camera, Size(), world);
}

} // namespace ZEP
