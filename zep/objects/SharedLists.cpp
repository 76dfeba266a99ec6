#include <zep/objects/SharedLists.h>

#include <algorithm>
#include <map>
#include <typeindex>
#include <utility>

namespace ZEP {

// The table does not hold the looks, so that a solid may outlive it. Entries whose look has gone
// are taken out each time that the table has doubled: the search for them stays cheap.
std::shared_ptr<TSharedLists::TLook> TSharedLists::Look(const std::type_info& type,
                                                        const TSettings& settings) {
    constexpr std::size_t Few = 64;
    static std::map<std::pair<std::type_index, TSettings>, std::weak_ptr<TLook>> looks;
    static std::size_t most = Few;
    std::weak_ptr<TLook>& entry = looks[{type, settings}];
    std::shared_ptr<TLook> look = entry.lock();
    if (look) return look;
    entry = look = std::make_shared<TLook>(settings);
    if (looks.size() < most) return look;
    std::erase_if(looks, [](const auto& other) { return other.second.expired(); });
    most = std::max(Few, 2 * looks.size());
    return look;
}

} // namespace ZEP
