#include <zep/framework/Component.h>

#include <zep/framework/Exception.h>
#include <zep/framework/Persistent.h>

#include <QHash>
#include <QSet>

#include <algorithm>
#include <vector>

namespace ZEP {

namespace {

bool IsIdentifier(const QString& name) {
    const auto letter = [](QChar c) {
        return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c == u'_';
    };
    if (!letter(name.front())) return false;
    for (const QChar c : name)
        if (!letter(c) && !(c >= u'0' && c <= u'9')) return false;
    return true;
}

} // namespace

/// What only components with components of their own, listeners or a tag need.
struct TComponent::Relations {
    std::vector<TComponent*> Owned;
    QHash<QString, TComponent*> ByName; // lower case; only the named ones
    QSet<TComponent*> Listeners;        // told when this goes away
    QSet<TComponent*> Watched;          // will tell this when they go away
    int DepthBelow = 0;                 // levels of what is owned, at most
    int Tag = 0;
};

TComponent::TComponent(TComponent* owner) {
    if (owner) owner->InsertComponent(this);
}

TComponent::~TComponent() {
    m_destroying = true;
    if (m_relations) {
        TellListeners();
        DestroyComponents();
        for (TComponent* watched : std::exchange(m_relations->Watched, {}))
            watched->Related().Listeners.remove(this);
        for (TComponent* late : std::exchange(m_relations->Listeners, {}))
            late->Related().Watched.remove(this);
    }
    if (m_owner) m_owner->RemoveComponent(this);
}

void TComponent::operator delete(TComponent* component, std::destroying_delete_t) {
    if (component->m_destroying) return;
    component->m_destroying = true;
    void* const memory = dynamic_cast<void*>(component);
    component->~TComponent();
    ::operator delete(memory);
}

// One that is told may free others, which then are no listeners any more.
void TComponent::TellListeners() {
    for (TComponent* listener : QSet<TComponent*>(m_relations->Listeners)) {
        if (!m_relations->Listeners.remove(listener)) continue;
        listener->Related().Watched.remove(this);
        listener->Notification(this, opRemove);
    }
}

TComponent::Relations& TComponent::Related() {
    if (!m_relations) m_relations = std::make_unique<Relations>();
    return *m_relations;
}

QString TComponent::ClassName() const {
    return ZEP::ClassName(*metaObject());
}

void TComponent::SetName(const QString& name) {
    if (name == Name()) return;
    if (!name.isEmpty() && !IsIdentifier(name))
        throw Exception(QStringLiteral("'%1' is not a valid component name").arg(name));
    if (m_owner) {
        auto& names = m_owner->Related().ByName;
        const QString key = name.toLower();
        if (!name.isEmpty() && names.value(key, this) != this)
            throw Exception(QStringLiteral("A component named %1 already exists").arg(name));
        if (!Name().isEmpty()) names.remove(Name().toLower());
        if (!name.isEmpty()) names.insert(key, this);
    }
    setObjectName(name);
}

int TComponent::Tag() const {
    return m_relations ? m_relations->Tag : 0;
}

void TComponent::SetTag(int tag) {
    if (tag != Tag()) Related().Tag = tag;
}

int TComponent::ComponentCount() const {
    return m_relations ? static_cast<int>(m_relations->Owned.size()) : 0;
}

TComponent* TComponent::Components(int index) const {
    if (index < 0 || index >= ComponentCount())
        throw Exception(QStringLiteral("List index out of bounds (%1)").arg(index));
    return m_relations->Owned[static_cast<std::size_t>(index)];
}

TComponent* TComponent::FindComponent(const QString& name) const {
    return m_relations ? m_relations->ByName.value(name.toLower()) : nullptr;
}

int TComponent::KeptDepthBelow() const {
    return m_relations ? m_relations->DepthBelow : 0;
}

// NOLINTNEXTLINE(misc-no-recursion): as deep as `DeepestNesting`
int TComponent::DepthBelow() const {
    int depth = 0;
    if (m_relations)
        for (const TComponent* owned : m_relations->Owned)
            depth = std::max(depth, 1 + owned->DepthBelow());
    return depth;
}

void TComponent::CheckOwnership(TComponent& component) const {
    int depth = 0;
    for (const TComponent* owner = this; owner; owner = owner->m_owner, ++depth)
        if (owner == &component)
            throw Exception(QStringLiteral("A component cannot own one that owns it"));
    if (depth + component.KeptDepthBelow() <= DeepestNesting) return;
    component.Related().DepthBelow = component.DepthBelow(); // some have gone
    if (depth + component.KeptDepthBelow() <= DeepestNesting) return;
    throw Exception(
        QStringLiteral("Components are owned deeper than %1 levels").arg(DeepestNesting));
}

void TComponent::InsertComponent(TComponent* component) {
    if (component->m_owner == this) return;
    CheckOwnership(*component);
    const QString name = component->Name();
    if (!name.isEmpty() && FindComponent(name))
        throw Exception(QStringLiteral("A component named %1 already exists").arg(name));
    if (component->m_owner) component->m_owner->RemoveComponent(component);
    Relations& related = Related();
    component->m_owner = this;
    component->m_ownerIndex = static_cast<int>(related.Owned.size());
    related.Owned.push_back(component);
    int below = component->KeptDepthBelow();
    for (TComponent* owner = this; owner && owner->KeptDepthBelow() <= below;
         owner = owner->m_owner)
        owner->m_relations->DepthBelow = ++below;
    if (!name.isEmpty()) related.ByName.insert(name.toLower(), component);
}

void TComponent::RemoveComponent(TComponent* component) {
    if (component->m_owner != this) return;
    Relations& related = Related();
    // The last one moves into the gap, so that removal never shifts a long list.
    TComponent* last = related.Owned.back();
    related.Owned[static_cast<std::size_t>(component->m_ownerIndex)] = last;
    last->m_ownerIndex = component->m_ownerIndex;
    related.Owned.pop_back();
    if (!component->Name().isEmpty()) related.ByName.remove(component->Name().toLower());
    component->m_owner = nullptr;
    component->m_ownerIndex = -1;
}

void TComponent::DestroyComponents() {
    while (m_relations && !m_relations->Owned.empty()) {
        TComponent* last = m_relations->Owned.back();
        if (last->m_destroying)
            RemoveComponent(last); // goes by itself
        else
            delete last;
    }
}

void TComponent::FreeNotification(TComponent* listener) {
    if (!listener || listener == this) return;
    Related().Listeners.insert(listener);
    listener->Related().Watched.insert(this);
}

void TComponent::RemoveFreeNotification(TComponent* listener) {
    if (!listener || !m_relations) return;
    m_relations->Listeners.remove(listener);
    listener->Related().Watched.remove(this);
}

void TComponent::Assign(const TComponent* source) {
    throw Exception(QStringLiteral("Cannot assign a %1 to a %2")
                        .arg(source ? source->ClassName() : QStringLiteral("nil"), ClassName()));
}

void TComponent::DefineProperties(TFiler&) {}

void TComponent::GetChildren(const std::function<void(TComponent*)>&, TComponent*) {}

void TComponent::SetParentComponent(TComponent*) {}

void TComponent::Notification(TComponent*, TOperation) {}

} // namespace ZEP
