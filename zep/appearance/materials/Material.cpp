#include <zep/appearance/materials/Material.h>

#include <zep/framework/Property.h>
#include <zep/framework/Watch.h>

namespace ZEP {

TZEPMaterial::TZEPMaterial(TNotifyEvent onChange)
    : m_frontFace(GL_FRONT, onChange), m_backFace(GL_BACK, onChange), m_texture(onChange) {}

TZEPMaterial::~TZEPMaterial() {
    TZEPWatch::Forget(this);
}

void TZEPMaterial::SetTransparency(float value) {
    if (!Change(m_transparency, value)) return;
    m_frontFace.SetParam(TZEPFaceMaterial::TransparencyParam, value);
    m_backFace.SetParam(TZEPFaceMaterial::TransparencyParam, value);
}

bool TZEPMaterial::SameAs(const TZEPMaterial& other) const {
    if (HasTexture() || other.HasTexture()) return false;
    return this == &other ||
           (m_frontFace.SameAs(other.m_frontFace) && m_backFace.SameAs(other.m_backFace));
}

bool TZEPMaterial::HasValuesOf(const TZEPMaterial& other) const {
    return m_transparency == other.m_transparency && m_frontFace.HasValuesOf(other.m_frontFace) &&
           m_backFace.HasValuesOf(other.m_backFace) && m_texture.HasValuesOf(other.m_texture);
}

void TZEPMaterial::ApplayMaterial(GLenum face) {
    if (face != GL_BACK) m_frontFace.ApplayMaterial();
    if (face != GL_FRONT) m_backFace.ApplayMaterial();
    m_texture.ApplayMaterial();
}

void TZEPMaterial::ApplayWithFrontAlpha(float alpha) {
    TZEPFaceMaterial front(GL_FRONT, {});
    front.Assign(&m_frontFace);
    front.SetAlpha(alpha);
    front.ApplayMaterial();
    m_backFace.ApplayMaterial();
    m_texture.ApplayMaterial();
}

void TZEPMaterial::ApplayChanges(const TZEPMaterial& applied) {
    if (m_frontFace.SameAs(m_backFace) && applied.m_frontFace.SameAs(applied.m_backFace)) {
        m_frontFace.ApplayChanges(applied.m_frontFace, GL_FRONT_AND_BACK);
    } else {
        m_frontFace.ApplayChanges(applied.m_frontFace, GL_FRONT);
        m_backFace.ApplayChanges(applied.m_backFace, GL_BACK);
    }
    m_texture.ApplayChanges(applied.m_texture);
}

void TZEPMaterial::CancelMaterial() {
    m_frontFace.CancelMaterial();
    m_backFace.CancelMaterial();
    m_texture.CancelMaterial();
}

void TZEPMaterial::Assign(const TPersistent* source) {
    const auto* material = dynamic_cast<const TZEPMaterial*>(source);
    if (!material) return TPersistent::Assign(source);
    m_frontFace.Assign(&material->m_frontFace);
    m_backFace.Assign(&material->m_backFace);
    m_texture.Assign(&material->m_texture);
    m_transparency = material->m_transparency;
}

} // namespace ZEP
