#pragma once

#include <zep/gl/Names.h>

#include <QScopeGuard>

#include <utility>

namespace ZEP {

/// A display list and its name, which goes with it (see `ReleaseDisplayList`).
class TDisplayList {
public:
    TDisplayList() = default;
    ~TDisplayList() { ReleaseDisplayList(m_name); }
    TDisplayList(TDisplayList&& other) noexcept : m_name(std::exchange(other.m_name, 0)) {}
    TDisplayList& operator=(TDisplayList&& other) noexcept {
        if (this != &other) Adopt(std::exchange(other.m_name, 0));
        return *this;
    }

    /// 0 where there is no list.
    [[nodiscard]] GLuint Name() const { return m_name; }
    [[nodiscard]] bool Exists() const { return m_name != 0; }
    /// Draws what `send` sends, from the list if there is one; where none can be made, as it comes.
    template <class Send>
    void Draw(Send&& send) {
        if (Exists() || Compile(send)) return glCallList(m_name);
        send();
    }
    /// Makes the list anew. \return false without a free name, and while a list of the host's is
    /// made, which cannot hold another: nothing is sent then
    template <class Send>
    bool Compile(Send&& send) {
        GLint made = 0;
        glGetIntegerv(GL_LIST_INDEX, &made);
        Adopt(made == 0 ? glGenLists(1) : 0);
        if (m_name == 0) return false;
        glNewList(m_name, GL_COMPILE);
        const auto end = qScopeGuard([] { glEndList(); });
        send();
        return true;
    }
    /// Takes over a list by its name.
    void Adopt(GLuint name) {
        const GLuint old = std::exchange(m_name, name);
        if (old != name) ReleaseDisplayList(old);
    }
    /// Forgets the list: what it holds is out of date.
    void Reset() { Adopt(0); }

private:
    GLuint m_name = 0;
};

} // namespace ZEP
