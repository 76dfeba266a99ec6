#include <zep/objects/Line.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vertex3.h>
#include <zep/view/Camera.h>
#include <zep/view/Panel.h>

#include <QApplication>

using namespace ZEP;

int main(int argc, char** argv) {
    const QApplication application(argc, argv);

    TZEPScene scene;
    for (int i = 0; i <= 20; ++i) {
        auto* line = new TZEPLine(&scene);
        line->P1()->SetData(i - 10, -10, 0);
        line->P2()->SetData(10, i - 10, i);
        line->SetColor(clYellow);
        line->SetParentComponent(&scene);
    }
    auto* camera = new TZEPCamera(&scene);
    camera->SetParentComponent(&scene);
    camera->Position()->SetData(20, -40, 30);
    camera->FitTo({-10, -10, 0}, {10, 10, 20}, 4.0 / 3);

    TZEPPanel panel;
    panel.SetCamera(camera);
    panel.resize(800, 600);
    panel.show();
    return QApplication::exec();
}
