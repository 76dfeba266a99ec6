#include "ZEPClasses.h"
#include "ZEPObjects.h"
#include "examples/Window.h"

#include <QHBoxLayout>

using namespace ZEP;

namespace {

constexpr TColor Air{0xC8B8A8};

/// Two rows of columns that run away from the eye, 3 apart.
void AddColonnade(TZEPScene* scene) {
    auto* floor = Add<TZEPBox>(scene);
    floor->XForm()->Scale()->SetData(9, 60, 0.2);
    floor->XForm()->Translate()->SetData(0, 24, -0.1);
    floor->SetColor(TColor{0x506070});
    for (int i = 0; i < 32; ++i) {
        auto* column = Add<TZEPCone>(scene);
        column->SetRadius1(0.4);
        column->SetRadius2(0.5);
        column->SetSlices(32);
        column->SetSmooth(true);
        column->SetColor(TColor{0x4060C0});
        column->XForm()->Scale()->SetData(1, 1, 4);
        column->XForm()->Translate()->SetData(i % 2 ? 2.2 : -2.2, 3 * (i / 2), 2);
    }
}

TZEPPanel* AddPanel(QHBoxLayout* layout, TZEPCamera* camera, TFogMode mode) {
    auto* panel = new TZEPPanel;
    panel->SetCamera(camera);
    panel->Fog()->SetColor(Air);
    panel->Fog()->SetMode(mode);
    panel->Fog()->SetStart(6);
    panel->Fog()->SetEnd(40);
    panel->Fog()->SetDensity(mode == fmExp ? 0.07 : 0.05);
    panel->Fog()->SetEnabled(true);
    layout->addWidget(panel);
    return panel;
}

} // namespace

/// One scene in three panels, each with a fog of its own: linear, exponential, and exponential of
/// the squared distance.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZEPScene scene;
    scene.SetBackgroundColor(Air);
    scene.SetSceneAmbientColor(clBlack);
    AddColonnade(&scene);
    auto* sun = Add<TZEPLight>(&scene);
    sun->SetColor(TColor{0xA0A0A0});
    sun->Position()->SetData(-1, -1, 1.5);
    auto* camera = Add<TZEPCamera>(&scene);
    camera->Position()->SetData(0, -7, 2.2);
    camera->Target()->SetData(0, 0, 1.9);

    QWidget window;
    window.setWindowTitle(QStringLiteral("Fog: linear, exponential, squared"));
    auto* layout = new QHBoxLayout(&window);
    std::vector<std::unique_ptr<TZEPPanel>> panels; // they let go of the camera before the scene
    for (const TFogMode mode : {fmLinear, fmExp, fmExp2})
        panels.emplace_back(AddPanel(layout, camera, mode));
    window.resize(1050, 480);
    window.show();
    return QApplication::exec();
}
