#include <zep/appearance/effects/ShadowLists.h>

#include <zep/gl/Names.h>

#include <string_view>
#include <type_traits>
#include <utility>

namespace ZEP {

static_assert(std::is_trivially_copyable_v<TZEPVolumeKey>);

std::size_t TZEPShadowLists::THash::operator()(const TZEPVolumeKey& key) const {
    return std::hash<std::string_view>{}({reinterpret_cast<const char*>(&key), sizeof(key)});
}

TZEPShadowLists::~TZEPShadowLists() {
    for (const GLuint list : m_lists) ReleaseDisplayList(list);
    for (const auto& [key, list] : m_kept) ReleaseDisplayList(list);
}

bool TZEPShadowLists::Use(const TZEPVolumeKey& key) {
    if (m_used.contains(key)) return true;
    const auto kept = m_kept.find(key);
    if (kept == m_kept.end()) return false;
    Draw(kept->second);
    m_used.insert(m_kept.extract(kept));
    return true;
}

void TZEPShadowLists::Add(const TZEPVolumeKey& key, GLuint list) {
    Draw(list);
    m_used.emplace(key, list);
}

void TZEPShadowLists::Drop() {
    for (const auto& [key, list] : m_kept) glDeleteLists(list, 1);
    m_kept = std::exchange(m_used, {});
    for (const GLuint list : std::exchange(m_unknown, {})) glDeleteLists(list, 1);
    m_lists.clear();
}

} // namespace ZEP
