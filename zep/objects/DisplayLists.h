#pragma once

#include <zep/gl/Names.h>

#include <array>
#include <utility>

namespace ZEP {

/// A display list that is compiled when it is first drawn.
class TDisplayList {
public:
    TDisplayList() = default;
    ~TDisplayList() { ReleaseDisplayList(m_name); }
    TDisplayList(const TDisplayList&) = delete;
    TDisplayList& operator=(const TDisplayList&) = delete;

    /// Draws what `send` sends, from the list if there is one; without a free name as it comes.
    template <class Send>
    void Draw(Send&& send) {
        if (m_name != 0) return glCallList(m_name);
        m_name = glGenLists(1);
        if (m_name == 0) return send();
        glNewList(m_name, GL_COMPILE);
        send();
        glEndList();
        glCallList(m_name);
    }
    [[nodiscard]] bool Exists() const { return m_name != 0; }
    /// Forgets the list: what it holds is out of date.
    void Reset() { ReleaseDisplayList(std::exchange(m_name, 0)); }

private:
    GLuint m_name = 0;
};

/// The two looks of an object, full and draft.
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
