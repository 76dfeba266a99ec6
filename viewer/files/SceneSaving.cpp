#include "viewer/files/SceneSaving.h"

#include "viewer/files/Materials.h"
#include "viewer/files/Reader.h"
#include "viewer/files/SceneFile.h"
#include "viewer/files/StoredScene.h"
#include <zep/appearance/materials/MaterialLibrary.h>

#include <QFileInfo>

namespace ZEP {

namespace {

const QString TextSuffix = QStringLiteral("zept");

void ReadInto(TZEPObject& root, TStoredScene& scene, const QString& fileName, bool plain) {
    TZEPMaterialLibrary materials;
    static_cast<void>(ReadFile({&root, &materials}, fileName, FormatOf(fileName), plain, {}));
    ShowFacesWithoutMaterial(root, materials);
    if (materials.Materials()->Count() > 0) AppendMaterials(scene.OwnLibrary(), materials, root);
}

std::unique_ptr<TZEPObject> ReadAll(const QStringList& files, bool plain) {
    std::vector<TPassedOver> passedOver;
    if (files.size() == 1 && FormatOf(files.front()) == TFileFormat::Scene)
        return ReadWhole(files.front(), passedOver);
    auto scene = std::make_unique<TStoredScene>();
    if (files.size() == 1) ReadInto(*scene, *scene, files.front(), plain);
    for (qsizetype i = 0; files.size() > 1 && i < files.size(); ++i) {
        auto* group = new TZEPObject(scene.get());
        group->SetIdent(QFileInfo(files[i]).fileName());
        ReadInto(*group, *scene, files[i], plain);
        group->SetParentComponent(scene.get());
    }
    return scene;
}

} // namespace

bool IsSceneName(const QString& fileName) {
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    return suffix == TextSuffix || suffix == QStringLiteral("zep");
}

void SaveScene(const QStringList& files, bool plain, const QString& fileName) {
    const std::unique_ptr<TZEPObject> root = ReadAll(files, plain);
    if (QFileInfo(fileName).suffix().toLower() == TextSuffix)
        root->SaveToTextFile(fileName);
    else
        root->SaveToFile(fileName);
}

} // namespace ZEP
