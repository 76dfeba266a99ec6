#include "examples/Window.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

using namespace ZEP;

namespace {

void AddParts(TZEPScene* scene) {
    const auto place = [](TZEPObject* part, const TGLArrayd3& at, const TGLArrayd3& size) {
        part->XForm()->Translate()->SetData(at);
        part->XForm()->Scale()->SetData(size);
    };
    auto* ring = Add<TZEPTorus>(scene);
    ring->SetRadius1(1.6);
    ring->SetRadius2(0.35);
    ring->SetSides(32);
    ring->SetRings(80);
    ring->SetColor(TColor{0x40A8F0});
    place(ring, {0, 0, 0.35}, {1, 1, 1});
    auto* shaft = Add<TZEPCone>(scene);
    shaft->SetRadius1(0.4);
    shaft->SetRadius2(0.8);
    shaft->SetSlices(64);
    shaft->SetColor(TColor{0x70C050});
    place(shaft, {0, 0, 1.2}, {1, 1, 2.4});
    auto* ball = Add<TZEPSphere>(scene);
    ball->SetSlices(64);
    ball->SetStacks(64);
    ball->SetColor(TColor{0x5060E0});
    place(ball, {0, 0, 3}, {1.2, 1.2, 1.2});
    for (TZEPObject* part : {static_cast<TZEPObject*>(ring), static_cast<TZEPObject*>(shaft),
                             static_cast<TZEPObject*>(ball)})
        part->SetSmooth(true);
}

} // namespace

/// Solids cut open: a plane that the user drags by its handle.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZEPScene scene;
    AddParts(&scene);
    scene.SetSceneAmbientColor(TColor{0x404040});
    Add<TZEPHeadlight>(&scene);
    auto* camera = Add<TZEPCamera>(&scene);
    LookFrom(*camera, TDirection::Iso);
    FitCamera(*camera, scene, 960.0 / 600);
    TZEPBackdrop backdrop(camera);
    backdrop.SetContent(VisibleExtent(scene).Bounds());

    TZEPSections sections;
    sections[0] = {.Normal = {0, -1, 0}, .Distance = 0, .On = true};
    camera->SetSections(sections);
    return ShowScene(*camera, QApplication::arguments(), [&scene](TZEPPanel* panel) {
        (new TZEPSectionHandles(panel))->SetContent(VisibleExtent(scene).Bounds());
    });
}
