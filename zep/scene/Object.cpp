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

// A group of objects in a stream; no menu offers it.
const TRegisterObject<TZEPObject> RegisteredObject("");

/// What objects have until they are asked for their own.
TZEPVertex3* InitialVector() {
    static TZEPVertex3 vector;
    return &vector;
}

void SetVector(TZEPVertex3& vector, const TGLArrayd3& point) {
    vector.SetData(point);
}

} // namespace

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

void TZEPObject::FreeChildren() {
    while (m_children && m_children->Last()) {
        TZEPObject* child = m_children->Last();
        m_children->Remove(child);
        child->m_parent = nullptr;
        delete child;
    }
}

void TZEPObject::ReportListeners() const {
    if (!m_listeners || m_listeners->empty()) return;
    // The count is that of list entries, two for each listener.
    ShowMessage(QStringLiteral("There is ZEP-Notifies leek (%1)").arg(2 * m_listeners->size()),
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
    if (m_firstVector || other->m_firstVector) SetVector(*FirstVector(), other->FirstPoint());
    if (m_secondVector || other->m_secondVector) SetVector(*SecondVector(), other->SecondPoint());
    Invalidate(this);
}

// --- tree ------------------------------------------------------------------------------------

int TZEPObject::GetItemsCount() const {
    return m_children ? m_children->Count() : 0;
}

TZEPObject* TZEPObject::GetItem(int index) const {
    if (m_children) return m_children->Item(index);
    throw Exception(QStringLiteral("List index out of bounds (%1)").arg(index));
}

int TZEPObject::GetItemIndex() const {
    return m_parent ? m_parent->m_children->IndexOf(this) : 0;
}

void TZEPObject::SetItemIndex(int index) {
    if (!m_parent) return;
    const int to = std::clamp(index, 0, m_parent->GetItemsCount() - 1);
    if (to == GetItemIndex()) return;
    const TZEPWatch alive(this);
    DoNotify(this, saMove, &to);
    if (!alive || !m_parent) return;
    m_parent->m_children->Move(this, std::min(to, m_parent->GetItemsCount() - 1));
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
        if (child->m_ident.compare(ident, Qt::CaseInsensitive) == 0) return child;
    }
    return nullptr;
}

void TZEPObject::ListParents(std::vector<TZEPObject*>& list) const {
    for (TZEPObject* parent = m_parent; parent; parent = parent->m_parent)
        list.insert(list.begin(), parent);
}

void TZEPObject::ListChildren(std::vector<TZEPObject*>& list,
                              const std::vector<const QMetaObject*>& classes) const {
    if (!m_children) return;
    m_children->ForEach([&](TZEPObject* child) {
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
    if (m_children) m_children->ForEach(proc);
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
    if (!m_leaving) {
        TZEPObject* parent = m_parent;
        const TZEPWatch alive(this);
        m_leaving = true;
        const auto told = qScopeGuard([this, &alive] {
            if (alive) m_leaving = false;
        });
        DoNotify(this, saRemove, &parent);
        if (!alive) return false;
        if (m_parent != parent) return !m_parent; // a listener was first
    }
    Detach();
    return true;
}

void TZEPObject::Detach() {
    TZEPObject* parent = std::exchange(m_parent, nullptr);
    parent->m_children->Remove(this);
    if (m_scene) m_scene->Frame().TreeChanged = true;
    ++m_changeIndex;
    parent->Invalidate(parent);
}

bool TZEPObject::IsWithin(const TZEPObject& other) const {
    const TZEPObject* object = this;
    while (object && object != &other) object = object->m_parent;
    return object != nullptr;
}

int TZEPObject::Height() const {
    int height = 0;
    if (m_children)
        m_children->ForEach(
            [&height](TZEPObject* child) { height = std::max(height, 1 + child->Height()); });
    return height;
}

void TZEPObject::CheckDepth(const TZEPObject& parent) {
    int depth = 0;
    for (const TZEPObject* object = &parent; object; object = object->m_parent) ++depth;
    if (depth + m_depthBelow <= DeepestNesting) return;
    m_depthBelow = static_cast<std::uint16_t>(Height()); // some may have gone
    if (depth + m_depthBelow <= DeepestNesting) return;
    throw Exception(QStringLiteral("Objects are nested deeper than %1 levels").arg(DeepestNesting));
}

void TZEPObject::Join(TZEPObject& parent, bool append) {
    m_parent = &parent;
    m_parentSnapshot = parent.m_changeIndex;
    if (!parent.m_children) parent.m_children = std::make_unique<TZEPChildList<TZEPObject>>();
    if (append)
        parent.m_children->Append(this);
    else
        parent.m_children->InsertFirst(this);
    parent.ForgetBox(); // it may have been a leaf
    int below = m_depthBelow;
    for (TZEPObject* object = &parent; object && object->m_depthBelow <= below;
         object = object->m_parent)
        object->m_depthBelow = static_cast<std::uint16_t>(++below);
}

void TZEPObject::SetParentComponentExt(TComponent* parent, bool append) {
    auto* object = qobject_cast<TZEPObject*>(parent);
    if (object) {
        if (IsDestroying() || object->IsDestroying() || object->IsWithin(*this)) return;
        CheckDepth(*object);
    }
    const TZEPWatch alive(this);
    const TZEPWatch parentAlive(object);
    if (!LeaveParent()) return;
    if (!object) return EnterScene(nullptr);
    if (!parentAlive || object->IsWithin(*this)) return;
    CheckDepth(*object); // who heard that this leaves may have put it deeper
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
    while (alive && m_children && m_children->Last()) {
        TZEPObject* last = m_children->Last();
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
    if (!m_listeners) m_listeners = std::make_unique<std::vector<TZEPObjectNotify>>();
    if (std::find(m_listeners->begin(), m_listeners->end(), listener) == m_listeners->end())
        m_listeners->push_back(listener);
}

void TZEPObject::UnregisterNotify(const TZEPObjectNotify& listener) {
    if (m_listeners) std::erase(*m_listeners, listener);
}

void TZEPObject::DoNotify(TZEPObject* sender, TZEPObjectAction action, const void* data) {
    std::vector<QPointer<TZEPObject>> asked; // the root last
    for (TZEPObject* object = this; object; object = object->m_parent)
        if (object->m_listeners && !object->m_listeners->empty()) asked.emplace_back(object);
    const TZEPWatch senderAlive(sender);
    for (auto object = asked.rbegin(); senderAlive && object != asked.rend(); ++object)
        if (*object) (*object)->CallListeners(senderAlive, sender, action, data);
}

// Those that are there now, as long as they stay.
void TZEPObject::CallListeners(const TZEPWatch& senderAlive, TZEPObject* sender,
                               TZEPObjectAction action, const void* data) {
    const TZEPWatch alive(this);
    for (const TZEPObjectNotify& listener : std::vector(*m_listeners)) {
        if (!alive || !senderAlive) return;
        const bool stays = std::ranges::find(*m_listeners, listener) != m_listeners->end();
        if (stays && listener.Code) listener.Code(listener.Context, sender, action, data);
    }
}

void TZEPObject::BeginUpdate() {
    ++m_updateLevel;
}

void TZEPObject::EndUpdate(bool reset) {
    m_updateLevel = reset ? 0 : std::max(0, m_updateLevel - 1);
    if (WantsInvalidation() && m_updateLevel == 0) Invalidate(this);
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
    if (m_updateLevel == 0 && m_parent && Climbs()) m_parent->Invalidate(sender);
}

void TZEPObject::InvalidateLook() {
    m_ofLookAlone = true;
    Invalidate(this);
}

int TZEPObject::TransformCounter() const {
    return m_xform ? m_xform->ChangeCounter() : 0;
}

TZEPChildNews TZEPObject::TakeChildNews() {
    return m_children ? m_children->TakeNews() : TZEPChildNews{false, 0};
}

int TZEPObject::GetChangeIndex() {
    const int transform = TransformCounter();
    const int parent = m_parent ? m_parent->GetChangeIndex() : 0;
    const bool parentSame = !m_parent || parent == m_parentSnapshot;
    if (transform == m_transformSnapshot && parentSame) return m_changeIndex;
    m_transformSnapshot = transform;
    m_parentSnapshot = parent;
    return ++m_changeIndex;
}

// --- appearance ------------------------------------------------------------------------------

void TZEPObject::SetColor(TColor color) {
    if (!Change(m_color, color)) return;
    m_hasOwnColor = true;
    if (m_parent) m_parent->m_children->NoteLook(this);
    if (!m_material) return;
    m_material->FrontFace()->SetColor(10, color);
    m_material->BackFace()->SetColor(10, color);
}

TZEPMaterial* TZEPObject::Material() {
    if (m_material) return m_material.get();
    if (TLookOnly::IsActive())
        return &SharedMaterial(m_hasOwnColor ? &m_color : nullptr, m_lineTransparency);
    ++m_updateLevel; // coming into being is no change
    m_material = std::make_unique<TZEPMaterial>(Notify<&TZEPObject::Invalidate>(this));
    if (m_hasOwnColor) {
        m_material->FrontFace()->SetColor(10, m_color);
        m_material->BackFace()->SetColor(10, m_color);
    }
    if (m_lineTransparency) m_material->SetTransparency(LineTransparency);
    --m_updateLevel;
    if (m_parent) m_parent->m_children->NoteLook(this); // its changes may be silent
    return m_material.get();
}

void TZEPObject::SetLineTransparency() {
    m_lineTransparency = true;
    if (m_material) m_material->SetTransparency(LineTransparency);
}

void TZEPObject::SetMaterialIndex(int index) {
    if (Change(m_materialIndex, index)) InvalidateLook();
}

void TZEPObject::SetVisible(bool visible) {
    if (Change(m_visible, visible)) InvalidateLook();
}

void TZEPObject::SetSelected(bool selected) {
    if (m_selected == selected) return;
    const TZEPWatch alive(this); // a handler may free it
    if (m_selectable && m_scene) m_scene->SelectionChanging(this);
    if (!alive) return;
    m_selected = selected && m_selectable && (!m_scene || m_scene->SelectionEnabled());
    if (m_selectable && m_scene) m_scene->SelectionChanged(this);
    if (!alive) return;
    const TZEPChildList<TZEPObject>::Selecting selecting(m_parent ? m_parent->m_children.get()
                                                                  : nullptr);
    InvalidateLook();
}

void TZEPObject::SetDrawType(TZEPDrawType type) {
    if (Change(m_drawType, type)) InvalidateLook();
}

void TZEPObject::SetSmooth(bool smooth) {
    if (Change(m_smooth, smooth)) Invalidate(this);
}

void TZEPObject::SetShadows(int index, bool value) {
    if (index != 0 && index != 1) return;
    if (Change(index == 0 ? m_castsShadows : m_receivesShadows, value)) InvalidateLook();
}

TZEPVertex3* TZEPObject::FirstVector() {
    if (!m_firstVector && TLookOnly::IsActive()) return InitialVector();
    if (!m_firstVector)
        m_firstVector = std::make_unique<TZEPVertex3>(Notify<&TZEPObject::Invalidate>(this));
    return m_firstVector.get();
}

TZEPVertex3* TZEPObject::SecondVector() {
    if (!m_secondVector && TLookOnly::IsActive()) return InitialVector();
    if (!m_secondVector)
        m_secondVector = std::make_unique<TZEPVertex3>(Notify<&TZEPObject::Invalidate>(this));
    return m_secondVector.get();
}

const TGLArrayd3& TZEPObject::FirstPoint() const {
    return m_firstVector ? m_firstVector->Data() : zero3d;
}

const TGLArrayd3& TZEPObject::SecondPoint() const {
    return m_secondVector ? m_secondVector->Data() : zero3d;
}

} // namespace ZEP
