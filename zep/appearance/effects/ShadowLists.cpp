#include <zep/appearance/effects/ShadowLists.h>

#include <string_view>
#include <type_traits>
#include <utility>

namespace ZEP {

static_assert(std::is_trivially_copyable_v<TZEPVolumeKey>);

std::size_t TZEPShadowLists::THash::operator()(const TZEPVolumeKey& key) const {
    return std::hash<std::string_view>{}({reinterpret_cast<const char*>(&key), sizeof(key)});
}

bool TZEPShadowLists::Use(const TZEPVolumeKey& key) {
    if (m_used.contains(key)) return true;
    const auto kept = m_kept.find(key);
    if (kept == m_kept.end()) return false;
    Draw(kept->second);
    m_used.insert(m_kept.extract(kept));
    return true;
}

void TZEPShadowLists::Add(const TZEPVolumeKey& key, TDisplayList list) {
    Draw(list);
    m_used.emplace(key, std::move(list));
}

void TZEPShadowLists::Drop() {
    m_kept = std::exchange(m_used, {});
    m_unknown.clear();
    m_lists.clear();
}

} // namespace ZEP
