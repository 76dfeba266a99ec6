#pragma once

#include <zep/Export.h>

#include <cstdint>

namespace ZEP {

class TZEPKeptList;

/// What an object keeps to be drawn quicker, and can make anew: it is given back where a scene has
/// long been drawn without it.
class ZEP_CORE_EXPORT TZEPKept {
public:
    TZEPKept() = default;
    virtual ~TZEPKept() { Leave(); }
    TZEPKept(const TZEPKept&) = delete;
    TZEPKept& operator=(const TZEPKept&) = delete;

    /// Frees the memory. \remark it no longer stands in a list then
    virtual void GiveBack() = 0;

private:
    friend class TZEPKeptList;

    void Leave();

    TZEPKeptList* m_list = nullptr;
    TZEPKept* m_older = nullptr;
    TZEPKept* m_newer = nullptr;
    std::uint32_t m_frame = 0; // in which it was used
};

/// What the objects of a scene keep, from the one that was used last to the one that was not for
/// the longest time.
class ZEP_CORE_EXPORT TZEPKeptList {
public:
    /// So many frames without it make a long time: some ten seconds while a view moves.
    static constexpr std::uint32_t LongTime = 600;

    TZEPKeptList() = default;
    ~TZEPKeptList();
    TZEPKeptList(const TZEPKeptList&) = delete;
    TZEPKeptList& operator=(const TZEPKeptList&) = delete;

    /// The present frame draws with it.
    void Use(TZEPKept& kept);
    /// Another frame begins.
    void NextFrame();

private:
    friend class TZEPKept;

    TZEPKept* m_newest = nullptr;
    TZEPKept* m_oldest = nullptr;
    std::uint32_t m_frame = 0;
};

} // namespace ZEP
