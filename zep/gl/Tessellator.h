#pragma once

#include <GL/glu.h>

#include <memory>

namespace ZEP {

/// A tessellator of GLU, which cuts contours that may be concave, have holes or cross themselves.
class TTessellator {
public:
    TTessellator() : m_tess(gluNewTess()) {}

    [[nodiscard]] GLUtesselator* Get() const { return m_tess.get(); }
    /// \param function  of the form that GLU asks for under `which`
    template <class Function>
    void SetCallback(GLenum which, Function* function) const {
        gluTessCallback(m_tess.get(), which, reinterpret_cast<_GLUfuncptr>(function));
    }

private:
    struct TDelete {
        void operator()(GLUtesselator* tess) const { gluDeleteTess(tess); }
    };
    std::unique_ptr<GLUtesselator, TDelete> m_tess;
};

} // namespace ZEP
