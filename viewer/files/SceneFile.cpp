#include "viewer/files/SceneFile.h"

#include "viewer/files/Materials.h"
#include "viewer/files/OpenedFile.h"
#include "viewer/files/StoredScene.h"
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/batch/Batch.h>
#include <zep/framework/Registry.h>
#include <zep/framework/stream/Reader.h>
#include <zep/framework/stream/StreamFile.h>
#include <zep/scene/XForm.h>

namespace ZEP {

namespace {

/// What stands outermost in a stream: an object of its own class, or a scene.
std::unique_ptr<TZEPObject> MakeOutermost(TTokenSource& source) {
    const TToken& token = source.Next();
    const auto text = [](std::string_view name) {
        return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
    };
    const TClassRegistry::Entry* entry = TClassRegistry::Instance().Find(text(token.Bytes));
    const bool isObject = entry && entry->Type->inherits(&TZEPObject::staticMetaObject) &&
                          !entry->Type->inherits(&TZEPScene::staticMetaObject);
    std::unique_ptr<TZEPObject> outermost;
    if (isObject)
        outermost.reset(static_cast<TZEPObject*>(entry->Make(nullptr)));
    else
        outermost = std::make_unique<TStoredScene>();
    outermost->SetName(text(token.Name));
    return outermost;
}

std::unique_ptr<TZEPObject> ReadOutermost(const QString& fileName,
                                          std::vector<TPassedOver>& passedOver) {
    TStreamFile file(fileName);
    std::unique_ptr<TZEPObject> outermost;
    file.Read([&](TTokenSource& source) {
        outermost = MakeOutermost(source);
        TReader reader(source);
        outermost->LoadFromReader(reader);
        if (reader.ErrorCount() == 0) return;
        const QString kind =
            QStringLiteral("properties and objects that are not known or do not fit (%1)")
                .arg(reader.FirstError());
        passedOver.push_back({kind, reader.ErrorCount(), reader.FirstErrorPlace().Line});
    });
    return outermost;
}

/// The batch that holds all that is in the scene; null where there is none.
TZEPBatch* BatchOfAll(TZEPScene& scene) {
    if (scene.GetItemsCount() != 1 || scene.GetMatrix() != idd) return nullptr;
    return qobject_cast<TZEPBatch*>(scene.GetItem(0));
}

/// Takes what a scene holds and owns; the scene stays without it.
void TakeContents(TOpenedFile& file, TZEPScene& scene) {
    TZEPObject& root = *file.Root;
    if (file.StoresRoot) {
        root.SetParentComponent(nullptr);
        scene.RemoveComponent(&root);
    } else {
        root.XForm()->Assign(scene.XForm());
        std::vector<TZEPObject*> children;
        children.reserve(static_cast<std::size_t>(scene.GetItemsCount()));
        for (int i = 0; i < scene.GetItemsCount(); ++i) children.push_back(scene.GetItem(i));
        for (TZEPObject* child : children) child->SetParentComponent(&root);
    }
    while (scene.ComponentCount() > 0) root.InsertComponent(scene.Components(0));
}

void TakeScene(TOpenedFile& file, TZEPMaterialLibrary& materials) {
    TStoredScene& scene = *file.Scene;
    if (const std::unique_ptr<TZEPMaterialLibrary> library = scene.TakeLibrary())
        AppendMaterials(materials, *library, scene);
    file.Root = BatchOfAll(scene);
    file.StoresRoot = file.Root;
    if (!file.Root) file.Root = new TZEPBatch;
    TakeContents(file, scene);
}

} // namespace

void ReadScene(TOpenedFile& file, TZEPMaterialLibrary& materials) {
    std::unique_ptr<TZEPObject> outermost = ReadOutermost(file.Name, file.Messages);
    if (qobject_cast<TZEPScene*>(outermost.get())) {
        file.Scene.reset(static_cast<TStoredScene*>(outermost.release()));
        return TakeScene(file, materials);
    }
    file.Root = qobject_cast<TZEPBatch*>(outermost.get());
    file.StoresRoot = file.Root;
    if (!file.Root) file.Root = new TZEPBatch;
    TZEPObject* object = outermost.release();
    if (file.StoresRoot) return;
    file.Root->InsertComponent(object);
    object->SetParentComponent(file.Root);
}

} // namespace ZEP
