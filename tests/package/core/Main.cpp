#include <zep/ZEPClasses.h>
#include <zep/ZEPDXF.h>
#include <zep/ZEPObjects.h>

#ifdef ZEP_WIDGETS
#error "The core brings the panel."
#endif

int main() {
    ZEP::TZEPScene scene;
    ZEP::Add<ZEP::TZEPBox>(&scene);
    const bool knows = ZEP::TClassRegistry::Instance().Find(QStringLiteral("TZEPTorus"));
    return scene.GetItemsCount() == 1 && knows ? 0 : 1;
}
