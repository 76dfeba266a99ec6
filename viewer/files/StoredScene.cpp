#include "viewer/files/StoredScene.h"

#include <zep/appearance/materials/MaterialLibrary.h>

namespace ZEP {

void TStoredScene::GetChildren(const std::function<void(TComponent*)>& proc, TComponent* root) {
    TZEPMaterialLibrary* library = MaterialLibrary();
    if (library && library->Owner() == this && library->Materials()->Count() > 0) proc(library);
    TZEPScene::GetChildren(proc, root);
}

TZEPMaterialLibrary& TStoredScene::OwnLibrary() {
    if (!MaterialLibrary()) {
        auto* library = new TZEPMaterialLibrary(this);
        library->SetName(QStringLiteral("Materials"));
        SetMaterialLibrary(library);
    }
    return *MaterialLibrary();
}

} // namespace ZEP
