#include <zep/objects/User.h>

#include <zep/appearance/materials/Texture.h>
#include <zep/framework/Watch.h>
#include <zep/scene/Frame.h>
#include <zep/scene/ViewVolume.h>

#include <utility>

namespace ZEP {

namespace {

const TRegisterObject<TZEPUser> RegisteredUser;

GLint Depth(GLenum stack) {
    GLint depth = 0;
    glGetIntegerv(stack, &depth);
    return depth;
}

/// Notes how deep OpenGL's stacks are and brings them back there.
class StackGuard {
public:
    StackGuard() { glPushClientAttrib(static_cast<GLbitfield>(GL_CLIENT_ALL_ATTRIB_BITS)); }

    /// \param broken  the drawing may have ended between glBegin and glEnd
    void Restore(bool broken) const {
        if (broken) {
            glEnd();
            while (glGetError() != GL_NO_ERROR) {
            }
        }
        Pop(GL_ATTRIB_STACK_DEPTH, m_attributes, glPopAttrib);
        Pop(GL_CLIENT_ATTRIB_STACK_DEPTH, m_clientAttributes, glPopClientAttrib);
        Pop(GL_NAME_STACK_DEPTH, m_names, glPopName);
        glMatrixMode(GL_MODELVIEW);
        Pop(GL_MODELVIEW_STACK_DEPTH, m_matrices, glPopMatrix);
    }

private:
    template <class PopOne>
    static void Pop(GLenum stack, GLint depth, PopOne popOne) {
        for (GLint i = Depth(stack); i > depth; --i) popOne();
    }

    GLint m_attributes = Depth(GL_ATTRIB_STACK_DEPTH);
    GLint m_clientAttributes = Depth(GL_CLIENT_ATTRIB_STACK_DEPTH);
    GLint m_names = Depth(GL_NAME_STACK_DEPTH);
    GLint m_matrices = Depth(GL_MODELVIEW_STACK_DEPTH);
};

} // namespace

void TZEPUser::Report() const {
    const QString error = Error(); // a slot may free this
    Q_EMIT Failed(const_cast<TZEPUser*>(this), error);
}

void TZEPUser::SetOnDraw(TDraw draw) {
    m_draw = draw ? std::make_shared<const TDraw>(std::move(draw)) : nullptr;
    m_calls.Reset();
    Invalidate(this);
}

void TZEPUser::SetOnGetSize(TMeasure measure) {
    m_measure = measure ? std::make_shared<const TMeasure>(std::move(measure)) : nullptr;
    m_calls.Reset();
    Invalidate(this);
}

void TZEPUser::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    TZEPShadowedObject::GetSize(min, max);
    if (!m_measure || !Error().isEmpty()) return;
    TGLArrayd3 low = min;
    TGLArrayd3 high = max;
    const auto measure = m_measure;
    const TZEPWatch alive(this);
    if (!m_calls.Run([&] { (*measure)(*this, low, high); })) {
        if (alive) Report();
        return;
    }
    min = low;
    max = high;
}

void TZEPUser::DrawSpecific(GLenum face, bool draft) {
    if (!m_draw || !Error().isEmpty()) return;
    const TZEPViewFrame anywhere(DrawFrame(), std::nullopt); // it may draw others in other places
    const StackGuard stacks;
    const auto drawn = m_draw;
    const TZEPWatch alive(this);
    TZEPTexture::ForgetBound();
    const bool textured = glIsEnabled(GL_TEXTURE_2D);
    const bool done = m_calls.Run([&] { (*drawn)(*this, face, draft); });
    TZEPTexture::ForgetBound();
    stacks.Restore(!done);
    // A smooth line leaves its texture on for what follows in a run, of which a callback has none.
    if (!textured && glIsEnabled(GL_TEXTURE_2D)) TZEPTexture::SwitchOff();
    if (!done && alive) Report();
}

} // namespace ZEP
