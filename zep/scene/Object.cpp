#include <zep/scene/Object.h>

#include <zep/appearance/materials/FaceMaterial.h>
#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/SharedMaterials.h>
#include <zep/framework/Exception.h>
#include <zep/framework/LookOnly.h>
#include <zep/framework/Message.h>
#include <zep/framework/Property.h>
#include <zep/framework/Watch.h>
#include <zep/scene/ChildList.h>
#include <zep/scene/Frame.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

#include <QPointer>
#include <QScopeGuard>

#include <algorithm>
#include <atomic>
#include <utility>

namespace ZEP {

namespace {

/// Counts what exists and tells on unloading what was never freed.
struct Census {
    std::atomic<int> Live = 0; // readers may make objects on threads of their own
    ~Census() {
        if (Live <= 0) return;
        ShowMessage(QStringLiteral("There is ZEP-Objects leek (%1)").arg(Live.load()),
                    QStringLiteral("Warning"), TMessageIcon::Hand);
    }
} Objects;

Exception TooDeep() {
    return Exception(
        QStringLiteral("Objects are nested deeper than %1 levels").arg(DeepestNesting));
}

// A group of objects in a stream; no menu offers it.
const TRegisterObject<TZEPObject> RegisteredObject("");

/// What objects have until they are asked for their own.
TZEPVertex3* InitialVector() {
    static TZEPVertex3 vector;
    return &vector;
}

void SetColorOf(TZEPMaterial& material, TColor color) {
    material.FrontFace()->SetColor(10, color);
    material.BackFace()->SetColor(10, color);
}

} // namespace

TZEPObject::TExtras::TExtras() = default;
TZEPObject::TExtras::~TExtras() = default;

bool TZEPObject::TExtras::AreInitial() const {
    const bool hasParts = Material || Children || Vectors[0] || Vectors[1] || !Listeners.empty();
    return !hasParts && UpdateLevel == 0 && ChangeIndex == 0 && TransformSnapshot == 0 &&
           ParentSnapshot == 0 && PickLevel == 0 && SelectPriority == 0;
}

TZEPObject::TZEPObject(TComponent* owner) : TComponent(owner) {
    ++Objects.Live;
}

TZEPObject::~TZEPObject() {
    --Objects.Live;
    BeginDestroying();
    TZEPWatch::Forget(this);
    LeaveParent();
    FreeChildren();
    ReportListeners();
}

TZEPObject::TExtras& TZEPObject::Extras() {
    if (!m_extras) m_extras = std::make_unique<TExtras>();
    return *m_extras;
}

void TZEPObject::FreeChildren() {
    while (Children() && Children()->Last()) {
        TZEPObject* child = Children()->Last();
        Children()->Remove(child);
        child->m_parent = nullptr;
        delete child;
    }
}

void TZEPObject::ReportListeners() const {
    if (!m_extras || m_extras->Listeners.empty()) return;
    // The count is that of list entries, two for each listener.
    ShowMessage(
        QStringLiteral("There is ZEP-Notifies leek (%1)").arg(2 * m_extras->Listeners.size()),
        QStringLiteral("Warning"), TMessageIcon::Hand);
}

int TZEPObject::LiveObjects() {
    return Objects.Live;
}

void TZEPObject::SetName(const QString& name) {
    const QString old = Name();
    if (name == old) return;
    TComponent::SetName(name);
    DoNotify(this, saRename, &old);
}

void TZEPObject::Assign(const TComponent* source) {
    const auto* other = dynamic_cast<const TZEPObject*>(source);
    if (!other) return TComponent::Assign(source);
    m_ident = other->m_ident;
    SetColor(other->m_color);
    m_visible = other->m_visible;
    m_selectable = other->m_selectable;
    m_selected = other->m_selected;
    m_drawType = other->m_drawType;
    m_castsShadows = other->m_castsShadows;
    m_receivesShadows = other->m_receivesShadows;
    m_smooth = other->m_smooth;
    for (const int number : {0, 1})
        if (VectorData(number) || other->VectorData(number))
            VectorAt(number)->SetData(other->VectorOr0(number));
    Invalidate(this);
}

// --- tree ------------------------------------------------------------------------------------

int TZEPObject::GetItemsCount() const {
    return Children() ? Children()->Count() : 0;
}

TZEPObject* TZEPObject::GetItem(int index) const {
    if (Children()) return Children()->Item(index);
    throw Exception(QStringLiteral("List index out of bounds (%1)").arg(index));
}

int TZEPObject::GetItemIndex() const {
    return m_parent ? Siblings().IndexOf(this) : 0;
}

void TZEPObject::SetItemIndex(int index) {
    if (!m_parent) return;
    const int to = std::clamp(index, 0, m_parent->GetItemsCount() - 1);
    if (to == GetItemIndex()) return;
    const TZEPWatch alive(this);
    DoNotify(this, saMove, &to);
    if (!alive || !m_parent) return;
    Siblings().Move(this, std::min(to, m_parent->GetItemsCount() - 1));
    TellReordered();
}

void TZEPObject::TellReordered() {
    const TZEPWatch alive(this);
    Reordered();
    if (alive) ForEachChild([](TZEPObject* child) { child->TellReordered(); });
}

TZEPObject* TZEPObject::ItemByIdent(const QString& ident) const {
    for (int i = 0; i < GetItemsCount(); ++i) {
        TZEPObject* child = GetItem(i);
        if (child->m_ident.IsSameWithoutCase(ident)) return child;
    }
    return nullptr;
}

void TZEPObject::ListParents(std::vector<TZEPObject*>& list) const {
    for (TZEPObject* parent = m_parent; parent; parent = parent->m_parent)
        list.insert(list.begin(), parent);
}

void TZEPObject::ListChildren(std::vector<TZEPObject*>& list,
                              const std::vector<const QMetaObject*>& classes) const {
    if (!Children()) return;
    Children()->ForEach([&](TZEPObject* child) {
        child->ListChildren(list, classes);
        const auto is = [child](const QMetaObject* type) {
            return child->metaObject()->inherits(type);
        };
        if (classes.empty() || std::any_of(classes.begin(), classes.end(), is))
            list.push_back(child);
    });
}

template <class Proc>
void TZEPObject::ForEachChild(Proc&& proc) {
    if (Children()) Children()->ForEach(proc);
}

void TZEPObject::Iterate(TIterateProc proc, void* data) {
    const TZEPWatch alive(this);
    proc(this, data);
    if (alive) ForEachChild([=](TZEPObject* child) { child->Iterate(proc, data); });
}

void TZEPObject::IterateOnChildren(TIterateProc proc, void* data) {
    ForEachChild([=](TZEPObject* child) { proc(child, data); });
}

/// \return  it exists and stands below no parent
bool TZEPObject::LeaveParent() {
    if (!m_parent) return true;
    const TZEPWatch alive(this);
    if (!m_leaving) {
        TZEPObject* parent = m_parent;
        m_leaving = true;
        const auto told = qScopeGuard([this, &alive] {
            if (alive) m_leaving = false;
        });
        DoNotify(this, saRemove, &parent);
        if (!alive) return false;
        if (m_parent != parent) return !m_parent; // a listener was first
    }
    Detach();
    return alive && !m_parent;
}

void TZEPObject::Detach() {
    TZEPObject* parent = std::exchange(m_parent, nullptr);
    parent->Children()->Remove(this);
    if (m_scene) m_scene->Frame().TreeChanged = true;
    if (m_extras) ++m_extras->ChangeIndex; // nobody has asked without
    parent->Invalidate(parent);
}

bool TZEPObject::IsWithin(const TZEPObject& other) const {
    const TZEPObject* object = this;
    while (object && object != &other) object = object->m_parent;
    return object != nullptr;
}

int TZEPObject::Height() const {
    int height = 0;
    if (Children())
        Children()->ForEach(
            [&height](TZEPObject* child) { height = std::max(height, 1 + child->Height()); });
    return height;
}

bool TZEPObject::FitsBelow(const TZEPObject& parent) {
    int depth = 0;
    for (const TZEPObject* object = &parent; object; object = object->m_parent) ++depth;
    if (depth + KeptDepthBelow() <= DeepestNesting) return true;
    Extras().DepthBelow = Height(); // some may have gone
    return depth + KeptDepthBelow() <= DeepestNesting;
}

void TZEPObject::Join(TZEPObject& parent, bool append) {
    m_parent = &parent;
    TExtras& parents = parent.Extras();
    if (m_extras) m_extras->ParentSnapshot = parents.ChangeIndex;
    if (!parents.Children) parents.Children = std::make_unique<TZEPChildList<TZEPObject>>();
    if (append)
        parents.Children->Append(this);
    else
        parents.Children->InsertFirst(this);
    parent.ForgetBox(); // it may have been a leaf
    int below = KeptDepthBelow();
    for (TZEPObject* object = &parent; object && object->KeptDepthBelow() <= below;
         object = object->m_parent)
        object->Extras().DepthBelow = ++below;
}

void TZEPObject::SetParentComponentExt(TComponent* parent, bool append) {
    auto* object = qobject_cast<TZEPObject*>(parent);
    if (object) {
        if (IsDestroying() || object->IsDestroying() || object->IsWithin(*this)) return;
        if (!FitsBelow(*object)) throw TooDeep();
    }
    const TZEPWatch alive(this);
    const TZEPWatch parentAlive(object);
    if (!LeaveParent()) return;
    // Who heard that this leaves may have freed the parent or put it below this, or deeper.
    if (!object || !parentAlive || object->IsWithin(*this)) return EnterScene(nullptr);
    if (!FitsBelow(*object)) {
        EnterScene(nullptr);
        throw TooDeep();
    }
    Join(*object, append);
    if (m_scene && m_scene == object->SceneOfChildren())
        TellReordered();
    else
        EnterScene(object->SceneOfChildren());
    if (alive && m_parent == object) DoNotify(this, saInsert, &object);
    if (alive) Invalidate(this);
}

// Who hears of it may put it elsewhere.
void TZEPObject::EnterScene(TZEPSceneContext* scene) {
    if (m_scene == scene) return;
    m_scene = scene;
    const TZEPWatch alive(this);
    EnteredScene();
    if (!alive || m_scene != scene) return;
    TZEPSceneContext* below = SceneOfChildren();
    ForEachChild([=, this](TZEPObject* child) {
        if (m_scene == scene) child->EnterScene(below);
    });
}

void TZEPObject::GetChildren(const std::function<void(TComponent*)>& proc, TComponent*) {
    ForEachChild([&proc](TZEPObject* child) { proc(child); });
}

void TZEPObject::Clear() {
    const TZEPWatch alive(this);
    BeginUpdate();
    while (alive && Children() && Children()->Last()) {
        TZEPObject* last = Children()->Last();
        if (last->IsDestroying())
            last->Detach(); // goes by itself
        else
            delete last;
    }
    if (alive) EndUpdate(false);
}

void TZEPObject::Action(double time) {
    ForEachChild([time](TZEPObject* child) { child->Action(time); });
}

// --- notification ----------------------------------------------------------------------------

void TZEPObject::RegisterNotify(const TZEPObjectNotify& listener) {
    auto& listeners = Extras().Listeners;
    if (std::ranges::find(listeners, listener) == listeners.end()) listeners.push_back(listener);
}

void TZEPObject::UnregisterNotify(const TZEPObjectNotify& listener) {
    if (m_extras) std::erase(m_extras->Listeners, listener);
}

void TZEPObject::DoNotify(TZEPObject* sender, TZEPObjectAction action, const void* data) {
    std::vector<QPointer<TZEPObject>> asked; // the root last
    for (TZEPObject* object = this; object; object = object->m_parent)
        if (object->m_extras && !object->m_extras->Listeners.empty()) asked.emplace_back(object);
    const TZEPWatch senderAlive(sender);
    for (auto object = asked.rbegin(); senderAlive && object != asked.rend(); ++object)
        if (*object) (*object)->CallListeners(senderAlive, sender, action, data);
}

namespace {

/// Who heard before has put what came elsewhere, which was told since then.
bool IsUndone(const TZEPObject& sender, TZEPObjectAction action, const void* data) {
    return action == saInsert && data && sender.Parent() != *static_cast<TZEPObject* const*>(data);
}

} // namespace

// Those that are there now, as long as they stay.
void TZEPObject::CallListeners(const TZEPWatch& senderAlive, TZEPObject* sender,
                               TZEPObjectAction action, const void* data) {
    const TZEPWatch alive(this);
    for (const TZEPObjectNotify& listener : std::vector(m_extras->Listeners)) {
        if (!alive || !senderAlive || !m_extras) return;
        const auto& now = m_extras->Listeners;
        const bool stays = std::ranges::find(now, listener) != now.end();
        if (IsUndone(*sender, action, data)) return;
        if (stays && listener.Code) listener.Code(listener.Context, sender, action, data);
    }
}

void TZEPObject::BeginUpdate() {
    ++Extras().UpdateLevel;
}

void TZEPObject::EndUpdate(bool reset) {
    if (m_extras) m_extras->UpdateLevel = reset ? 0 : std::max(0, UpdateLevel() - 1);
    if (WantsInvalidation() && UpdateLevel() == 0) Invalidate(this);
}

bool TZEPObject::Climbs() const {
    return m_scene && !m_scene->ManualUpdate();
}

// A box that is out of date must go, also where the scene is updated by hand.
bool TZEPObject::WantsInvalidation() const {
    return Climbs() || HasKeptBox();
}

// A descendant may want to hear of its parts' changes also where nothing is to climb.
void TZEPObject::Invalidate(TObject* sender) {
    m_ofLookAlone = false;
    ForgetBox();
    if (m_parent && UpdateLevel() == 0 && Climbs()) m_parent->Invalidate(sender);
}

void TZEPObject::InvalidateLook() {
    m_ofLookAlone = true;
    Invalidate(this);
}

int TZEPObject::TransformCounter() const {
    return m_xform ? m_xform->ChangeCounter() : 0;
}

TZEPChildNews TZEPObject::TakeChildNews() {
    return Children() ? Children()->TakeNews() : TZEPChildNews{false, 0};
}

int TZEPObject::GetChangeIndex() {
    const int transform = TransformCounter();
    const int parent = m_parent ? m_parent->GetChangeIndex() : 0;
    TExtras& last = Extras();
    const bool parentSame = !m_parent || parent == last.ParentSnapshot;
    if (transform == last.TransformSnapshot && parentSame) return last.ChangeIndex;
    last.TransformSnapshot = transform;
    last.ParentSnapshot = parent;
    return ++last.ChangeIndex;
}

// --- appearance ------------------------------------------------------------------------------

void TZEPObject::SetColor(TColor color) {
    if (!Change(m_color, color)) return;
    m_hasOwnColor = true;
    if (m_parent) Siblings().NoteLook(this);
    if (TZEPMaterial* own = ExistingMaterial()) SetColorOf(*own, color);
}

TZEPMaterial* TZEPObject::Material() {
    if (TZEPMaterial* own = ExistingMaterial()) return own;
    if (TLookOnly::IsActive())
        return &SharedMaterial(m_hasOwnColor ? &m_color : nullptr, m_lineTransparency);
    ++Extras().UpdateLevel; // coming into being is no change
    auto& own = m_extras->Material;
    own = std::make_unique<TZEPMaterial>(Notify<&TZEPObject::Invalidate>(this));
    if (m_hasOwnColor) SetColorOf(*own, m_color);
    if (m_lineTransparency) own->SetTransparency(LineTransparency);
    --m_extras->UpdateLevel;
    if (m_parent) Siblings().NoteLook(this); // its changes may be silent
    return own.get();
}

void TZEPObject::SetLineTransparency() {
    m_lineTransparency = true;
    if (TZEPMaterial* own = ExistingMaterial()) own->SetTransparency(LineTransparency);
}

void TZEPObject::SetMaterialIndex(int index) {
    if (Change(m_materialIndex, index)) InvalidateLook();
}

void TZEPObject::SetVisible(bool visible) {
    if (m_visible == visible) return;
    m_visible = visible;
    InvalidateLook();
}

void TZEPObject::SetSelected(bool selected) {
    if (m_selected == selected) return;
    const TZEPWatch alive(this); // a handler may free it
    if (m_selectable && m_scene) m_scene->SelectionChanging(this);
    if (!alive) return;
    m_selected = selected && m_selectable && (!m_scene || m_scene->SelectionEnabled());
    if (m_selectable && m_scene) m_scene->SelectionChanged(this);
    if (!alive) return;
    const TZEPChildList<TZEPObject>::Selecting selecting(m_parent ? &Siblings() : nullptr);
    InvalidateLook();
}

void TZEPObject::SetDrawType(TZEPDrawType type) {
    if (DrawType() == type) return;
    m_drawType = type & 3U;
    InvalidateLook();
}

void TZEPObject::SetSmooth(bool smooth) {
    if (m_smooth == smooth) return;
    m_smooth = smooth;
    Invalidate(this);
}

void TZEPObject::SetShadows(int index, bool value) {
    if (index == 0 && m_castsShadows != value)
        m_castsShadows = value;
    else if (index == 1 && m_receivesShadows != value)
        m_receivesShadows = value;
    else
        return;
    InvalidateLook();
}

void TZEPObject::SetPickLevel(int level) {
    if (level != PickLevel()) Extras().PickLevel = level;
}

void TZEPObject::SetSelectPriority(int priority) {
    if (priority != SelectPriority()) Extras().SelectPriority = priority;
}

TZEPVertex3* TZEPObject::VectorAt(int number) {
    if (!VectorData(number) && TLookOnly::IsActive()) return InitialVector();
    auto& vector = Extras().Vectors.at(static_cast<std::size_t>(number));
    if (!vector) vector = std::make_unique<TZEPVertex3>(Notify<&TZEPObject::Invalidate>(this));
    return vector.get();
}

const TGLArrayd3* TZEPObject::VectorData(int number) const {
    if (!m_extras) return nullptr;
    const auto& vector = m_extras->Vectors.at(static_cast<std::size_t>(number));
    return vector ? &vector->Data() : nullptr;
}

const TGLArrayd3& TZEPObject::VectorOr0(int number) const {
    const TGLArrayd3* point = VectorData(number);
    return point ? *point : zero3d;
}

} // namespace ZEP
