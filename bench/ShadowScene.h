#pragma once

#include "bench/Frames.h"
#include "tests/gl/BlendEntry.h"

#include <vector>

namespace ZEP {

class TZEPLight;

/// Spheres of 20 by 20 cells in rows above a floor of 40 by 40, under lights that aim at them.
/// Spheres cast shadows, the floor receives them.
class TShadowScene {
public:
    TShadowScene(int lights, int casters, int width = SmallView, int height = SmallView);

    TBlendEntry Extensions;
    TStage Stage;

    /// Every light goes a little on: all volumes must be made anew.
    void MoveLights();

private:
    void AddFloor();
    void AddCasters(int count);
    void AddLights(int count);

    std::vector<TZEPLight*> m_lights;
};

/// Draws the passes `dsPre` and `dsReflections` in the frames of a scene that shows shadows or
/// reflections, as a host does.
void DrawEffects(TZEPScene& scene);

} // namespace ZEP
