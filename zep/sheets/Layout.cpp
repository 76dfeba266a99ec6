#include <zep/sheets/Layout.h>

#include <zep/batch/GatheredClass.h>
#include <zep/framework/Property.h>
#include <zep/gl/Scopes.h>
#include <zep/scene/Frame.h>
#include <zep/scene/SceneInterfaces.h>

#include <QSet>

#include <cmath>

namespace ZEP {

namespace {

const TRegisterObject<TZEPLayout> RegisteredLayout;

constexpr GLbitfield PaperAttributes =
    GL_ENABLE_BIT | GL_DEPTH_BUFFER_BIT | GL_CURRENT_BIT | GL_POLYGON_BIT | GL_LIGHTING_BIT;

constexpr GLenum NotOfPaper[] = {GL_LIGHTING, GL_TEXTURE_2D, GL_CULL_FACE, GL_DEPTH_TEST, GL_FOG};

} // namespace

void TZEPLayout::Store(double& field, double value) {
    if (Change(field, value)) Invalidate(this);
}

void TZEPLayout::SetPaperLeft(double left) {
    Store(m_left, left);
}

void TZEPLayout::SetPaperBottom(double bottom) {
    Store(m_bottom, bottom);
}

void TZEPLayout::SetPaperWidth(double width) {
    Store(m_width, width);
}

void TZEPLayout::SetPaperHeight(double height) {
    Store(m_height, height);
}

bool TZEPLayout::HasPaper() const {
    return m_width > 0 && m_height > 0 && std::isfinite(m_left + m_bottom + m_width + m_height);
}

void TZEPLayout::Assign(const TComponent* source) {
    if (const auto* layout = dynamic_cast<const TZEPLayout*>(source)) {
        m_left = layout->m_left;
        m_bottom = layout->m_bottom;
        m_width = layout->m_width;
        m_height = layout->m_height;
    }
    TZEPBatch::Assign(source);
}

void TZEPLayout::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    min = max = zero3d;
    if (!HasPaper()) return;
    min = {m_left, m_bottom, 0};
    max = {m_left + m_width, m_bottom + m_height, 0};
}

void TZEPLayout::DrawChildren(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    const TZEPLeftOut hidden = HiddenWithLayers();
    if (hidden.empty()) return TZEPBatch::DrawChildren(scene, state, kind);
    DrawChildrenBut(hidden, scene, state, kind);
}

TZEPLeftOut TZEPLayout::HiddenWithLayers() const {
    QSet<QString> names;
    for (int i = 0, count = Parent() ? Parent()->GetItemsCount() : 0; i < count; ++i)
        if (const TZEPObject& layer = *Parent()->GetItem(i); !layer.Visible() && IsGroup(layer))
            names << layer.Ident().toCaseFolded();
    TZEPLeftOut hidden;
    for (int i = 0, count = names.isEmpty() ? 0 : GetItemsCount(); i < count; ++i)
        if (const TZEPObject& part = *GetItem(i);
            IsGroup(part) && names.contains(part.Ident().toCaseFolded()))
            hidden.insert(&part);
    return hidden;
}

// Neither light nor depth has a part in it: what lies on it may lie below the plane, too. Pictures
// of lines and areas, which sort by depth, get it a little below.
void TZEPLayout::DrawMain(bool) {
    if (!HasPaper()) return;
    DrawFrame().Run.End();
    const TZEPAttribScope attributes(PaperAttributes);
    for (const GLenum state : NotOfPaper) glDisable(state);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glColor3f(1, 1, 1);
    const double z = DrawFrame().IsNotRendering ? -(m_width + m_height) / 1000 : 0;
    const TPrimitiveScope paper(GL_QUADS);
    glVertex3d(m_left, m_bottom, z);
    glVertex3d(m_left + m_width, m_bottom, z);
    glVertex3d(m_left + m_width, m_bottom + m_height, z);
    glVertex3d(m_left, m_bottom + m_height, z);
}

} // namespace ZEP
