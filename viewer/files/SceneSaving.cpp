#include "viewer/files/SceneSaving.h"

#include "viewer/content/Objects.h"
#include "viewer/files/OpenedFile.h"
#include "viewer/files/StoredScene.h"
#include <zep/batch/Batch.h>
#include <zep/framework/Exception.h>
#include <zep/framework/FileSaving.h>

#include <QSet>

#include <vector>

namespace ZEP {

namespace {

void CheckTarget(std::span<const TOpenedFile> files, const QString& fileName) {
    for (const TOpenedFile& file : files)
        if (file.Format != TFileFormat::Scene && IsSameFile(file.Name, fileName))
            throw Exception(
                QStringLiteral("It is shown from this file, which is no scene and would be lost: "
                               "choose another name."),
                {.File = fileName});
}

std::vector<TZEPObject*> ChildrenOf(const TZEPObject& root) {
    std::vector<TZEPObject*> children;
    for (int i = 0, count = root.GetItemsCount(); i < count; ++i)
        children.push_back(root.GetItem(i));
    return children;
}

/// Visits the objects of all files that have a name.
template <class Visit>
void ForEachNamed(std::span<const TOpenedFile> files, const Visit& visit) {
    const auto named = [&](TZEPObject& object) {
        if (!object.Name().isEmpty()) visit(object);
    };
    for (const TOpenedFile& file : files) {
        named(*file.Root);
        ForEachObject(*file.Root, named);
    }
}

/// In one file a name refers to one object: where an earlier one has it, an object gets another.
void MakeNamesUnique(std::span<const TOpenedFile> files, const QString& reserved) {
    QSet<QString> taken{reserved.toLower()};
    ForEachNamed(files, [&](TZEPObject& object) { taken << object.Name().toLower(); });
    QSet<QString> seen{reserved.toLower()};
    ForEachNamed(files, [&](TZEPObject& object) {
        QString name = object.Name();
        if (seen.contains(name.toLower()))
            for (int number = 2; taken.contains(name.toLower()); ++number)
                name = QStringLiteral("%1_%2").arg(object.Name()).arg(number);
        object.SetName(name);
        seen << name.toLower();
        taken << name.toLower();
    });
}

void SaveAlone(const TOpenedFile& file, TZEPMaterialLibrary& materials, const QString& fileName) {
    const std::vector<TZEPObject*> objects =
        file.StoresRoot ? std::vector<TZEPObject*>{file.Root} : ChildrenOf(*file.Root);
    if (!file.Scene) return SaveObject(*objects.front(), fileName);
    file.Scene->SaveWith(materials, objects, fileName);
}

void SaveTogether(std::span<const TOpenedFile> files, TZEPMaterialLibrary& materials,
                  const QString& fileName) {
    TStoredScene scene;
    MakeNamesUnique(files, scene.LibraryName());
    std::vector<TZEPObject*> roots;
    for (const TOpenedFile& file : files) roots.push_back(file.Root);
    scene.SaveWith(materials, roots, fileName);
}

} // namespace

void SaveScene(std::span<const TOpenedFile> files, TZEPMaterialLibrary& materials,
               const QString& fileName) {
    CheckTarget(files, fileName);
    const bool isAlone = files.size() == 1 && (files.front().Scene || files.front().StoresRoot ||
                                               files.front().Root->GetItemsCount() == 1);
    if (isAlone) return SaveAlone(files.front(), materials, fileName);
    SaveTogether(files, materials, fileName);
}

} // namespace ZEP
