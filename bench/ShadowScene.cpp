#include "bench/ShadowScene.h"

#include <zep/appearance/effects/Light.h>
#include <zep/objects/HeightField.h>
#include <zep/objects/Sphere.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

#include <array>
#include <cmath>

namespace ZEP {

TShadowScene::TShadowScene(int lights, int casters, int width, int height) : Stage(width, height) {
    Stage.Scene.BeginUpdate();
    AddFloor();
    AddCasters(casters);
    AddLights(lights);
    Stage.Camera.Position()->SetData(0, -4, 3);
    DrawEffects(Stage.Scene);
    Stage.Scene.EndUpdate();
}

void TShadowScene::AddFloor() {
    auto* floor = new TZEPHeightField(&Stage.Scene);
    floor->SetSlicesX(40);
    floor->SetSlicesY(40);
    floor->SetSmooth(true);
    floor->SetReceiveShadows(true);
    floor->XForm()->Scale()->SetData(3, 3, 1);
    floor->SetParentComponent(&Stage.Scene);
}

void TShadowScene::AddCasters(int count) {
    const int columns = static_cast<int>(std::ceil(std::sqrt(count)));
    const double cell = 2.0 / columns;
    for (int i = 0; i < count; ++i) {
        auto* sphere = new TZEPSphere(&Stage.Scene);
        sphere->XForm()->Translate()->SetData((i % columns + 0.5) * cell - 1,
                                              (i / columns + 0.5) * cell - 1, 0.4);
        sphere->XForm()->Scale()->SetData(cell / 2, cell / 2, cell / 2);
        sphere->SetSmooth(true);
        sphere->SetCastShadows(true);
        sphere->SetParentComponent(&Stage.Scene);
    }
}

void TShadowScene::AddLights(int count) {
    static constexpr std::array<std::array<double, 2>, 4> Places{
        {{-2, -1}, {2, 1}, {-1, 2}, {1, -2}}};
    for (int i = 0; i < count; ++i) {
        const auto& [x, y] = Places.at(static_cast<std::size_t>(i));
        auto* light = new TZEPLight(&Stage.Scene);
        light->SetDirectional(true);
        light->SetCastShadows(true);
        light->SetColor(TColor{0x404040});
        light->Position()->SetData(x, y, 4);
        light->SetParentComponent(&Stage.Scene);
        m_lights.push_back(light);
    }
}

void TShadowScene::MoveLights() {
    for (TZEPLight* light : m_lights) light->Position()->SetX(light->Position()->X() + 1e-4);
}

void DrawEffects(TZEPScene& scene) {
    QObject::connect(&scene, &TZEPScene::AfterCamera, [](TZEPScene* drawn) {
        if (drawn->Shadows()) drawn->Draw(*drawn, dsPre, dkFull);
        if (drawn->Reflections()) drawn->Draw(*drawn, dsReflections, dkFull);
    });
}

} // namespace ZEP
