#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/scene/Scene.h>

#include <QPointer>
#include <QScopeGuard>

namespace ZEP {

TZEPMaterialLibrary* TZEPScene::OwnLibrary() const {
    return m_materialLibrary && m_materialLibrary->Owner() == this ? m_materialLibrary : nullptr;
}

// Materials stand first, so that no object takes the library's name when they are read.
void TZEPScene::GetChildren(const std::function<void(TComponent*)>& proc, TComponent* root) {
    if (TZEPMaterialLibrary* library = OwnLibrary()) proc(library);
    TZEPObject::GetChildren(proc, root);
}

// A reference is stored as a name.
void TZEPScene::SaveToWriter(TWriter& writer) {
    TZEPMaterialLibrary* library = OwnLibrary();
    if (library && library->Name().isEmpty()) {
        QString name = QStringLiteral("Materials");
        for (int i = 1; FindComponent(name); ++i) name = QStringLiteral("Materials%1").arg(i);
        library->SetName(name);
    }
    TZEPObject::SaveToWriter(writer);
}

void TZEPScene::LoadFromReader(TReader& reader) {
    const QPointer<TZEPMaterialLibrary> former(OwnLibrary());
    const QString name = former ? former->Name() : QString();
    if (former) former->SetName({}); // it is free for the one that is read
    const QPointer<TZEPScene> alive(this);
    const auto keepOrFree = qScopeGuard([&] {
        if (!former || !alive) return;
        if (m_materialLibrary != former)
            delete former;
        else if (!FindComponent(name))
            former->SetName(name);
    });
    TZEPObject::LoadFromReader(reader);
}

} // namespace ZEP
