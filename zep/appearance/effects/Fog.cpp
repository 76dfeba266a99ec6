#include <zep/appearance/effects/Fog.h>

#include <zep/scene/SceneInterfaces.h>

#include <GL/gl.h>

namespace ZEP {

namespace {

constexpr std::array Modes{GL_LINEAR, GL_EXP, GL_EXP2};

} // namespace

void TZEPFog::Repaint() const {
    if (m_panel) m_panel->Invalidate();
}

void TZEPFog::Apply() const {
    if (!m_enabled) return glDisable(GL_FOG);
    glFogi(GL_FOG_MODE, Modes[m_mode]);
    glFogf(GL_FOG_START, static_cast<float>(m_start));
    glFogf(GL_FOG_END, static_cast<float>(m_end));
    glFogf(GL_FOG_DENSITY, static_cast<float>(m_density));
    glFogfv(GL_FOG_COLOR, ToGLColor(m_color, 0).data());
    glHint(GL_FOG_HINT, GL_FASTEST);
    glEnable(GL_FOG);
}

void TZEPFog::Assign(const TPersistent* source) {
    const auto* fog = dynamic_cast<const TZEPFog*>(source);
    if (!fog) return TPersistent::Assign(source);
    m_color = fog->m_color;
    m_start = fog->m_start;
    m_end = fog->m_end;
    m_density = fog->m_density;
    m_mode = fog->m_mode;
    m_enabled = fog->m_enabled;
    Repaint();
}

} // namespace ZEP
