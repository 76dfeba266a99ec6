#pragma once

#include <zep/view/Backdrop.h>
#include <zep/view/Directions.h>

#include <memory>

namespace ZEP {

class TZEPCamera;
class TZEPObject;
class TZEPScene;

/// What the viewer shows before anything is opened: solids, pictures on them, glass and text under
/// lamps that circle above, with their shadows and images in a mirror that they stand on. All of it
/// is made here, so that no file has to be at hand.
class TStartScene {
public:
    TStartScene();
    ~TStartScene();
    TStartScene(const TStartScene&) = delete;
    TStartScene& operator=(const TStartScene&) = delete;

    [[nodiscard]] TZEPScene* Scene() const { return m_scene.get(); }
    /// Frames the whole.
    [[nodiscard]] TZEPCamera* Camera() const { return m_camera; }
    /// Width to height of the view: the whole stays in it.
    void SetAspect(double aspect);
    /// Moves the camera to where it sees the whole from a direction.
    void LookFrom(TDirection direction);
    /// To where it was at first.
    void LookFromStart();
    /// One colour in place of the background of its own.
    void SetBackground(const std::optional<TColor>& color);
    [[nodiscard]] TZEPBackdrop& Backdrop() { return m_backdrop; }
    /// Lets time run or stand; it stands at first. It goes on where it stood.
    void SetMoving(bool moving);
    /// Puts everything where it is after so many seconds of movement.
    void MoveTo(double seconds);

private:
    void AddStage();
    void AddTeapot();
    void AddRing();
    void AddText();
    void AddLights();
    void Look(const TGLArrayd3& toEye, const TGLArrayd3& target);
    void Place();
    void Tick(double time);

    std::unique_ptr<TZEPScene> m_scene;
    TZEPCamera* m_camera = nullptr;
    TZEPObject* m_root = nullptr;  ///< of all that is shown
    TZEPObject* m_ring = nullptr;  ///< turns with the solids that stand on it
    TZEPObject* m_lamps = nullptr; ///< turns the other way
    TZEPObject* m_core = nullptr;  ///< what is in the glass
    TGLArrayd3 m_toEye{};          ///< where the view is as wide as `WholeAspect`
    TGLArrayd3 m_target{};
    double m_aspect = 2;
    TZEPBackdrop m_backdrop;
    double m_seconds = 0;
    double m_lastTick = -1; ///< below 0 while time stands
};

} // namespace ZEP
