#include <zep/scene/DrawRun.h>

#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/SharedMaterials.h>
#include <zep/gl/ClientArrays.h>
#include <zep/gl/Told.h>

#include <typeinfo>
#include <utility>

namespace ZEP {

namespace {

/// A texture that is loaded anew at each application does not, and a class of a host may do
/// anything.
bool CanWait(const TZEPMaterial& material, bool cancel) {
    const bool textured = material.HasTexture();
    return (!textured || (material.Texture()->Resident() && cancel)) &&
           typeid(material) == typeid(TZEPMaterial);
}

void OpenLine(const TZEPLineAttributes& attributes, float widths) {
    glPushAttrib(GL_LINE_BIT);
    SetLineWidth(attributes.Width * widths);
    if (attributes.Stippled) {
        glLineStipple(1, attributes.Pattern);
        glEnable(GL_LINE_STIPPLE);
    }
    TellDotted(attributes.Stippled);
    glNormal3b(127, 0, 0);
    if (attributes.Smooth) glEnable(GL_LINE_SMOOTH);
}

void OpenPoint(const TZEPPointAttributes& attributes, float widths) {
    glPushAttrib(GL_POINT_BIT);
    SetPointSize(attributes.Width * widths);
    if (attributes.Smooth) glEnable(GL_POINT_SMOOTH);
}

void OpenArrays(const TZEPArrayAttributes& arrays) {
    PushClientArrays({GL_VERTEX_ARRAY, GL_NORMAL_ARRAY});
    glVertexPointer(3, GL_FLOAT, 0, arrays.Points);
    glNormalPointer(GL_FLOAT, 0, arrays.Normals);
    if (!arrays.Places) return;
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, 0, arrays.Places);
}

} // namespace

TZEPMaterialUse::TZEPMaterialUse(TZEPMaterial& material)
    : m_material(material), m_alive(&material), m_textured(material.HasTexture()) {}

TZEPMaterialUse::~TZEPMaterialUse() {
    if (m_textured && (!m_alive || !m_material.HasTexture())) TZEPTexture::SwitchOff();
    if (m_alive) m_material.CancelMaterial();
}

// --- materials -----------------------------------------------------------------------------------

TZEPDrawRun::MaterialScope::MaterialScope(TZEPDrawRun& run, TZEPMaterial& material, GLenum face,
                                          bool cancel)
    : m_run(run) {
    run.m_waits = run.m_shares && face == GL_FRONT_AND_BACK && CanWait(material, cancel);
    if (run.m_waits) {
        run.Apply(material);
        return;
    }
    run.End();
    material.ApplayMaterial(face);
    run.ApplyRules(material, face);
    if (cancel) m_own.emplace(material);
}

TZEPDrawRun::MaterialScope::MaterialScope(TZEPDrawRun& run, TColor color) : m_run(run) {
    run.m_waits = run.m_shares;
    if (!run.m_waits) run.End();
    run.Apply(TColor{ColorToRGB(color)});
    if (!run.m_waits) run.End();
}

void TZEPDrawRun::Apply(TColor color) {
    if (m_color == color) return;
    if (m_color) return SendColor(color);
    Apply(SharedMaterial(&color, false));
    m_color = color;
}

void TZEPDrawRun::SendColor(TColor color) {
    const TGLColor rgba = ToGLColor(color, 0);
    glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, rgba.data());
    m_color = color;
}

/// Of the material that is applied already, only what differs is set.
void TZEPDrawRun::Apply(TZEPMaterial& material) {
    FindMaterial();
    if (m_textureChanges != TZEPTexture::Changes()) EndMaterial();
    const TZEPMaterial* applied = std::exchange(m_material, &material);
    if (applied == &material || (applied && applied->SameAs(material))) return;
    if (applied)
        material.ApplayChanges(*applied);
    else
        material.ApplayMaterial(GL_FRONT_AND_BACK);
    m_textured = material.HasTexture();
    m_textureChanges = TZEPTexture::Changes();
    ApplyRules(material, GL_FRONT_AND_BACK);
}

void TZEPDrawRun::ApplyRules(const TZEPMaterial& material, GLenum face) const {
    if (!m_rules.EvenMaterials) return;
    for (const TZEPFaceMaterial* side : {material.FrontFace(), material.BackFace()})
        if (face == GL_FRONT_AND_BACK || face == side->Face())
            glMaterialfv(side->Face(), GL_AMBIENT,
                         side->RGBA(TZEPFaceMaterial::DiffuseColor).data());
}

/// The material that looks as what is applied.
void TZEPDrawRun::FindMaterial() {
    if (const std::optional<TColor> color = std::exchange(m_color, {}))
        m_material = &SharedMaterial(&*color, false);
}

// --- lines ---------------------------------------------------------------------------------------

bool TZEPDrawRun::Gather(const std::type_info& type, const TZEPLineAttributes& attributes,
                         const TZEPLineRun::TLine& line) {
    if (m_next != &type || !m_walks || m_shares) return false;
    if (m_lines.IsFull() || attributes != m_lineAttributes) SendLines();
    m_lineAttributes = attributes;
    m_lines.Add({line.From, line.To, TColor{ColorToRGB(line.Color)}});
    return true;
}

void TZEPDrawRun::SendGathered() {
    const Turn turn(*this, true);
    if (!m_lines.PaysOff()) {
        SendByCalls();
    } else {
        {
            const MaterialScope material(*this, m_lines.Lines().front().Color);
            const AttributeScope attributes(*this, m_lineAttributes);
            m_lines.SendArrays();
        }
        SendColor(m_lines.Lines().back().Color); // arrays leave it undefined
    }
    m_lines.Clear();
}

void TZEPDrawRun::SendByCalls() {
    for (const TZEPLineRun::TLine& line : m_lines.Lines()) {
        const MaterialScope material(*this, line.Color);
        const AttributeScope attributes(*this, m_lineAttributes);
        glBegin(GL_LINES);
        glVertex3dv(line.From.data());
        glVertex3dv(line.To.data());
        glEnd();
    }
}

// --- attributes ----------------------------------------------------------------------------------

TZEPDrawRun::AttributeScope::AttributeScope(TZEPDrawRun& run, const TAttributes& attributes) {
    if (run.m_waits && run.m_attributes == attributes) return;
    run.EndAttributes();
    run.Open(attributes);
    (run.m_waits ? run.m_attributes : m_own) = attributes;
}

void TZEPDrawRun::Open(const TAttributes& attributes) const {
    if (const auto* line = std::get_if<TZEPLineAttributes>(&attributes))
        OpenLine(*line, m_rules.Widths);
    else if (const auto* point = std::get_if<TZEPPointAttributes>(&attributes))
        OpenPoint(*point, m_rules.Widths);
    else if (const auto* arrays = std::get_if<TZEPArrayAttributes>(&attributes))
        OpenArrays(*arrays);
}

void TZEPDrawRun::Close(const TAttributes& attributes) {
    if (const auto* arrays = std::get_if<TZEPArrayAttributes>(&attributes)) {
        glPopClientAttrib();
        glNormal3fv(arrays->LastNormal);
        if (arrays->LastPlace) glTexCoord2fv(arrays->LastPlace);
    } else if (attributes.index() != 0) {
        glPopAttrib();
    }
}

void TZEPDrawRun::EndAttributes() {
    Close(std::exchange(m_attributes, {}));
}

void TZEPDrawRun::EndMaterial() {
    m_color.reset();
    m_material = nullptr;
    if (std::exchange(m_textured, false)) TZEPTexture::SwitchOff();
}

void TZEPDrawRun::End() {
    SendLines();
    EndAttributes();
    EndMaterial();
}

// --- turns and walks -----------------------------------------------------------------------------

TZEPDrawRun::Scope::~Scope() {
    m_run.m_walks = m_outerWalks;
    m_run.m_shares = m_outerShares;
    m_run.m_waits = false;
}

// Within the turn of one that shares nothing waits, and an outer one that shares is done with it.
TZEPDrawRun::Turn::Turn(TZEPDrawRun& run, bool shares) : Scope(run) {
    if (!shares || m_outerShares) {
        run.End();
        run.m_walks = false;
    }
    run.m_shares = shares && run.m_walks;
    run.m_waits = false;
}

TZEPDrawRun::RuleScope::RuleScope(TZEPDrawRun& run, const TZEPDrawRules& rules) : m_run(run) {
    m_run.End();
    m_outer = std::exchange(m_run.m_rules, rules);
}

TZEPDrawRun::RuleScope::~RuleScope() {
    m_run.End();
    m_run.m_rules = m_outer;
}

TZEPDrawRun::Walk::Walk(TZEPDrawRun& run) : Scope(run) {
    run.End();
    run.m_walks = true;
    run.m_shares = false;
    run.m_waits = false;
}

} // namespace ZEP
