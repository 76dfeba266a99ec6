#pragma once

#include <zep/Export.h>

#include <typeinfo>

namespace ZEP {

class TZEPObject;

/// What a batch takes the objects of a class for.
enum class TZEPGathered {
    No,    ///< it draws itself
    Group, ///< it only holds others and draws nothing: a layer, an inserted block
    Shape  ///< a line, an arc, a circle, a polyline, a point, a polygon or a text
};

/// Classes whose objects a batch gathers: the library's own, and those that say so. Whoever
/// inherits from one of these may draw anything, so that its objects draw themselves, until a
/// constant beside the source of the class tells that they look as those of the class it inherits:
///
///     const TZEPGatheredClass Gathered{typeid(TMyLine), TZEPGathered::Shape};
class ZEP_CORE_EXPORT TZEPGatheredClass {
public:
    TZEPGatheredClass(const std::type_info& type, TZEPGathered kind);
    ~TZEPGatheredClass();
    TZEPGatheredClass(const TZEPGatheredClass&) = delete;
    TZEPGatheredClass& operator=(const TZEPGatheredClass&) = delete;

    [[nodiscard]] static TZEPGathered Of(const TZEPObject& object);

private:
    const std::type_info& m_type;
};

/// It only holds others, and draws nothing.
[[nodiscard]] ZEP_CORE_EXPORT bool IsGroup(const TZEPObject& object);

} // namespace ZEP
