#pragma once

#include <zep/Export.h>

namespace ZEP {

/// Tells whether something still exists after a call that may have freed it. It costs next to
/// nothing, and lives on the stack.
class ZEP_CORE_EXPORT TZEPWatch {
public:
    explicit TZEPWatch(const void* watched) : m_watched(watched), m_outer(s_innermost) {
        s_innermost = this;
    }
    ~TZEPWatch() { s_innermost = m_outer; }
    TZEPWatch(const TZEPWatch&) = delete;
    TZEPWatch& operator=(const TZEPWatch&) = delete;

    explicit operator bool() const { return m_watched; }
    /// What can be watched says that it goes.
    static void Forget(const void* gone) {
        for (TZEPWatch* watch = s_innermost; watch; watch = watch->m_outer)
            if (watch->m_watched == gone) watch->m_watched = nullptr;
    }

private:
    // An object is freed by the thread that has its tree.
    inline static thread_local TZEPWatch* s_innermost = nullptr;

    const void* m_watched;
    TZEPWatch* m_outer;
};

} // namespace ZEP
