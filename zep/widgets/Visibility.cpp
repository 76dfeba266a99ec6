#include <zep/widgets/Visibility.h>

#include <zep/scene/ForEach.h>
#include <zep/sheets/Layout.h>

#include <unordered_set>

namespace ZEP {

namespace {

/// The scene stands above all that can be hidden.
bool HasParentRow(const TZEPObject& object) {
    return object.Parent() && object.Parent()->Parent();
}

/// A sheet is shown by the camera, whatever is said of it.
bool IsShown(const TZEPObject& object) {
    return object.Visible() || qobject_cast<const TZEPLayout*>(&object);
}

bool IsSeen(const TZEPObject& object) {
    if (!IsShown(object)) return false;
    return !HasParentRow(object) || IsSeen(*object.Parent());
}

/// The ancestors come to be seen, but no more of them than leads to the object.
void LeadTo(TZEPObject& object) {
    if (!HasParentRow(object)) return;
    TZEPObject& parent = *object.Parent();
    LeadTo(parent);
    if (IsShown(parent)) return;
    for (int i = 0, count = parent.GetItemsCount(); i < count; ++i)
        parent.GetItem(i)->SetVisible(false);
    parent.SetVisible(true);
}

using TObjectSet = std::unordered_set<TZEPObject*>;

TObjectSet AncestorsOf(const std::vector<TZEPObject*>& objects) {
    TObjectSet ancestors;
    for (const TZEPObject* object : objects)
        for (TZEPObject* above = object->Parent(); above && ancestors.insert(above).second;)
            above = above->Parent();
    return ancestors;
}

} // namespace

Qt::CheckState TZEPVisibility::StateOf(const TZEPObject& object) const {
    if (HasParentRow(object) && !IsSeen(*object.Parent())) return Qt::Unchecked;
    return OwnState(object);
}

Qt::CheckState TZEPVisibility::OwnState(const TZEPObject& object) const {
    if (!IsShown(object)) return Qt::Unchecked;
    if (object.GetItemsCount() == 0) return Qt::Checked;
    const auto known = m_states.find(&object);
    if (known != m_states.end()) return known->second.Value;
    const TState state = StateOfChildren(object); // which looks up others
    m_states[&object] = state;
    return state.Value;
}

TZEPVisibility::TState TZEPVisibility::StateOfChildren(const TZEPObject& object) const {
    const TZEPObject* first = object.GetItem(0);
    const Qt::CheckState state = OwnState(*first);
    for (int i = 0, count = object.GetItemsCount(); i < count; ++i) {
        const TZEPObject* child = object.GetItem(i);
        if (state == Qt::PartiallyChecked || OwnState(*child) != state)
            return {Qt::PartiallyChecked, first, child};
    }
    return {state};
}

// Of a million children one changes: the box of all is mostly what it was, and is not to be
// computed again each time that it is drawn.
void TZEPVisibility::Update(const TZEPObject& object) {
    const TZEPObject* child = &object;
    for (const TZEPObject* above = object.Parent(); above; above = above->Parent()) {
        const auto known = m_states.find(above);
        if (known != m_states.end()) {
            const TState state = known->second;
            const bool holds = state.Value == Qt::PartiallyChecked
                                   ? !state.RestsOn(*child)
                                   : OwnState(*child) == state.Value;
            if (holds) return;
            m_states.erase(above);
        }
        child = above;
    }
}

void TZEPVisibility::ForgetBelow(TZEPObject& root) {
    Forget(root);
    if (m_states.empty()) return;
    ForEachObject(root, [this](const TZEPObject& object) { Forget(object); });
}

bool TZEPVisibility::IsByItself(const TZEPObject& object) {
    return object.GetItemsCount() == 0 && (!HasParentRow(object) || IsSeen(*object.Parent()));
}

void TZEPVisibility::SetShown(TZEPObject& object, bool shown) {
    const bool wasVisible = object.Visible();
    if (shown) LeadTo(object);
    object.SetVisible(shown);
    Forget();
    if (shown && (wasVisible || OwnState(object) == Qt::Unchecked)) ShowAll(object);
}

void TZEPVisibility::ShowAll(TZEPObject& root) {
    root.SetVisible(true);
    ForEachObject(root, [](TZEPObject& object) { object.SetVisible(true); });
    Forget();
}

void TZEPVisibility::ShowOnly(const std::vector<TZEPObject*>& roots,
                              const std::vector<TZEPObject*>& objects) {
    const TObjectSet kept(objects.begin(), objects.end());
    const TObjectSet leading = AncestorsOf(objects);
    const auto keep = [&](const auto& self, TZEPObject& object) -> void {
        if (kept.contains(&object)) return ShowAll(object);
        object.SetVisible(leading.contains(&object));
        if (!object.Visible()) return;
        for (int i = 0, count = object.GetItemsCount(); i < count; ++i)
            self(self, *object.GetItem(i));
    };
    for (TZEPObject* root : roots) keep(keep, *root);
    Forget();
}

} // namespace ZEP
