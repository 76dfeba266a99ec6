#pragma once

#include <zep/view/Camera.h>

namespace ZEP {

/// The camera of the viewer, for tool paths of any size: what is shifted stays under the pointer,
/// orbits end at the poles, and nothing carries the eye through its target.
class TViewCamera : public TZEPCamera {
    Q_OBJECT
public:
    using TZEPCamera::TZEPCamera;

    /// \param dx, dy, dz  how the pointer moved in the scene, five times in perspective, at the
    ///                    middle of the depth range: as the panel's control gives it
    void Truck(double dx, double dy, double dz) override;
    void Orbit(double a, double b) override;
    void Dolly(double factor) override;

    /// Between parallel and perspective projection; what is at the target keeps its size.
    /// \param aspect  width to height of the view
    void SwitchProjection(bool parallel, double aspect);

private:
    [[nodiscard]] TGLArrayd3 ToEye() const;
    [[nodiscard]] double Distance() const;
};

} // namespace ZEP
