#include <zep/scene/Vectors.h>
#include <zep/view/Camera.h>
#include <zep/view/Panel.h>

#include <GL/glu.h>

#include <cmath>

namespace ZEP {

namespace {

struct TView {
    TGLMatrixd4 Model, Projection;
    std::array<GLint, 4> Viewport;
};

std::optional<TView> ViewOf(const TZEPPanel& panel) {
    const TZEPCamera* camera = panel.Camera();
    const int width = panel.Width();
    const int height = panel.Height();
    if (!camera || width <= 0 || height <= 0) return {};
    return TView{
        camera->GetViewMatrix(), camera->GetProjectionMatrix(width, height), {0, 0, width, height}};
}

} // namespace

std::optional<TGLArrayd3> TZEPPanel::GetWorldCoords(double x, double y, double depth) const {
    const std::optional<TView> view = ViewOf(*this);
    TGLArrayd3 world;
    if (!view ||
        !gluUnProject(x, Height() - y, depth, view->Model[0].data(), view->Projection[0].data(),
                      view->Viewport.data(), &world[0], &world[1], &world[2]) ||
        !IsFinite(world))
        return {};
    return world;
}

std::optional<TGLArrayd3> TZEPPanel::GetScreenCoords(const TGLArrayd3& world) const {
    const std::optional<TView> view = ViewOf(*this);
    TGLArrayd3 window;
    if (!view ||
        !gluProject(world[0], world[1], world[2], view->Model[0].data(), view->Projection[0].data(),
                    view->Viewport.data(), &window[0], &window[1], &window[2]) ||
        !IsFinite(window))
        return {};
    return TGLArrayd3{window[0], Height() - window[1], window[2]};
}

} // namespace ZEP
