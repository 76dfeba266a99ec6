#pragma once

#include <zep/framework/Watch.h>
#include <zep/scene/Object.h>

namespace ZEP {

/// Ends a reading that is cancelled, or of which a handler has freed what it needs.
struct TReadingEnd {};

/// Gives an object that was read its parent: last of all, so that what was set before had nobody to
/// tell. Who is told now may free anything. Raises `TReadingEnd` where that is the root.
/// \return null where the object was freed
template <class T>
T* Place(T* object, TZEPObject* parent, TZEPObject& root) {
    const TZEPWatch hasRoot(&root);
    const TZEPWatch isThere(static_cast<TZEPObject*>(object));
    object->SetParentComponent(parent);
    if (!hasRoot) throw TReadingEnd();
    return isThere ? object : nullptr;
}

} // namespace ZEP
