#include "scene/Object.h"
#include "viewer/Run.h"

#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

int Run() {
    ZEP::TZEPScene scene;
    const Object object;
    return scene.GetItemsCount() + object.Age;
}
