#include <zep/scene/Object.h>

#include <zep/appearance/materials/FaceMaterial.h>
#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/SharedMaterials.h>
#include <zep/framework/Exception.h>
#include <zep/framework/LookOnly.h>
#include <zep/framework/Message.h>
#include <zep/framework/Property.h>
#include <zep/scene/ChildList.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/Watch.h>
#include <zep/scene/XForm.h>

#include <algorithm>
#include <atomic>

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
const TRegisterObject<TZEPObject> Registered("");

/// What objects have until they are asked for their own.
TZEPVertex3* InitialVector() {
    static TZEPVertex3 vector;
    return &vector;
}

} // namespace

TZEPObject::TZEPObject(TComponent* owner) : TComponent(owner) {
    ++Objects.Live;
}

TZEPObject::~TZEPObject() {
    --Objects.Live;
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
    if (other->m_firstVector) FirstVector()->Assign(other->m_firstVector.get());
    if (other->m_secondVector) SecondVector()->Assign(other->m_secondVector.get());
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
    if (alive && m_parent)
        m_parent->m_children->Move(this, std::min(to, m_parent->GetItemsCount() - 1));
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
    proc(this, data);
    ForEachChild([=](TZEPObject* child) { child->Iterate(proc, data); });
}

void TZEPObject::IterateOnChildren(TIterateProc proc, void* data) {
    ForEachChild([=](TZEPObject* child) { proc(child, data); });
}

void TZEPObject::LeaveParent() {
    if (!m_parent) return;
    TZEPObject* parent = m_parent;
    const TZEPWatch alive(this);
    DoNotify(this, saRemove, &parent);
    if (!alive || !m_parent) return; // a listener was first
    m_parent->m_children->Remove(this);
    m_parent = nullptr;
}

void TZEPObject::SetParentComponentExt(TComponent* parent, bool append) {
    auto* object = qobject_cast<TZEPObject*>(parent);
    for (const TZEPObject* ancestor = object; ancestor; ancestor = ancestor->m_parent)
        if (ancestor == this) return;
    const TZEPWatch alive(this);
    const TZEPWatch parentAlive(object);
    LeaveParent();
    if (!alive || m_parent || (object && !parentAlive)) return; // a listener did otherwise
    if (!object) return EnterScene(nullptr);
    m_parent = object;
    m_parentSnapshot = object->m_changeIndex;
    if (!object->m_children) object->m_children = std::make_unique<TZEPChildList<TZEPObject>>();
    if (append)
        object->m_children->Append(this);
    else
        object->m_children->InsertFirst(this);
    object->ForgetBox(); // it may have been a leaf
    EnterScene(object->SceneOfChildren());
    DoNotify(this, saInsert, &object);
    if (alive) Invalidate(this);
}

void TZEPObject::EnterScene(TZEPSceneContext* scene) {
    if (m_scene == scene) return;
    m_scene = scene;
    EnteredScene();
    TZEPSceneContext* below = SceneOfChildren();
    ForEachChild([below](TZEPObject* child) { child->EnterScene(below); });
}

void TZEPObject::GetChildren(const std::function<void(TComponent*)>& proc, TComponent*) {
    ForEachChild([&proc](TZEPObject* child) { proc(child); });
}

void TZEPObject::Clear() {
    BeginUpdate();
    while (m_children && m_children->Last()) delete m_children->Last();
    EndUpdate(false);
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
    const TZEPWatch alive(this);
    if (m_parent) m_parent->DoNotify(sender, action, data);
    // By index: a listener may register or unregister others, and free the object itself.
    for (std::size_t i = 0; alive && m_listeners && i < m_listeners->size(); ++i) {
        const TZEPObjectNotify listener = (*m_listeners)[i];
        if (listener.Code) listener.Code(listener.Context, sender, action, data);
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
    ForgetBox();
    if (m_updateLevel == 0 && m_parent && Climbs()) m_parent->Invalidate(sender);
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
    if (m_parent) m_parent->m_children->NoteLook();
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
    if (m_parent) m_parent->m_children->NoteLook(); // its changes may be silent
    return m_material.get();
}

void TZEPObject::SetLineTransparency() {
    m_lineTransparency = true;
    if (m_material) m_material->SetTransparency(LineTransparency);
}

void TZEPObject::SetMaterialIndex(int index) {
    if (Change(m_materialIndex, index)) Invalidate(this);
}

void TZEPObject::SetVisible(bool visible) {
    if (Change(m_visible, visible)) Invalidate(this);
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
    Invalidate(this);
}

void TZEPObject::SetDrawType(TZEPDrawType type) {
    if (Change(m_drawType, type)) Invalidate(this);
}

void TZEPObject::SetSmooth(bool smooth) {
    if (Change(m_smooth, smooth)) Invalidate(this);
}

void TZEPObject::SetShadows(int index, bool value) {
    if (index != 0 && index != 1) return;
    if (Change(index == 0 ? m_castsShadows : m_receivesShadows, value)) Invalidate(this);
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
