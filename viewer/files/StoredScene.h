#pragma once

#include <zep/scene/Scene.h>

#include <memory>
#include <vector>

namespace ZEP {

/// A scene as a file has it, where its objects and materials stand elsewhere: it is saved with them
/// as its own. It stands still: an animation is kept, but does not run.
class TStoredScene : public TZEPScene {
public:
    TStoredScene() { SetDesigning(true); }

    /// Hands over its library, without which it then is; null where it has none. What it is saved
    /// with takes on its name.
    [[nodiscard]] std::unique_ptr<TZEPMaterialLibrary> TakeLibrary();
    /// Of the library that it is saved with.
    [[nodiscard]] const QString& LibraryName() const { return m_libraryName; }
    /// Writes it in the form that the name ends in, with what stands in the library before the
    /// objects. Raises `Exception`; an old file then stands.
    void SaveWith(TZEPMaterialLibrary& library, const std::vector<TZEPObject*>& objects,
                  const QString& fileName);

    void GetChildren(const std::function<void(TComponent*)>& proc, TComponent* root) override;
    /// What is selected is a matter of the view.
    void SaveToWriter(TWriter& writer) override;

private:
    QString m_libraryName = QStringLiteral("Materials");
    std::vector<TZEPObject*> m_objects; ///< while it is saved
};

/// What a scene may be saved as: ends in ".zep" (binary) or ".zept" (text).
[[nodiscard]] bool IsSceneName(const QString& fileName);

/// Writes the object and what is below it in the form that the name ends in. Raises `Exception`.
void SaveObject(TZEPObject& object, const QString& fileName);

} // namespace ZEP
