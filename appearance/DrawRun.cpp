#include "appearance/DrawRun.h"

#include "appearance/Material.h"

#include <utility>

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
    if (!m_waits) EndAttributes();
    if (m_waits && m_material && (m_material == &material || m_material->SameAs(material))) return;
    EndMaterial();
    m_material = &material;
    material.ApplayMaterial(GL_FRONT_AND_BACK);
}

void TZEPDrawRun::CloseMaterial(bool cancel) {
    m_cancel = cancel;
    if (!m_waits) End();
}

/// Closes what is open and notes the new attributes, unless those are open.
bool TZEPDrawRun::Replaces(const TAttributes& attributes) {
    if (m_attributes == attributes) return false;
    EndAttributes();
    m_attributes = attributes;
    return true;
}

void TZEPDrawRun::OpenLine(const TZEPLineAttributes& attributes) {
    if (!Replaces(attributes)) return;
    glPushAttrib(GL_LINE_BIT);
    glLineWidth(attributes.Width);
    if (attributes.Stippled) {
        glLineStipple(1, attributes.Pattern);
        glEnable(GL_LINE_STIPPLE);
    }
    glNormal3b(127, 0, 0);
    if (attributes.Smooth) glEnable(GL_LINE_SMOOTH);
}

void TZEPDrawRun::OpenPoint(const TZEPPointAttributes& attributes) {
    if (!Replaces(attributes)) return;
    glPushAttrib(GL_POINT_BIT);
    glPointSize(attributes.Width);
    if (attributes.Smooth) glEnable(GL_POINT_SMOOTH);
}

void TZEPDrawRun::CloseAttributes() {
    if (!m_waits) EndAttributes();
}

void TZEPDrawRun::EndAttributes() {
    if (std::exchange(m_attributes, {}).index() != 0) glPopAttrib();
}

void TZEPDrawRun::EndMaterial() {
    TZEPMaterial* material = std::exchange(m_material, nullptr);
    if (std::exchange(m_cancel, false) && material) material->CancelMaterial();
}

void TZEPDrawRun::End() {
    EndAttributes();
    EndMaterial();
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
