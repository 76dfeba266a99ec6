#include <zep/widgets/SceneRows.h>

#include <zep/scene/SceneOf.h>
#include <zep/widgets/SceneWatch.h>

#include <algorithm>

namespace ZEP {

TZEPChildPlace::TZEPChildPlace(const TZEPObject& child)
    : Parent(child.Parent()), Child(&child), Index(child.GetItemIndex()) {}

// Without a look at the child.
bool TZEPChildPlace::Holds() const {
    return Parent && Index < Parent->GetItemsCount() && Parent->GetItem(Index) == Child;
}

// --- roots -------------------------------------------------------------------------------------

void TZEPSceneRows::SetHolder(TZEPObject* holder) {
    m_wanted.clear();
    if (holder) m_wanted.emplace_back(holder);
    m_holds = true;
}

void TZEPSceneRows::SetRoots(const TObjects& roots) {
    m_wanted.assign(roots.begin(), roots.end());
    m_holds = false;
}

void TZEPSceneRows::Lose() {
    m_lost = true;
    m_roots.clear();
    m_rows.clear();
    m_rowOf.clear();
    m_above.clear();
    m_heldBack.clear();
    m_filter.Forget();
    Settle();
}

void TZEPSceneRows::Refill(const TZEPScene* scene) {
    Lose();
    if (!scene) return;
    m_lost = false;
    ListRoots(*scene);
    m_filter.Search(m_roots);
    if (m_holds) return;
    std::ranges::copy_if(m_roots, std::back_inserter(m_rows),
                         [this](const TZEPObject* root) { return m_filter.Keeps(*root); });
    for (std::size_t i = 0; i < m_rows.size(); ++i) m_rowOf[m_rows[i]] = static_cast<int>(i);
}

void TZEPSceneRows::ListRoots(const TZEPScene& scene) {
    std::unordered_set<const TZEPObject*> wanted(m_wanted.begin(), m_wanted.end());
    for (const QPointer<TZEPObject>& root : m_wanted)
        if (SceneOf(root) == &scene && wanted.erase(root)) m_roots.push_back(root);
    const std::unordered_set<const TZEPObject*> roots(m_roots.begin(), m_roots.end());
    std::erase_if(m_roots, [&](const TZEPObject* root) {
        const TZEPObject* above = root->Parent();
        while (above && !roots.contains(above)) above = above->Parent();
        return above != nullptr;
    });
    for (const TZEPObject* root : m_roots)
        for (const TZEPObject* above = root; above && m_above.insert(above).second;)
            above = above->Parent();
    m_isShort = m_roots.size() < m_wanted.size();
}

TZEPSceneRows::TObjects TZEPSceneRows::Tops() const {
    if (!m_holds || m_roots.empty()) return m_roots;
    TObjects tops;
    for (int i = 0, count = m_roots.front()->GetItemsCount(); i < count; ++i)
        tops.push_back(m_roots.front()->GetItem(i));
    return tops;
}

bool TZEPSceneRows::BringsRoot(const TZEPObject& object) const {
    if (!m_isShort) return false;
    return std::ranges::any_of(m_wanted, [&](const QPointer<TZEPObject>& root) {
        const TZEPObject* above = root;
        while (above && above != &object) above = above->Parent();
        return above && !m_above.contains(root);
    });
}

// --- rows --------------------------------------------------------------------------------------

bool TZEPSceneRows::IsTop(const TZEPObject& object) const {
    if (!m_holds) return m_rowOf.contains(&object);
    return !m_roots.empty() && object.Parent() == m_roots.front();
}

TZEPObject* TZEPSceneRows::ParentOf(const TZEPObject& object) const {
    return IsTop(object) ? nullptr : object.Parent();
}

int TZEPSceneRows::Presented(const TZEPObject& parent) const {
    const auto held = m_heldBack.find(&parent);
    if (held == m_heldBack.end()) return m_filter.CountBelow(parent);
    return held->second + (Hides(parent) ? 1 : 0);
}

int TZEPSceneRows::Available(const TZEPObject& parent) const {
    return m_filter.CountBelow(parent) - (Hides(parent) ? 1 : 0);
}

int TZEPSceneRows::Count(const TZEPObject* parent) const {
    if (m_lost) return 0;
    if (!parent && !m_holds) return static_cast<int>(m_rows.size());
    if (!parent) parent = m_roots.empty() ? nullptr : m_roots.front();
    if (!parent) return 0;
    return Presented(*parent) - (Hides(*parent) ? 1 : 0);
}

TZEPObject* TZEPSceneRows::At(const TZEPObject* parent, int row) const {
    if (!parent && !m_holds) return m_rows[static_cast<std::size_t>(row)];
    if (!parent) parent = m_roots.front();
    if (!IsChanging(*parent)) return parent->GetItem(m_filter.IndexOf(*parent, row));
    const int from = m_changing.Index;
    const int to = m_changesTo.value_or(Presented(*parent) - 1);
    if (m_changesTo && row == to) return parent->GetItem(from);
    if (row >= from && row < to) return parent->GetItem(row + 1);
    if (row > to && row <= from) return parent->GetItem(row - 1);
    return parent->GetItem(row);
}

std::optional<int> TZEPSceneRows::RowOf(const TZEPObject& object) const {
    if (m_lost) return {};
    const TZEPObject* parent = object.Parent();
    if (!m_holds)
        if (const auto root = m_rowOf.find(&object); root != m_rowOf.end()) return root->second;
    if (!parent) return {};
    const int index = object.GetItemIndex();
    if (m_heldBack.contains(parent) && index >= Presented(*parent)) return {};
    if (!IsChanging(*parent)) return m_filter.RowOf(*parent, index);
    const int from = m_changing.Index;
    const int to = m_changesTo.value_or(Presented(*parent));
    if (index == from) return m_changesTo;
    if (index > from && index <= to) return index - 1;
    return index >= to && index < from ? index + 1 : index;
}

bool TZEPSceneRows::Has(const TZEPObject& object) const {
    for (const TZEPObject* row = &object; row && RowOf(*row); row = row->Parent())
        if (IsTop(*row)) return true;
    return false;
}

bool TZEPSceneRows::ShowsBelow(const TZEPObject& object) const {
    if (m_lost) return false;
    if (m_holds && !m_roots.empty() && m_roots.front() == &object) return true;
    return Has(object);
}

bool TZEPSceneRows::Reaches(const TZEPObject& object) const {
    const auto isRoot = [this](const TZEPObject* above) {
        return std::ranges::find(m_roots, above) != m_roots.end();
    };
    const TZEPObject* above = m_holds ? object.Parent() : &object;
    while (above && !(m_above.contains(above) && isRoot(above))) above = above->Parent();
    return above != nullptr;
}

// --- what views have not been told of ------------------------------------------------------------

void TZEPSceneRows::HoldBack(const TZEPObject& parent) {
    m_heldBack.try_emplace(&parent, Available(parent) - 1);
}

void TZEPSceneRows::Present(const TZEPObject& parent, int count) {
    if (count >= Available(parent))
        m_heldBack.erase(&parent);
    else
        m_heldBack[&parent] = count;
}

void TZEPSceneRows::HideNew(const TZEPObject& child) {
    m_changing = TZEPChildPlace(child);
    m_changesTo.reset();
}

void TZEPSceneRows::Reveal() {
    if (const auto held = m_heldBack.find(m_changing.Parent); held != m_heldBack.end())
        ++held->second;
    Settle();
}

void TZEPSceneRows::HideGoing(const TZEPObject& child) {
    HideNew(child);
    if (const auto held = m_heldBack.find(child.Parent()); held != m_heldBack.end()) --held->second;
}

void TZEPSceneRows::Move(const TZEPObject& child, int to) {
    m_changing = TZEPChildPlace(child);
    m_changesTo = to;
}

bool TZEPSceneRows::IsChanging(const TZEPObject& parent) const {
    return m_changing.Parent == &parent && m_changing.Holds();
}

} // namespace ZEP
