#include "examples/Window.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

using namespace ZEP;

namespace {

template <class T>
T* AddSolid(TZEPScene* scene, const TGLArrayd3& place, TColor color) {
    auto* solid = Add<T>(scene);
    solid->SetColor(color);
    solid->SetSmooth(true);
    solid->XForm()->Translate()->SetData(place);
    return solid;
}

void AddSolids(TZEPScene* scene) {
    auto* torus = AddSolid<TZEPTorus>(scene, {0, 0, 0.25}, TColor{0x40A8F0});
    torus->SetRadius1(1.6);
    torus->SetRadius2(0.25);
    torus->SetSides(24);
    torus->SetRings(60);
    auto* cone = AddSolid<TZEPCone>(scene, {0, 0, 1}, TColor{0x70C050});
    cone->XForm()->Scale()->SetData(1, 1, 2);
    cone->SetRadius1(0);
    cone->SetRadius2(0.8);
    cone->SetSlices(48);
    AddSolid<TZEPBox>(scene, {2.6, 0.6, 0.5}, TColor{0x5060E0})->SetSmooth(false);
    auto* ball = AddSolid<TZEPSphere>(scene, {-2.4, 1.2, 0.5}, TColor{0xC8A040});
    ball->SetSlices(40);
    ball->SetStacks(40);
}

} // namespace

/// Solids as a modelling program shows them: lit from the eye, fitted into the view, before a
/// background with a grid.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZEPScene scene;
    AddSolids(&scene);
    scene.SetSceneAmbientColor(TColor{0x303030}); // leaves the shades deep
    Add<TZEPHeadlight>(&scene);

    auto* camera = Add<TZEPCamera>(&scene);
    LookFrom(*camera, TDirection::Iso);
    FitCamera(*camera, scene, 960.0 / 600);
    TZEPBackdrop backdrop(camera);
    backdrop.SetContent(VisibleExtent(scene).Bounds());
    return ShowScene(*camera, QApplication::arguments());
}
