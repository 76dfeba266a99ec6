#pragma once

#include <zep/Export.h>
#include <zep/framework/Registry.h>
#include <zep/scene/DrawStates.h>

#include <cstdint>
#include <typeinfo>

namespace ZEP {

/// Draw passes, a bit for each.
using TZEPPassSet = std::uint16_t;

inline constexpr TZEPPassSet AllPasses = 0xFFFF;

[[nodiscard]] constexpr TZEPPassSet PassBit(TZEPDrawState state) {
    return static_cast<TZEPPassSet>(1U << state);
}

/// The passes that draw the objects themselves. In the others most objects have nothing to do.
inline constexpr TZEPPassSet ObjectPasses = PassBit(dsAllObjects) | PassBit(dsNonShadowObjects) |
                                            PassBit(dsShadowObjects) | PassBit(dsTransparent);

/// Classes whose objects can be believed what they tell of themselves: a class that inherits from
/// one of these may override anything, and is drawn in every pass.
class ZEP_CORE_EXPORT TZEPKnownClass {
public:
    explicit TZEPKnownClass(const std::type_info& type);
    ~TZEPKnownClass();
    TZEPKnownClass(const TZEPKnownClass&) = delete;
    TZEPKnownClass& operator=(const TZEPKnownClass&) = delete;

    [[nodiscard]] static bool Is(const std::type_info& type);

private:
    const std::type_info& m_type;
};

/// Registers a class of objects that overrides `SidePasses` where it has to: a constant beside the
/// class's source.
template <class T>
class TRegisterObject {
public:
    explicit TRegisterObject(const char* group = "OpenGL") : m_class(group) {}

private:
    TRegisterClass<T> m_class;
    TZEPKnownClass m_known{typeid(T)};
};

} // namespace ZEP
