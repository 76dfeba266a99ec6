#include <zep/framework/stream/References.h>

#include <zep/framework/Collection.h>
#include <zep/framework/Exception.h>

#include <algorithm>

namespace ZEP {

namespace {

void AddTree(QHash<QString, QPointer<TComponent>>& names, TComponent& component) {
    const QString key = component.Name().toLower();
    if (!key.isEmpty() && !names.contains(key)) names.insert(key, &component);
    component.GetChildren([&names](TComponent* child) { AddTree(names, *child); }, &component);
}

} // namespace

TItemPlace::TItemPlace(TCollection& collection)
    : m_collection(&collection), m_item(collection.GetItem(collection.Count() - 1)),
      m_index(collection.Count() - 1) {}

bool TItemPlace::IsThere() const {
    return m_index < m_collection->Count() && m_collection->GetItem(m_index) == m_item;
}

void TReferences::AddComponent(TComponent& component, const QString& name) {
    const QString key = name.toLower();
    if (!key.isEmpty() && !m_names.contains(key)) m_names.insert(key, &component);
}

void TReferences::Add(const TField& field, const TInstance& instance, TComponent& holder,
                      const std::vector<TItemPlace>& items, std::string_view name) {
    m_pending.push_back({&field, instance, &holder, items, QString::fromUtf8(name)});
}

bool TReferences::TPending::IsThere() const {
    return Holder && std::ranges::all_of(Items, &TItemPlace::IsThere);
}

void TReferences::Resolve(TComponent& root, const std::function<void(const QString&)>& error) {
    const QPointer<TComponent> alive(&root);
    for (const TPending& pending : m_pending) {
        if (!alive) break;
        TComponent* component = Find(root, pending.Name);
        if (!component || !pending.IsThere()) continue;
        if (!component->metaObject()->inherits(pending.Field->Type())) {
            error(QStringLiteral("%1 is a %2, which cannot be referred to here")
                      .arg(pending.Name, component->ClassName()));
            continue;
        }
        try {
            pending.Field->SetReference(pending.Instance, component);
        } catch (const Exception& raised) {
            error(raised.Message());
        }
    }
    Clear();
}

void TReferences::Clear() {
    m_pending.clear();
    m_names.clear();
    m_tree.clear();
    m_hasTree = false;
}

TComponent* TReferences::Find(TComponent& root, const QString& name) {
    if (TComponent* component = m_names.value(name.toLower())) return component;
    for (TComponent* owner = &root; owner; owner = owner->Owner()) {
        if (owner->Name().compare(name, Qt::CaseInsensitive) == 0) return owner;
        if (TComponent* component = owner->FindComponent(name)) return component;
    }
    return FindInTree(root, name);
}

TComponent* TReferences::FindInTree(TComponent& root, const QString& name) {
    if (!m_hasTree) {
        TComponent* top = &root;
        while (top->GetParentComponent()) top = top->GetParentComponent();
        AddTree(m_tree, *top);
        m_hasTree = true;
    }
    return m_tree.value(name.toLower());
}

} // namespace ZEP
