#include <zep/scene/Scene.h>
#include <zep/view/Context.h>

#include <QCoreApplication>

// Needs both libraries, a display at no time.
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    ZEP::TZEPScene scene;
    (new ZEP::TZEPObject(&scene))->SetParentComponent(&scene);
    const ZEP::TZEPContext context;
    return scene.GetItemsCount() == 1 ? 0 : 1;
}
