#include <zep/batch/GatheredClass.h>

#include <zep/objects/Arc.h>
#include <zep/objects/Circle.h>
#include <zep/objects/DashedPolyline.h>
#include <zep/objects/Label.h>
#include <zep/objects/Line.h>
#include <zep/objects/LineSet.h>
#include <zep/objects/Node.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polygon.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/ClassTable.h>

namespace ZEP {

namespace {

using enum TZEPGathered;
using TClasses = TZEPClassTable<TZEPGathered>;

TClasses& Classes() {
    static TClasses classes{{typeid(TZEPObject), Group},        {typeid(TZEPNode), Group},
                            {typeid(TZEPLine), Shape},          {typeid(TZEPArc), Shape},
                            {typeid(TZEPCircle), Shape},        {typeid(TZEPPolyline), Shape},
                            {typeid(TZEPPoint), Shape},         {typeid(TZEPPolygon), Shape},
                            {typeid(TZEPLabel), Shape},         {typeid(TZEPLineSet), Shape},
                            {typeid(TZEPDashedPolyline), Shape}};
    return classes;
}

} // namespace

TZEPGatheredClass::TZEPGatheredClass(const std::type_info& type, TZEPGathered kind) : m_type(type) {
    Classes().Set(type, kind);
}

TZEPGatheredClass::~TZEPGatheredClass() {
    Classes().Remove(m_type);
}

TZEPGathered TZEPGatheredClass::Of(const TZEPObject& object) {
    return Classes().Of(typeid(object));
}

bool IsGroup(const TZEPObject& object) {
    return TZEPGatheredClass::Of(object) == Group;
}

} // namespace ZEP
