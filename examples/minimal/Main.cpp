#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

#include <QApplication>

using namespace ZEP;

int main(int argc, char** argv) {
    const QApplication application(argc, argv);

    TZEPScene scene;
    scene.SetSceneAmbientColor(clWhite); // lines have the colours that they are given
    for (int i = 0; i <= 20; ++i) {
        auto* line = Add<TZEPLine>(&scene);
        line->P1()->SetData(i - 10, -10, 0);
        line->P2()->SetData(10, i - 10, i);
        line->SetColor(clYellow);
    }
    auto* camera = Add<TZEPCamera>(&scene);
    LookFrom(*camera, TDirection::Iso);
    FitCamera(*camera, scene, 4.0 / 3);

    TZEPPanel panel;
    panel.SetCamera(camera);
    panel.resize(800, 600);
    panel.show();
    return QApplication::exec();
}
