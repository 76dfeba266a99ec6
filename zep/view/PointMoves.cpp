#include <zep/view/PointMoves.h>

#include <zep/scene/Vectors.h>
#include <zep/view/Camera.h>

namespace ZEP {

namespace {

TGLMatrixd4 Inverse(TGLMatrixd4 matrix) {
    InverseMatrixd(matrix);
    return matrix;
}

TGLArrayd3 Applied(const TGLMatrixd4& matrix, TGLArrayd3 point) {
    Xformd(matrix, point);
    return point;
}

/// In the frame that eye and target of the camera are given in.
TGLArrayd3 InFrameOf(const TZEPCamera& camera, const TGLArrayd3& absolute) {
    return Applied(Inverse(camera.GetAbsoluteMatrix()), absolute);
}

double ToTarget(const TZEPCamera& camera) {
    return Distance(camera.GetPosition(), camera.GetTarget());
}

void MoveBy(TZEPCamera& camera, const TGLArrayd3& eye, const TGLArrayd3& target) {
    camera.Move(eye[0], eye[1], eye[2], target[0], target[1], target[2]);
}

} // namespace

void ShiftBy(TZEPCamera& camera, const TGLArrayd3& by) {
    const TGLArrayd3 own = InFrameOf(camera, by) - InFrameOf(camera, zero3d);
    MoveBy(camera, own, own);
}

void OrbitAbout(TZEPCamera& camera, const TGLArrayd3& point, double a, double b) {
    const TGLArrayd3 seen = Applied(camera.GetViewMatrix(), point);
    camera.Orbit(a, b);
    if (a == 0 && b == 0) return;
    ShiftBy(camera, point - Applied(Inverse(camera.GetViewMatrix()), seen));
}

void DollyAbout(TZEPCamera& camera, const TGLArrayd3& point, double factor) {
    const double before = ToTarget(camera);
    camera.Dolly(factor);
    if (before == 0 || factor == 0) return;
    const double moved = ToTarget(camera) / before - 1; // the camera has limits of its own
    const TGLArrayd3 by = moved * (camera.GetTarget() - InFrameOf(camera, point));
    MoveBy(camera, by, by);
}

void ZoomInto(TZEPCamera& camera, const TGLArrayd3& point, double part) {
    const TGLArrayd3 own = InFrameOf(camera, point);
    const TGLArrayd3 eye = camera.GetPosition();
    const TGLArrayd3 look = Unit(camera.GetTarget() - eye);
    const double away = camera.Orthographic() ? ToTarget(camera) : Dotd(own - eye, look);
    if (!(part > 0) || !(away > 0)) return;
    MoveBy(camera, own - part * away * look - eye, own - camera.GetTarget());
}

} // namespace ZEP
