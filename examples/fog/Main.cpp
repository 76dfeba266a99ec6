#include "examples/Window.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

#include <QHBoxLayout>

using namespace ZEP;

namespace {

/// Two rows of columns that lead away from the eye.
void AddColumns(TZEPScene* scene) {
    for (int i = 0; i < 12; ++i)
        for (const double x : {-1.5, 1.5}) {
            auto* column = Add<TZEPCone>(scene);
            column->SetRadius1(0.35);
            column->SetRadius2(0.4);
            column->SetSlices(24);
            column->SetSmooth(true);
            column->XForm()->Translate()->SetData(x, 3.0 * i, 1.5);
            column->XForm()->Scale()->SetData(1, 1, 3);
            column->Material()->FrontFace()->SetAmbient(clBlack);
        }
    auto* floor = Add<TZEPBox>(scene);
    floor->XForm()->Translate()->SetData(0, 16, -0.1);
    floor->XForm()->Scale()->SetData(6, 44, 0.2);
    floor->SetColor(TColor{0x507050});
}

/// A panel of the scene with the fog of one mode.
TZEPPanel* AddPanel(QWidget* window, TZEPCamera* camera, TFogMode mode) {
    auto* panel = new TZEPPanel(window);
    panel->SetCamera(camera);
    TZEPFog* fog = panel->Fog();
    fog->SetColor(TColor{0xC0B0A0});
    fog->SetMode(mode);
    fog->SetStart(4);
    fog->SetEnd(30);
    fog->SetDensity(0.07);
    fog->SetEnabled(true);
    window->layout()->addWidget(panel);
    return panel;
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZEPScene scene;
    scene.SetBackgroundColor(TColor{0xC0B0A0});
    AddColumns(&scene);
    auto* sun = Add<TZEPLight>(&scene);
    sun->SetColor(TColor{0xB0C0D0});
    sun->Position()->SetData(2, -3, 3);
    auto* camera = Add<TZEPCamera>(&scene);
    camera->Position()->SetData(0.4, -5, 2.2);
    camera->Target()->SetData(0, 10, 1.2);

    QWidget window;
    QHBoxLayout layout(&window);
    for (const TFogMode mode : {fmLinear, fmExp, fmExp2}) AddPanel(&window, camera, mode);
    window.resize(1080, 480);
    return ShowWindow(window, QApplication::arguments());
}
