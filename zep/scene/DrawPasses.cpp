#include <zep/scene/DrawPasses.h>

#include <zep/scene/ClassTable.h>

namespace ZEP {

namespace {

TZEPClassTable<bool>& Known() {
    static TZEPClassTable<bool> known{};
    return known;
}

} // namespace

TZEPKnownClass::TZEPKnownClass(const std::type_info& type) : m_type(type) {
    Known().Set(type, true);
}

TZEPKnownClass::~TZEPKnownClass() {
    Known().Remove(m_type);
}

bool TZEPKnownClass::Is(const std::type_info& type) {
    return Known().Of(type);
}

} // namespace ZEP
