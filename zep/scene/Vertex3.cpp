#include <zep/scene/Vertex3.h>

#include <zep/framework/Property.h>

namespace ZEP {

void TZEPVertex3::GetData(double& x, double& y, double& z) const {
    x = m_data[0];
    y = m_data[1];
    z = m_data[2];
}

void TZEPVertex3::SetValue(int index, double value) {
    if (index < 0 || index > 2) return;
    if (Change(m_data[static_cast<std::size_t>(index)], value)) Changed();
}

void TZEPVertex3::SetData(double x, double y, double z) {
    m_data = {x, y, z};
    Changed();
}

void TZEPVertex3::Assign(const TPersistent* source) {
    const auto* vertex = dynamic_cast<const TZEPVertex3*>(source);
    if (!vertex) return TPersistent::Assign(source);
    SetData(vertex->X(), vertex->Y(), vertex->Z());
}

void TZEPVertex3Tex::SetValue(int index, double value) {
    if (index != 3 && index != 4) return TZEPVertex3::SetValue(index, value);
    if (Change(m_tex[static_cast<std::size_t>(index - 3)], value)) Changed();
}

void TZEPVertex3Tex::SetTexCoord(double u, double v) {
    m_tex = {u, v};
    Changed();
}

void TZEPVertex3Tex::Assign(const TPersistent* source) {
    if (const auto* vertex = dynamic_cast<const TZEPVertex3Tex*>(source)) m_tex = vertex->m_tex;
    TZEPVertex3::Assign(source);
}

} // namespace ZEP
