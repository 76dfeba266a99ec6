#pragma once

namespace ZEP {

/// What a panel's context finds beyond OpenGL 1.1, for a test that draws without a panel: while it
/// lives, light can be subtracted and counts in the stencil buffer may run over.
class TBlendEntry {
public:
    TBlendEntry();
    ~TBlendEntry();
    TBlendEntry(const TBlendEntry&) = delete;
    TBlendEntry& operator=(const TBlendEntry&) = delete;
};

} // namespace ZEP
