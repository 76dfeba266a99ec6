#include <zep/framework/SharedCollection.h>

#include <algorithm>
#include <utility>

namespace ZEP {

void TZEPCollection::RegisterObject(TZEPCollectionUser* object) {
    if (!object || std::ranges::find(m_users, object) != m_users.end()) return;
    m_users.push_back(object);
}

void TZEPCollection::UnregisterObject(TZEPCollectionUser* object) {
    std::erase(m_users, object);
}

void TZEPCollection::Invalidate(TObject*) {
    if (m_updateLevel > 0) {
        m_changed = true;
        return;
    }
    // By index: a handler may register further objects.
    for (std::size_t i = 0; i < m_users.size(); ++i)
        if (m_users[i]->WantsInvalidation()) m_users[i]->Invalidate(this);
}

void TZEPCollection::EndUpdate() {
    m_updateLevel = std::max(0, m_updateLevel - 1);
    if (m_updateLevel == 0 && std::exchange(m_changed, false)) Invalidate(this);
}

void TZEPCollectionItem::Invalidate() {
    // Only a TZEPCollection adopts items of this class.
    if (auto* collection = static_cast<TZEPCollection*>(Collection())) collection->Invalidate(this);
}

} // namespace ZEP
