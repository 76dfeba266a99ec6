#include <zep/widgets/SceneFilter.h>

#include <zep/scene/Object.h>

#include <algorithm>

namespace ZEP {

void TZEPSceneFilter::Forget() {
    m_leading.clear();
    m_found = 0;
}

void TZEPSceneFilter::Search(const std::vector<TZEPObject*>& roots) {
    Forget();
    if (!IsActive()) return;
    for (TZEPObject* root : roots) m_leading.emplace(root, KeptBelow(*root));
}

std::vector<int> TZEPSceneFilter::KeptBelow(TZEPObject& object) {
    std::vector<int> kept;
    for (int i = 0, count = object.GetItemsCount(); i < count; ++i)
        if (Visit(*object.GetItem(i))) kept.push_back(i);
    return kept;
}

bool TZEPSceneFilter::Visit(TZEPObject& object) {
    const bool isFound = m_finds(object);
    if (isFound) ++m_found;
    if (isFound || object.GetItemsCount() == 0) return isFound;
    std::vector<int> kept = KeptBelow(object);
    const bool leads = !kept.empty();
    if (leads) m_leading.emplace(&object, std::move(kept));
    return leads;
}

bool TZEPSceneFilter::Keeps(const TZEPObject& root) const {
    const auto leading = m_leading.find(&root);
    return leading == m_leading.end() || !leading->second.empty();
}

int TZEPSceneFilter::CountBelow(const TZEPObject& parent) const {
    const auto leading = m_leading.find(&parent);
    return leading == m_leading.end() ? parent.GetItemsCount()
                                      : static_cast<int>(leading->second.size());
}

int TZEPSceneFilter::IndexOf(const TZEPObject& parent, int row) const {
    const auto leading = m_leading.find(&parent);
    return leading == m_leading.end() ? row : leading->second[static_cast<std::size_t>(row)];
}

std::optional<int> TZEPSceneFilter::RowOf(const TZEPObject& parent, int index) const {
    const auto leading = m_leading.find(&parent);
    if (leading == m_leading.end()) return index;
    const std::vector<int>& kept = leading->second;
    const auto found = std::lower_bound(kept.begin(), kept.end(), index);
    if (found == kept.end() || *found != index) return {};
    return static_cast<int>(found - kept.begin());
}

} // namespace ZEP
