#include <zep/view/Directions.h>

#include <zep/scene/Vectors.h>
#include <zep/view/Camera.h>

namespace ZEP {

TGLArrayd3 ToEye(TDirection direction) {
    switch (direction) {
    case TDirection::Top:
        return {0, -0.001, 1};
    case TDirection::Front:
        return {0, -1, 0};
    case TDirection::Right:
        return {1, 0, 0};
    case TDirection::Left:
        return {-1, 0, 0};
    case TDirection::Back:
        return {0, 1, 0};
    case TDirection::Bottom:
        return {0, -0.001, -1};
    case TDirection::Iso:
        break;
    }
    return {1, -1, 1};
}

void LookFrom(TZEPCamera& camera, TDirection direction) {
    const TGLArrayd3 target = camera.GetTarget();
    const double before = Distance(camera.GetPosition(), target);
    const auto [x, y, z] = target + (before > 0 ? before : 1) * Unit(ToEye(direction));
    camera.BeginUpdate();
    camera.Reset();
    camera.SetPositionObject(nullptr);
    camera.SetTargetObject(nullptr);
    camera.Target()->SetData(target);
    camera.Position()->SetData(x, y, z);
    camera.EndUpdate();
}

} // namespace ZEP
