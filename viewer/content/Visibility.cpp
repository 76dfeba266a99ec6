#include "viewer/content/Visibility.h"

#include "viewer/content/Objects.h"

#include <unordered_set>

namespace ZEP {

namespace {

/// The scene stands above the roots, and is not theirs to show.
bool IsBelowScene(const TZEPObject& object) {
    return object.Parent() && object.Parent()->Parent();
}

bool IsSeen(const TZEPObject& object) {
    if (!object.Visible()) return false;
    return !IsBelowScene(object) || IsSeen(*object.Parent());
}

/// The ancestors come to be seen, but no more of them than leads to the object.
void LeadTo(TZEPObject& object) {
    if (!IsBelowScene(object)) return;
    TZEPObject& parent = *object.Parent();
    LeadTo(parent);
    if (parent.Visible()) return;
    for (int i = 0, count = parent.GetItemsCount(); i < count; ++i)
        parent.GetItem(i)->SetVisible(false);
    parent.SetVisible(true);
}

using TObjects = std::unordered_set<TZEPObject*>;

TObjects AncestorsOf(const std::vector<TZEPObject*>& objects) {
    TObjects ancestors;
    for (const TZEPObject* object : objects)
        for (TZEPObject* above = object->Parent(); above && ancestors.insert(above).second;)
            above = above->Parent();
    return ancestors;
}

} // namespace

Qt::CheckState TVisibility::StateOf(const TZEPObject& object) const {
    if (IsBelowScene(object) && !IsSeen(*object.Parent())) return Qt::Unchecked;
    return OwnState(object);
}

Qt::CheckState TVisibility::OwnState(const TZEPObject& object) const {
    if (!object.Visible()) return Qt::Unchecked;
    if (object.GetItemsCount() == 0) return Qt::Checked;
    const auto known = m_states.find(&object);
    if (known != m_states.end()) return known->second;
    return m_states[&object] = StateOfChildren(object);
}

Qt::CheckState TVisibility::StateOfChildren(const TZEPObject& object) const {
    const Qt::CheckState first = OwnState(*object.GetItem(0));
    for (int i = 1, count = object.GetItemsCount(); i < count; ++i)
        if (first == Qt::PartiallyChecked || OwnState(*object.GetItem(i)) != first)
            return Qt::PartiallyChecked;
    return first;
}

void TVisibility::SetShown(TZEPObject& object, bool shown) {
    const bool wasVisible = object.Visible();
    if (shown) LeadTo(object);
    object.SetVisible(shown);
    Forget();
    if (shown && (wasVisible || OwnState(object) == Qt::Unchecked)) ShowAll(object);
}

void TVisibility::ShowAll(TZEPObject& root) {
    root.SetVisible(true);
    ForEachObject(root, [](TZEPObject& object) { object.SetVisible(true); });
    Forget();
}

void TVisibility::ShowOnly(const std::vector<TZEPObject*>& roots,
                           const std::vector<TZEPObject*>& objects) {
    const TObjects kept(objects.begin(), objects.end());
    const TObjects leading = AncestorsOf(objects);
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

QSet<QString> HiddenBelow(const TZEPObject& root) {
    QSet<QString> hidden;
    for (int i = 0, count = root.GetItemsCount(); i < count; ++i)
        if (const TZEPObject& child = *root.GetItem(i);
            !child.Visible() && !child.Ident().isEmpty())
            hidden << child.Ident();
    return hidden;
}

void RestoreHidden(TZEPObject& root, const QSet<QString>& hiddenInFile,
                   const QSet<QString>& hidden) {
    if (hiddenInFile.isEmpty() && hidden.isEmpty()) return;
    for (int i = 0, count = root.GetItemsCount(); i < count; ++i) {
        TZEPObject& child = *root.GetItem(i);
        if (hidden.contains(child.Ident()))
            child.SetVisible(false);
        else if (hiddenInFile.contains(child.Ident()))
            child.SetVisible(true);
    }
}

} // namespace ZEP
