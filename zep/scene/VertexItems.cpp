#include <zep/scene/VertexItems.h>

#include <zep/framework/Property.h>

namespace ZEP {

void TZEPVertex3CI::SetColor(TColor color) {
    if (Change(m_color, color)) Invalidate();
}

void TZEPVertex3CI::SetData(int index, double value) {
    if (index < 0 || index > 2) return;
    if (Change(m_data[static_cast<std::size_t>(index)], value)) Invalidate();
}

void TZEPVertex3CI::SetPoint(const TGLArrayd3& point) {
    if (Change(m_data, point)) Invalidate();
}

QString TZEPVertex3CI::GetDisplayName() const {
    return QString::asprintf("(%f, %f, %f)", X(), Y(), Z());
}

void TZEPVertex3TexCI::SetData(int index, double value) {
    if (index != 3 && index != 4) return TZEPVertex3CI::SetData(index, value);
    if (Change(m_tex[static_cast<std::size_t>(index - 3)], value)) Invalidate();
}

void TZEPVertex3TexCI::SetNormal(const TGLArrayf3& normal) {
    if (Change(m_normal, normal)) Invalidate();
}

void TZEPFace3CI::SetMaterialIndex(int index) {
    if (Change(m_materialIndex, index)) Invalidate();
}

void TZEPFace3CI::SetData(int index, int value) {
    if (index < 0 || index > 2) return;
    if (Change(m_vertices[static_cast<std::size_t>(index)], value)) Invalidate();
}

QString TZEPFace3CI::GetDisplayName() const {
    return QString::asprintf("(%d, %d, %d)", A(), B(), C());
}

} // namespace ZEP
