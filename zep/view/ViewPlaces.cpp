#include <zep/view/ViewPlaces.h>

#include <zep/scene/Vectors.h>
#include <zep/view/Camera.h>

#include <GL/glu.h>

#include <array>

namespace ZEP {

namespace {

struct TMatrices {
    TMatrices(const TZEPCamera& camera, const QSize& view)
        : Model(camera.GetViewMatrix()),
          Projection(camera.GetProjectionMatrix(view.width(), view.height())), Viewport{
                                                                                   0, 0,
                                                                                   view.width(),
                                                                                   view.height()} {}

    TGLMatrixd4 Model, Projection;
    std::array<GLint, 4> Viewport;
};

} // namespace

std::optional<TGLArrayd3> ToWorld(const TZEPCamera& camera, const QSize& view,
                                  const TGLArrayd3& place) {
    if (view.isEmpty()) return {};
    const TMatrices from(camera, view);
    TGLArrayd3 world;
    if (!gluUnProject(place[0], view.height() - place[1], place[2], from.Model[0].data(),
                      from.Projection[0].data(), from.Viewport.data(), &world[0], &world[1],
                      &world[2]) ||
        !IsFinite(world))
        return {};
    return world;
}

std::optional<TGLArrayd3> ToView(const TZEPCamera& camera, const QSize& view,
                                 const TGLArrayd3& world) {
    if (view.isEmpty()) return {};
    const TMatrices to(camera, view);
    TGLArrayd3 place;
    if (!gluProject(world[0], world[1], world[2], to.Model[0].data(), to.Projection[0].data(),
                    to.Viewport.data(), &place[0], &place[1], &place[2]) ||
        !IsFinite(place))
        return {};
    return TGLArrayd3{place[0], view.height() - place[1], place[2]};
}

} // namespace ZEP
