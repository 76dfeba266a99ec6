#include <zep/appearance/materials/FaceMaterial.h>

#include <cmath>

namespace ZEP {

namespace {

constexpr float MaxShininess = 128;

/// `value` within 0..`max`; 0 for what is no number.
float Clamped(float value, float max) {
    return std::fmin(std::fmax(value, 0.0F), max);
}

} // namespace

TZEPFaceMaterial::TZEPFaceMaterial(GLenum face, TNotifyEvent onChange)
    : m_face(face), m_onChange(onChange) {
    SetColor(AmbientColor, 0x404040);
    SetColor(DiffuseColor, 0xC0C0C0);
}

void TZEPFaceMaterial::SetColor(int index, TColor value) {
    if (index == BaseColor) {
        SetColor(AmbientColor, value);
        SetColor(DiffuseColor, value);
        return;
    }
    if (index < AmbientColor || index > EmissionColor) return;
    const auto place = static_cast<std::size_t>(index);
    m_colors[place] = value;
    m_rgba[place] = ToGLColor(value, m_rgba[place][3]);
}

void TZEPFaceMaterial::SetParam(int index, float value) {
    switch (index) {
    case ShininessParam:
        m_shininess = Clamped(value, MaxShininess);
        break;
    case TransparencyParam:
        m_transparency = Clamped(value, 1);
        SetAlpha(1 - m_transparency);
        break;
    default:
        return;
    }
    m_onChange(this);
}

void TZEPFaceMaterial::SetAlpha(float alpha) {
    for (TGLColor& color : m_rgba) color[3] = alpha;
}

void TZEPFaceMaterial::ApplayMaterial() const {
    glMaterialfv(m_face, GL_AMBIENT, m_rgba[AmbientColor].data());
    glMaterialfv(m_face, GL_DIFFUSE, m_rgba[DiffuseColor].data());
    glMaterialfv(m_face, GL_SPECULAR, m_rgba[SpecularColor].data());
    glMaterialfv(m_face, GL_EMISSION, m_rgba[EmissionColor].data());
    glMaterialfv(m_face, GL_SHININESS, &m_shininess);
}

void TZEPFaceMaterial::ApplayChanges(const TZEPFaceMaterial& applied, GLenum face) const {
    const auto changed = [&](ColorIndex color) { return m_rgba[color] != applied.m_rgba[color]; };
    const auto apply = [&](ColorIndex color, GLenum name) {
        if (changed(color)) glMaterialfv(face, name, m_rgba[color].data());
    };
    if (changed(AmbientColor) && m_rgba[AmbientColor] == m_rgba[DiffuseColor]) {
        glMaterialfv(face, GL_AMBIENT_AND_DIFFUSE, m_rgba[AmbientColor].data());
    } else {
        apply(AmbientColor, GL_AMBIENT);
        apply(DiffuseColor, GL_DIFFUSE);
    }
    apply(SpecularColor, GL_SPECULAR);
    apply(EmissionColor, GL_EMISSION);
    if (m_shininess != applied.m_shininess) glMaterialfv(face, GL_SHININESS, &m_shininess);
}

bool TZEPFaceMaterial::SameAs(const TZEPFaceMaterial& other) const {
    return m_rgba == other.m_rgba && m_shininess == other.m_shininess;
}

bool TZEPFaceMaterial::HasValuesOf(const TZEPFaceMaterial& other) const {
    return m_colors == other.m_colors && m_transparency == other.m_transparency && SameAs(other);
}

void TZEPFaceMaterial::Assign(const TPersistent* source) {
    const auto* material = dynamic_cast<const TZEPFaceMaterial*>(source);
    if (!material) return TPersistent::Assign(source);
    m_colors = material->m_colors;
    m_rgba = material->m_rgba;
    m_shininess = material->m_shininess;
    m_transparency = material->m_transparency;
}

} // namespace ZEP
