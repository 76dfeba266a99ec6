#include "viewer/window/ContentsFilter.h"

#include "viewer/files/Kinds.h"
#include <zep/scene/Object.h>

#include <algorithm>

namespace ZEP {

void TContentsFilter::Search(const std::vector<TZEPObject*>& roots, const QString& text) {
    m_text = text;
    m_leading.clear();
    m_found = 0;
    if (text.isEmpty()) return;
    for (TZEPObject* root : roots) {
        std::vector<int> kept;
        for (int i = 0, count = root->GetItemsCount(); i < count; ++i)
            if (Visit(*root->GetItem(i))) kept.push_back(i);
        m_leading.emplace(root, std::move(kept));
    }
}

bool TContentsFilter::Visit(TZEPObject& object) {
    const bool isFound = NameOf(object).contains(m_text, Qt::CaseInsensitive) ||
                         KindText(object).contains(m_text, Qt::CaseInsensitive);
    if (isFound) ++m_found;
    if (isFound || object.GetItemsCount() == 0) return isFound;
    std::vector<int> kept;
    for (int i = 0, count = object.GetItemsCount(); i < count; ++i)
        if (Visit(*object.GetItem(i))) kept.push_back(i);
    const bool leads = !kept.empty();
    if (leads) m_leading.emplace(&object, std::move(kept));
    return leads;
}

bool TContentsFilter::Keeps(const TZEPObject& root) const {
    const auto leading = m_leading.find(&root);
    return leading == m_leading.end() || !leading->second.empty();
}

int TContentsFilter::CountBelow(const TZEPObject& parent) const {
    const auto leading = m_leading.find(&parent);
    return leading == m_leading.end() ? parent.GetItemsCount()
                                      : static_cast<int>(leading->second.size());
}

TZEPObject* TContentsFilter::ChildAt(const TZEPObject& parent, int row) const {
    const auto leading = m_leading.find(&parent);
    return parent.GetItem(
        leading == m_leading.end() ? row : leading->second[static_cast<std::size_t>(row)]);
}

std::optional<int> TContentsFilter::RowOf(const TZEPObject& parent, const TZEPObject& child) const {
    const int index = child.GetItemIndex();
    const auto leading = m_leading.find(&parent);
    if (leading == m_leading.end()) return index;
    const std::vector<int>& kept = leading->second;
    const auto found = std::lower_bound(kept.begin(), kept.end(), index);
    if (found == kept.end() || *found != index) return {};
    return static_cast<int>(found - kept.begin());
}

} // namespace ZEP
