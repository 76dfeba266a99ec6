#pragma once

#include <zep/scene/Object.h>

#include <concepts>

namespace ZEP {

/// Makes an object and puts it last below `parent`, a scene or any other object, which owns it: it
/// is freed with its parent, or with the parent's `Clear`. One that moves to another parent later
/// stays owned by the first.
///
///     auto* box = Add<TZEPBox>(&scene);
///
/// \param parent  not null
template <std::derived_from<TZEPObject> T>
T* Add(TZEPObject* parent) {
    auto* object = new T(parent);
    object->SetParentComponent(parent);
    return object;
}

} // namespace ZEP
