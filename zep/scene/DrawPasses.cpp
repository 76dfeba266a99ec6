#include <zep/scene/DrawPasses.h>

#include <typeindex>
#include <unordered_set>

namespace ZEP {

namespace {

struct TKnown {
    std::unordered_set<std::type_index> Classes;
    int Changes = 0;
};

TKnown& Known() {
    static TKnown known;
    return known;
}

} // namespace

TZEPKnownClass::TZEPKnownClass(const std::type_info& type) : m_type(type) {
    Known().Classes.insert(type);
    ++Known().Changes;
}

TZEPKnownClass::~TZEPKnownClass() {
    Known().Classes.erase(m_type);
    ++Known().Changes;
}

// Neighbours are mostly of one class: the name of a million would be hashed in vain.
bool TZEPKnownClass::Is(const std::type_info& type) {
    thread_local const std::type_info* last = nullptr;
    thread_local int changes = 0;
    thread_local bool known = false;
    const TKnown& all = Known();
    if (last == &type && changes == all.Changes) return known;
    last = &type;
    changes = all.Changes;
    return known = all.Classes.contains(type);
}

} // namespace ZEP
