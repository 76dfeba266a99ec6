#include <zep/scene/DrawPasses.h>

#include <typeindex>
#include <unordered_set>

namespace ZEP {

namespace {

std::unordered_set<std::type_index>& Known() {
    static std::unordered_set<std::type_index> classes;
    return classes;
}

} // namespace

TZEPKnownClass::TZEPKnownClass(const std::type_info& type) : m_type(type) {
    Known().insert(type);
}

TZEPKnownClass::~TZEPKnownClass() {
    Known().erase(m_type);
}

bool TZEPKnownClass::Is(const std::type_info& type) {
    return Known().contains(type);
}

} // namespace ZEP
