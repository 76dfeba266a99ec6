#pragma once

#include <zep/scene/Object.h>

#include <QPointer>

#include <functional>
#include <utility>
#include <vector>

namespace ZEP {

/// Objects that are switched, and back to what they were.
class TSwitchedObjects {
public:
    using TSwitch = std::function<void(TZEPObject&)>;

    void Add(TZEPObject& object, const TSwitch& change) {
        change(object);
        m_objects.emplace_back(&object);
    }
    void Restore(const TSwitch& change) {
        for (const QPointer<TZEPObject>& object : std::exchange(m_objects, {}))
            if (object) change(*object);
    }

private:
    std::vector<QPointer<TZEPObject>> m_objects;
};

} // namespace ZEP
