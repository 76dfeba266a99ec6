#include <zep/scene/Scene.h>

int main() {
    ZEP::TZEPScene scene;
    (new ZEP::TZEPObject(&scene))->SetParentComponent(&scene);
    return scene.GetItemsCount() == 1 ? 0 : 1;
}
