#include <zep/stock/Workpiece.h>

#include <zep/appearance/materials/Material.h>
#include <zep/framework/Property.h>
#include <zep/gl/Scopes.h>
#include <zep/stock/Stock.h>
#include <zep/stock/WorkpieceMeshes.h>

#include <cmath>
#include <utility>

namespace ZEP {

namespace {

const TRegisterObject<TZEPWorkpiece> RegisteredWorkpiece;

std::array<std::uint8_t, 4> BytesOf(TColor color, float alpha) {
    std::array<std::uint8_t, 4> bytes{};
    const TGLColor parts = ToGLColor(color, alpha);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<std::uint8_t>(std::lround(parts[i] * 255));
    return bytes;
}

} // namespace

TZEPWorkpiece::TZEPWorkpiece(TComponent* owner)
    : TZEPColoredObject(owner), m_meshes(std::make_unique<TWorkpieceMeshes>()) {}

TZEPWorkpiece::~TZEPWorkpiece() = default;

void TZEPWorkpiece::SetStock(std::shared_ptr<const TStock> stock) {
    m_stock = std::move(stock);
    m_meshes->Forget();
    Invalidate(this);
}

void TZEPWorkpiece::SetCutColor(TColor color) {
    if (Change(m_cutColor, color)) Invalidate(this);
}

void TZEPWorkpiece::SetRapidColor(TColor color) {
    if (Change(m_rapidColor, color)) Invalidate(this);
}

void TZEPWorkpiece::Assign(const TComponent* source) {
    TZEPColoredObject::Assign(source);
    if (const auto* other = dynamic_cast<const TZEPWorkpiece*>(source)) {
        SetStock(other->m_stock);
        SetCutColor(other->m_cutColor);
        SetRapidColor(other->m_rapidColor);
    }
}

void TZEPWorkpiece::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    min = m_stock ? m_stock->Min() : zero3d;
    max = m_stock ? m_stock->Max() : zero3d;
}

// It is closed: nobody sees its faces from behind.
void TZEPWorkpiece::DrawSpecific(GLenum face, bool draft) {
    if (!m_stock || face == GL_BACK) return;
    const float alpha = 1 - DrawnMaterial().FrontFace()->Transparency();
    const TStockTileMesh::TColors colors{BytesOf(Color(), alpha), BytesOf(m_cutColor, alpha),
                                         BytesOf(m_rapidColor, alpha)};
    const TZEPAttribScope kept(GL_CURRENT_BIT | GL_LIGHTING_BIT | GL_POLYGON_BIT);
    if (draft) glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
    glEnable(GL_COLOR_MATERIAL);
    m_meshes->Draw(*m_stock, colors);
}

} // namespace ZEP
