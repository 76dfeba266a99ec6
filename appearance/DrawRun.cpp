#include "appearance/DrawRun.h"

#include "appearance/Material.h"

namespace ZEP {

TZEPDrawRun& TZEPDrawRun::Current() {
    static TZEPDrawRun run;
    return run;
}

void TZEPDrawRun::Enter(bool shares) {
    if (!shares) End();
    m_shares = shares && m_walks > 0;
    m_waits = false;
}

void TZEPDrawRun::OpenMaterial(TZEPMaterial& material) {
    // A texture is loaded anew at each application, so it never waits.
    m_waits = m_shares && !material.HasTexture();
    const bool open = m_material && (m_material == &material || m_material->SameAs(material));
    if (open && m_waits) return;
    End();
    m_material = &material;
    material.ApplayMaterial(GL_FRONT_AND_BACK);
}

void TZEPDrawRun::CloseMaterial(bool cancel) {
    m_cancel = cancel;
    if (!m_waits) End();
}

void TZEPDrawRun::OpenLine(const TZEPLineAttributes& attributes) {
    if (m_lineOpen && m_line == attributes) return;
    EndLine();
    m_line = attributes;
    m_lineOpen = true;
    glPushAttrib(GL_LINE_BIT);
    glLineWidth(attributes.Width);
    if (attributes.Stippled) {
        glLineStipple(1, attributes.Pattern);
        glEnable(GL_LINE_STIPPLE);
    }
    glNormal3b(127, 0, 0);
    if (attributes.Smooth) glEnable(GL_LINE_SMOOTH);
}

void TZEPDrawRun::CloseLine() {
    if (!m_waits) EndLine();
}

void TZEPDrawRun::EndLine() {
    if (!m_lineOpen) return;
    m_lineOpen = false;
    glPopAttrib();
}

void TZEPDrawRun::End() {
    EndLine();
    if (!m_material) return;
    TZEPMaterial* material = m_material;
    m_material = nullptr;
    if (m_cancel) material->CancelMaterial();
    m_cancel = false;
}

TZEPDrawRun::Walk::Walk() {
    Current().End();
    ++Current().m_walks;
}

TZEPDrawRun::Walk::~Walk() {
    Current().End();
    --Current().m_walks;
    Current().Enter(false);
}

} // namespace ZEP
