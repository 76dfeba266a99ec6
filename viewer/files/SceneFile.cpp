#include "viewer/files/SceneFile.h"

#include "viewer/files/Materials.h"
#include "viewer/files/StoredScene.h"
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/framework/Registry.h>
#include <zep/framework/stream/Reader.h>
#include <zep/framework/stream/StreamFile.h>
#include <zep/scene/XForm.h>

namespace ZEP {

namespace {

qint64 LineOf(const QString& message) {
    if (!message.startsWith(QStringLiteral("line "))) return 0;
    return message.section(QLatin1Char(','), 0, 0).section(QLatin1Char(' '), 1).toLongLong();
}

/// What stands outermost in a stream: an object of its own class, or a scene.
std::unique_ptr<TZEPObject> MakeRoot(TTokenSource& source) {
    const TToken& token = source.Next();
    const auto text = [](std::string_view name) {
        return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
    };
    const TClassRegistry::Entry* entry = TClassRegistry::Instance().Find(text(token.Bytes));
    const bool isObject = entry && entry->Type->inherits(&TZEPObject::staticMetaObject);
    std::unique_ptr<TZEPObject> root;
    if (isObject && entry->Type != &TZEPScene::staticMetaObject)
        root.reset(static_cast<TZEPObject*>(entry->Make(nullptr)));
    else
        root = std::make_unique<TStoredScene>();
    root->SetName(text(token.Name));
    return root;
}

/// Hands over what a scene holds and owns.
void MoveContents(TZEPScene& from, const TReadTarget& target) {
    TZEPObject& to = *target.Root;
    if (TZEPMaterialLibrary* library = from.MaterialLibrary()) {
        AppendMaterials(*target.Materials, *library, from);
        delete library;
    }
    to.XForm()->Assign(from.XForm());
    std::vector<TZEPObject*> children;
    children.reserve(static_cast<std::size_t>(from.GetItemsCount()));
    for (int i = 0; i < from.GetItemsCount(); ++i) children.push_back(from.GetItem(i));
    for (TZEPObject* child : children) child->SetParentComponent(&to);
    while (from.ComponentCount() > 0) to.InsertComponent(from.Components(0));
}

} // namespace

std::unique_ptr<TZEPObject> ReadWhole(const QString& fileName,
                                      std::vector<TPassedOver>& passedOver) {
    TStreamFile file(fileName);
    std::unique_ptr<TZEPObject> root;
    file.Read([&](TTokenSource& source) {
        root = MakeRoot(source);
        TReader reader(source);
        root->LoadFromReader(reader);
        if (reader.ErrorCount() == 0) return;
        const QString kind =
            QStringLiteral("properties and objects that are not known or do not fit (%1)")
                .arg(reader.FirstError());
        passedOver.push_back({kind, reader.ErrorCount(), LineOf(reader.FirstError())});
    });
    return root;
}

std::vector<TPassedOver> ReadScene(const TReadTarget& target, const QString& fileName) {
    std::vector<TPassedOver> passedOver;
    std::unique_ptr<TZEPObject> whole = ReadWhole(fileName, passedOver);
    if (auto* scene = qobject_cast<TZEPScene*>(whole.get())) {
        MoveContents(*scene, target);
        return passedOver;
    }
    target.Root->InsertComponent(whole.get());
    whole.release()->SetParentComponent(target.Root);
    return passedOver;
}

} // namespace ZEP
