#include "viewer/drawing/DrawScopes.h"

#include <zep/scene/DrawRun.h>

#include <array>

namespace ZEP {

TMatrixScope::TMatrixScope(const TGLMatrixd4& matrix)
    : m_matrix(matrix), m_pushed(!IsIdentityd(matrix)) {
    if (!m_pushed) return;
    glPushMatrix();
    glMultMatrixd(m_matrix[0].data());
    if (TZEPViewFrame::Bounds()) m_frame.emplace(m_matrix);
}

TMatrixScope::TMatrixScope(const TGLMatrixd4& matrix, const TGLMatrixd4* view)
    : TMatrixScope(matrix) {
    if (!view || !m_pushed) return;
    TGLMatrixd4 toEye;
    MultMatrixd(*view, m_matrix, toEye);
    glLoadMatrixd(toEye[0].data());
}

TMatrixScope::~TMatrixScope() {
    if (m_pushed) glPopMatrix();
}

TEvenScope::TEvenScope() {
    constexpr std::array<float, 4> White{1, 1, 1, 1};
    TZEPDrawRun::Current().End();
    glPushAttrib(GL_LIGHTING_BIT | GL_ENABLE_BIT);
    for (GLenum light = GL_LIGHT0; light <= GL_LIGHT7; ++light) glDisable(light);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, White.data());
}

TEvenScope::~TEvenScope() {
    TZEPDrawRun::Current().End();
    glPopAttrib();
}

TSinkScope::TSinkScope(bool sinks) : m_sinks(sinks) {
    if (!m_sinks) return;
    glPushAttrib(GL_POLYGON_BIT);
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(1, 1);
}

TSinkScope::~TSinkScope() {
    if (!m_sinks) return;
    TZEPDrawRun::Current().End();
    glPopAttrib();
}

} // namespace ZEP
