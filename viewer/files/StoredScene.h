#pragma once

#include <zep/scene/Scene.h>

namespace ZEP {

/// A scene that is stored with the material library that it owns and uses: it stands before the
/// objects in the stream, where the scene has the class name of any scene.
class TStoredScene : public TZEPScene {
public:
    using TZEPScene::TZEPScene;
    void GetChildren(const std::function<void(TComponent*)>& proc, TComponent* root) override;

    /// The library that it owns and uses, made and named when first asked for.
    [[nodiscard]] TZEPMaterialLibrary& OwnLibrary();
};

} // namespace ZEP
