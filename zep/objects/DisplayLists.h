#pragma once

#include <zep/gl/DisplayList.h>

#include <array>

namespace ZEP {

/// The two looks of an object, full and draft, each compiled when it is first drawn.
class TDisplayLists {
public:
    template <class Send>
    void Draw(bool draft, Send&& send) {
        m_lists[draft ? 1 : 0].Draw(send);
    }
    void Reset() {
        for (TDisplayList& list : m_lists) list.Reset();
    }

private:
    std::array<TDisplayList, 2> m_lists;
};

} // namespace ZEP
