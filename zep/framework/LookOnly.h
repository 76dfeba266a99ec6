#pragma once

#include <zep/Export.h>

namespace ZEP {

/// While one lives, looking at an object from this thread changes nothing in it: a sub-object that
/// comes into being when it is first asked for does not, and a shared one in its first state, which
/// must not be changed, stands for it. Whoever walks a whole tree to store or compare it holds one.
class ZEP_CORE_EXPORT TLookOnly {
public:
    TLookOnly() { ++s_depth; }
    ~TLookOnly() { --s_depth; }
    TLookOnly(const TLookOnly&) = delete;
    TLookOnly& operator=(const TLookOnly&) = delete;

    [[nodiscard]] static bool IsActive() { return s_depth > 0; }

private:
    inline static thread_local int s_depth = 0;
};

} // namespace ZEP
