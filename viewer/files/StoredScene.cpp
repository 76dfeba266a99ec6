#include "viewer/files/StoredScene.h"

#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/framework/stream/Writer.h>

#include <QFileInfo>
#include <QScopeGuard>

namespace ZEP {

namespace {

const QString TextSuffix = QStringLiteral("zept");

QString SuffixOf(const QString& fileName) {
    return QFileInfo(fileName).suffix().toLower();
}

} // namespace

std::unique_ptr<TZEPMaterialLibrary> TStoredScene::TakeLibrary() {
    std::unique_ptr<TZEPMaterialLibrary> library(MaterialLibrary());
    if (!library) return {};
    SetMaterialLibrary(nullptr);
    if (!library->Name().isEmpty()) m_libraryName = library->Name();
    return library;
}

void TStoredScene::SaveWith(TZEPMaterialLibrary& library, const std::vector<TZEPObject*>& objects,
                            const QString& fileName) {
    const auto end = qScopeGuard([this] {
        m_objects.clear();
        SetMaterialLibrary(nullptr);
    });
    m_objects = objects;
    library.SetName(m_libraryName);
    if (library.Materials()->Count() > 0) SetMaterialLibrary(&library);
    SaveObject(*this, fileName);
}

// Materials stand first, so that no object takes the library's name when they are read.
void TStoredScene::GetChildren(const std::function<void(TComponent*)>& proc, TComponent* root) {
    if (MaterialLibrary()) proc(MaterialLibrary());
    TZEPScene::GetChildren(proc, root);
    for (TZEPObject* object : m_objects) proc(object);
}

void TStoredScene::SaveToWriter(TWriter& writer) {
    writer.Omit("Selected");
    TZEPScene::SaveToWriter(writer);
}

bool IsSceneName(const QString& fileName) {
    return SuffixOf(fileName) == TextSuffix || SuffixOf(fileName) == QStringLiteral("zep");
}

void SaveObject(TZEPObject& object, const QString& fileName) {
    if (SuffixOf(fileName) == TextSuffix)
        object.SaveToTextFile(fileName);
    else
        object.SaveToFile(fileName);
}

} // namespace ZEP
