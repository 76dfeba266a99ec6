#include <zep/batch/DrawScopes.h>

#include <zep/gl/Scopes.h>

#include <array>

namespace ZEP {

namespace {

TZEPDrawRules Even(TZEPDrawRules rules) {
    rules.EvenMaterials = true;
    return rules;
}

} // namespace

TMatrixScope::TMatrixScope(TZEPFrame& frame, const TGLMatrixd4& matrix)
    : TMatrixScope(frame, matrix, nullptr) {}

TMatrixScope::TMatrixScope(TZEPFrame& frame, const TGLMatrixd4& matrix, const TGLMatrixd4* view)
    : m_matrix(matrix), m_pushed(view || !IsIdentityd(matrix)) {
    if (!m_pushed) return;
    glPushMatrix();
    if (TZEPViewFrame::Bounds(frame)) m_frame.emplace(frame, m_matrix);
    if (!view) {
        glMultMatrixd(m_matrix[0].data());
        return;
    }
    TGLMatrixd4 toEye;
    MultMatrixd(*view, m_matrix, toEye);
    glLoadMatrixd(toEye[0].data());
}

TMatrixScope::~TMatrixScope() {
    if (m_pushed) glPopMatrix();
}

TEvenScope::TEvenScope(TZEPDrawRun& run) : m_run(run), m_rules(run, Even(run.Rules())) {
    constexpr std::array<float, 4> White{1, 1, 1, 1};
    glPushAttrib(GL_LIGHTING_BIT | GL_ENABLE_BIT);
    for (GLenum light = GL_LIGHT0; light <= GL_LIGHT7; ++light) glDisable(light);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, White.data());
}

TEvenScope::~TEvenScope() {
    m_run.End();
    glPopAttrib();
}

TSurfaceScope::TSurfaceScope(TZEPDrawRun& run, const TLook& look)
    : m_run(run), m_pushed(look.Sinks || look.Wire || look.Flat) {
    if (!m_pushed) return;
    glPushAttrib(GL_POLYGON_BIT | GL_LIGHTING_BIT);
    if (look.Sinks) {
        glEnable(GL_POLYGON_OFFSET_FILL);
        glPolygonOffset(1, 1);
    }
    if (look.Wire) glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    if (look.Flat) glShadeModel(GL_FLAT);
}

TSurfaceScope::~TSurfaceScope() {
    if (!m_pushed) return;
    m_run.End();
    glPopAttrib();
}

TDepthOnlyScope::TDepthOnlyScope(TZEPDrawRun& run, bool on) : m_run(run), m_on(on) {
    if (!m_on) return;
    m_run.End();
    glPushAttrib(GL_COLOR_BUFFER_BIT);
    WriteColors(false);
}

TDepthOnlyScope::~TDepthOnlyScope() {
    if (!m_on) return;
    m_run.End();
    glPopAttrib();
}

} // namespace ZEP
