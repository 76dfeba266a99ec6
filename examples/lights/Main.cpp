#include "examples/Window.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

using namespace ZEP;

namespace {

/// A lamp: a small glowing ball with the light that stands on it and aims at a target.
TZEPLight* AddLamp(TZEPScene* scene, TColor color, const TGLArrayd3& place, TZEPObject* target) {
    auto* ball = Add<TZEPSphere>(scene);
    ball->XForm()->Translate()->SetData(place);
    ball->XForm()->Scale()->SetData(0.2, 0.2, 0.2);
    ball->Material()->FrontFace()->SetEmission(color);
    auto* light = Add<TZEPLight>(scene);
    light->SetColor(color);
    light->SetDirectional(true); // aimed
    light->SetPositionObject(ball);
    light->SetTargetObject(target);
    return light;
}

/// Dark under no light: every light adds its ambient part to what a surface shows.
void SetMatt(TZEPObject* object) {
    TZEPFaceMaterial* face = object->Material()->FrontFace();
    face->SetAmbient(TColor{0x0C0C0C});
    face->SetSpecular(TColor{0x808080});
    face->SetShininess(30);
}

/// Fine cells: light is computed at their corners.
TZEPObject* AddFloor(TZEPScene* scene) {
    auto* floor = Add<TZEPBox>(scene);
    floor->SetSlicesX(150);
    floor->SetSlicesY(150);
    floor->XForm()->Scale()->SetData(12, 12, 0.1);
    floor->XForm()->Translate()->SetData(0, 0, -0.05);
    SetMatt(floor);
    floor->Material()->FrontFace()->SetSpecular(clBlack);
    return floor;
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZEPScene scene;
    scene.SetSceneAmbientColor(TColor{0x404040});
    AddFloor(&scene);
    auto* teapot = Add<TZEPTeapot>(&scene);
    teapot->SetSegments(16);
    teapot->XForm()->Scale()->SetData(2, 2, 2);
    teapot->XForm()->Translate()->SetData(0, 0, 0.375);
    SetMatt(teapot);
    auto* foot = Add<TZEPObject>(&scene); // a place to aim at
    foot->XForm()->Translate()->SetData(-2.8, 1, 0);

    TZEPLight* warm = AddLamp(&scene, TColor{0x60B0FF}, {-2.5, -2.5, 2.6}, teapot);
    warm->SetCutoff(30);
    warm->SetExponent(20);
    TZEPLight* cold = AddLamp(&scene, TColor{0xFF9060}, {-3, 1, 3.2}, foot);
    cold->SetCutoff(25);
    TZEPLight* red = AddLamp(&scene, TColor{0x3030E0}, {2.6, 0.6, 0.8}, teapot);
    red->SetAttenuation(0.6F);
    auto* moon = Add<TZEPLight>(&scene); // at infinity
    moon->SetColor(TColor{0x302018});
    moon->Position()->SetData(1, -1, 2);

    auto* camera = Add<TZEPCamera>(&scene);
    camera->Position()->SetData(1, -9, 5);
    camera->Target()->SetData(0, 0, 0.6);
    return ShowScene(*camera, QApplication::arguments());
}
