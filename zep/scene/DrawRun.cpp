#include <zep/scene/DrawRun.h>

#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/SharedMaterials.h>

#include <utility>

namespace ZEP {

void TZEPDrawRun::Enter(bool shares) {
    if (!shares) End();
    m_shares = shares && m_walks > 0;
    m_waits = false;
}

void TZEPDrawRun::OpenMaterial(TZEPMaterial& material) {
    // A texture is loaded anew at each application, so it never waits.
    m_waits = m_shares && !material.HasTexture();
    if (!m_waits) EndAttributes();
    FindMaterial();
    if (m_waits && m_material && (m_material == &material || m_material->SameAs(material))) return;
    const TZEPMaterial* applied = m_waits ? m_material : nullptr;
    EndMaterial();
    m_material = &material;
    if (applied)
        material.ApplayChanges(*applied);
    else
        material.ApplayMaterial(GL_FRONT_AND_BACK);
    ApplyRules(material, GL_FRONT_AND_BACK);
}

void TZEPDrawRun::ApplyRules(const TZEPMaterial& material, GLenum face) const {
    if (!m_rules.EvenMaterials) return;
    for (const TZEPFaceMaterial* side : {material.FrontFace(), material.BackFace()})
        if (face == GL_FRONT_AND_BACK || face == side->Face())
            glMaterialfv(side->Face(), GL_AMBIENT,
                         side->RGBA(TZEPFaceMaterial::DiffuseColor).data());
}

void TZEPDrawRun::OpenColor(TColor color) {
    color = TColor{ColorToRGB(color)};
    if (!m_color || !m_shares) {
        OpenMaterial(SharedMaterial(&color, false));
        if (m_waits) m_color = color;
        return;
    }
    m_waits = true;
    if (m_color == color) return;
    m_color = color;
    const TGLColor rgba = ToGLColor(color, 0);
    glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, rgba.data());
}

/// The material that looks as what is applied.
void TZEPDrawRun::FindMaterial() {
    if (const std::optional<TColor> color = std::exchange(m_color, {}))
        m_material = &SharedMaterial(&*color, false);
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
    glLineWidth(attributes.Width * m_rules.Widths);
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
    glPointSize(attributes.Width * m_rules.Widths);
    if (attributes.Smooth) glEnable(GL_POINT_SMOOTH);
}

void TZEPDrawRun::OpenArrays(const TZEPArrayAttributes& arrays) {
    if (!Replaces(arrays)) return;
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, arrays.Points);
    glNormalPointer(GL_FLOAT, 0, arrays.Normals);
}

void TZEPDrawRun::CloseAttributes() {
    if (!m_waits) EndAttributes();
}

void TZEPDrawRun::EndAttributes() {
    const TAttributes ended = std::exchange(m_attributes, {});
    if (std::holds_alternative<TZEPArrayAttributes>(ended)) return glPopClientAttrib();
    if (ended.index() != 0) glPopAttrib();
}

void TZEPDrawRun::EndMaterial() {
    m_color.reset();
    TZEPMaterial* material = std::exchange(m_material, nullptr);
    if (std::exchange(m_cancel, false) && material) material->CancelMaterial();
}

void TZEPDrawRun::End() {
    EndAttributes();
    EndMaterial();
}

TZEPDrawRun::RuleScope::RuleScope(TZEPDrawRun& run, const TZEPDrawRules& rules) : m_run(run) {
    m_run.End();
    m_outer = std::exchange(m_run.m_rules, rules);
}

TZEPDrawRun::RuleScope::~RuleScope() {
    m_run.End();
    m_run.m_rules = m_outer;
}

TZEPDrawRun::Walk::Walk(TZEPDrawRun& run) : m_run(run) {
    m_run.End();
    ++m_run.m_walks;
}

TZEPDrawRun::Walk::~Walk() {
    m_run.End();
    --m_run.m_walks;
    m_run.Enter(false);
}

} // namespace ZEP
