#include <zep/view/FrameState.h>

#include <zep/gl/Scopes.h>

#include <initializer_list>

namespace ZEP {

namespace {

constexpr std::array MatrixDepths{GL_PROJECTION_STACK_DEPTH, GL_TEXTURE_STACK_DEPTH,
                                  GL_MODELVIEW_STACK_DEPTH};
constexpr int MostErrors = 100; // a context that is lost has no end of them

GLint Depth(int stack) {
    GLint depth = 0;
    glGetIntegerv(static_cast<GLenum>(stack), &depth);
    return depth;
}

template <class Pop>
void PopTo(GLint depth, int stack, Pop&& pop) {
    for (GLint now = Depth(stack); now > depth; --now) pop();
}

void CloseOpen() {
    glEnd(); // an error where nothing was begun, which nobody is to see
    for (int i = 0; i < MostErrors && glGetError() != GL_NO_ERROR; ++i) {
    }
    if (Depth(GL_LIST_INDEX) != 0) glEndList();
    glRenderMode(GL_RENDER);
}

} // namespace

TZEPFrameState::TZEPFrameState()
    : m_attributes(Depth(GL_ATTRIB_STACK_DEPTH)),
      m_clientAttributes(Depth(GL_CLIENT_ATTRIB_STACK_DEPTH)) {
    for (std::size_t i = 0; i < m_matrices.size(); ++i) m_matrices[i] = Depth(MatrixDepths[i]);
}

void TZEPFrameState::Restore() const {
    CloseOpen();
    PopTo(m_attributes, GL_ATTRIB_STACK_DEPTH, glPopAttrib);
    PopTo(m_clientAttributes, GL_CLIENT_ATTRIB_STACK_DEPTH, glPopClientAttrib);
    for (std::size_t i = 0; i < m_matrices.size(); ++i) {
        glMatrixMode(static_cast<GLenum>(MatrixModes[i]));
        PopTo(m_matrices[i], MatrixDepths[i], glPopMatrix);
    }
    WriteColors(true);
    glDepthMask(GL_TRUE);
    glDepthFunc(GL_LEQUAL);
    glFrontFace(GL_CCW);
    glCullFace(GL_BACK);
    glStencilMask(~0U);
    glDepthRange(0, 1);
    for (const GLenum test : std::initializer_list<GLenum>{
             GL_STENCIL_TEST, GL_BLEND, GL_CLIP_PLANE0, GL_POLYGON_OFFSET_FILL, GL_SCISSOR_TEST,
             GL_COLOR_LOGIC_OP, GL_COLOR_MATERIAL})
        glDisable(test);
}

} // namespace ZEP
