#include <zep/batch/GatheredClass.h>

#include <zep/objects/Arc.h>
#include <zep/objects/Circle.h>
#include <zep/objects/Label.h>
#include <zep/objects/Line.h>
#include <zep/objects/Node.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polygon.h>
#include <zep/objects/Polyline.h>

#include <typeindex>
#include <unordered_map>

namespace ZEP {

namespace {

using enum TZEPGathered;
using TClasses = std::unordered_map<std::type_index, TZEPGathered>;

TClasses& Classes() {
    static TClasses classes{
        {typeid(TZEPObject), Group}, {typeid(TZEPNode), Group},    {typeid(TZEPLine), Shape},
        {typeid(TZEPArc), Shape},    {typeid(TZEPCircle), Shape},  {typeid(TZEPPolyline), Shape},
        {typeid(TZEPPoint), Shape},  {typeid(TZEPPolygon), Shape}, {typeid(TZEPLabel), Shape}};
    return classes;
}

} // namespace

TZEPGatheredClass::TZEPGatheredClass(const std::type_info& type, TZEPGathered kind) : m_type(type) {
    Classes()[type] = kind;
}

TZEPGatheredClass::~TZEPGatheredClass() {
    Classes().erase(m_type);
}

// Neighbours are mostly of one class: the name of a million would be hashed in vain.
TZEPGathered TZEPGatheredClass::Of(const TZEPObject& object) {
    thread_local const std::type_info* last = nullptr;
    thread_local TZEPGathered kind = No;
    const std::type_info& type = typeid(object);
    if (last == &type) return kind;
    last = &type;
    const auto found = Classes().find(type);
    return kind = found == Classes().end() ? No : found->second;
}

bool IsGroup(const TZEPObject& object) {
    return TZEPGatheredClass::Of(object) == Group;
}

} // namespace ZEP
