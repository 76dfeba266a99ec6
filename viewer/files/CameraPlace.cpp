#include "viewer/files/CameraPlace.h"

#include <zep/scene/Vectors.h>
#include <zep/view/Camera.h>

namespace ZEP {

TCameraPlace TCameraPlace::Of(TZEPCamera& camera) {
    return {.Eye = camera.GetPosition(),
            .Target = camera.GetTarget(),
            .Up = camera.Up()->Data(),
            .Offset = camera.ViewOffset(),
            .Field = camera.FieldOfView(),
            .Roll = camera.RollAngle(),
            .Near = camera.NearClipPlane(),
            .Far = camera.FarClipPlane(),
            .Parallel = camera.Orthographic()};
}

void TCameraPlace::Apply(TZEPCamera& camera) const {
    camera.Position()->SetData(Eye);
    camera.Target()->SetData(Target);
    camera.Up()->SetData(Up);
    camera.SetOrthographic(Parallel);
    camera.SetFOVY(Field);
    camera.SetNearClipPlane(Near);
    camera.SetFarClipPlane(Far);
    camera.Reset();
    camera.SetViewOffset(Offset);
    camera.Roll(Roll);
}

bool TCameraPlace::IsFlatView() const {
    constexpr double Slant = 1e-2; // views along the up vector are a little off
    const TGLArrayd3 sight = Unit(Eye - Target);
    return Parallel && sight[2] > 0 && std::abs(sight[0]) < Slant && std::abs(sight[1]) < Slant;
}

} // namespace ZEP
