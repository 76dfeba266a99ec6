#include "viewer/SceneFile.h"

#include "framework/Registry.h"
#include "framework/stream/Reader.h"
#include "framework/stream/StreamFile.h"
#include "scene/Scene.h"
#include "viewer/Format.h"

#include <QFileInfo>

namespace ZEP {

namespace {

const QString TextSuffix = QStringLiteral("zept");

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
    if (isObject)
        root.reset(static_cast<TZEPObject*>(entry->Make(nullptr)));
    else
        root = std::make_unique<TZEPScene>();
    root->SetName(text(token.Name));
    return root;
}

std::unique_ptr<TZEPObject> ReadWhole(const QString& fileName) {
    TStreamFile file(fileName);
    std::unique_ptr<TZEPObject> root;
    file.Read([&root](TTokenSource& source) {
        root = MakeRoot(source);
        TReader reader(source);
        root->LoadFromReader(reader);
    });
    return root;
}

void ReadInto(TZEPObject& root, const QString& fileName, bool plain) {
    static_cast<void>(ReadFile(root, fileName, FormatOf(fileName), plain, {}));
}

std::unique_ptr<TZEPObject> ReadAll(const QStringList& files, bool plain) {
    if (files.size() == 1 && FormatOf(files.front()) == TFileFormat::Scene)
        return ReadWhole(files.front());
    auto scene = std::make_unique<TZEPScene>();
    if (files.size() == 1) ReadInto(*scene, files.front(), plain);
    for (qsizetype i = 0; files.size() > 1 && i < files.size(); ++i) {
        auto* group = new TZEPObject(scene.get());
        group->SetIdent(QFileInfo(files[i]).fileName());
        ReadInto(*group, files[i], plain);
        group->SetParentComponent(scene.get());
    }
    return scene;
}

} // namespace

std::vector<TPassedOver> ReadScene(TZEPObject& root, const QString& fileName) {
    std::vector<TPassedOver> passedOver;
    TStreamFile(fileName).Read([&](TTokenSource& source) {
        TReader reader(source);
        root.LoadFromReader(reader);
        const qint64 count = reader.ErrorCount();
        if (count > 0)
            passedOver.push_back({QStringLiteral("properties and objects that are not known or do "
                                                 "not fit (%1)")
                                      .arg(reader.FirstError()),
                                  count, LineOf(reader.FirstError())});
    });
    return passedOver;
}

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
