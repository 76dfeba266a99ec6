#include <zep/objects/Line.h>

#include <zep/scene/Frame.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/XForm.h>

namespace ZEP {

namespace {

const TRegisterObject<TZEPLine> RegisteredLine;

} // namespace

TZEPLine::TZEPLine(TComponent* owner)
    : TZEPLineShape(owner), m_ends{TZEPVertex3(Notify<&TZEPObject::Invalidate>(this)),
                                   TZEPVertex3(Notify<&TZEPObject::Invalidate>(this))} {}

TZEPVertex3* TZEPLine::VectorAt(int number) {
    return &m_ends.at(static_cast<std::size_t>(number));
}

const TGLArrayd3* TZEPLine::VectorData(int number) const {
    return &m_ends.at(static_cast<std::size_t>(number)).Data();
}

void TZEPLine::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    min = max = m_ends[0].Data();
    MinBoundsd(min, m_ends[1].Data());
    MaxBoundsd(max, m_ends[1].Data());
}

bool TZEPLine::IsPlain() const {
    const bool hasPlainColor = HasOwnColor() && !HasLineTransparency() && MaterialIndex() < 0 &&
                               !Smooth() && !Selected() && !ExistingMaterial();
    return hasPlainColor && GetItemsCount() == 0 && typeid(*this) == typeid(TZEPLine) &&
           !(ExistingXForm() && ExistingXForm()->IsActive());
}

void TZEPLine::Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    if (!Visible()) return;
    TZEPDrawRun& run = scene.Frame().Run;
    const bool gathers = state == dsAllObjects && kind != dkSelect && !scene.QuickDraw() &&
                         SceneContext() == &scene && IsPlain();
    if (gathers && run.Gather(typeid(*this), LineAttributes(),
                              {m_ends[0].Data(), m_ends[1].Data(), GetColor()}))
        return;
    run.SendLines();
    TZEPLineShape::Draw(scene, state, kind);
}

void TZEPLine::DrawShape(GLenum, bool) {
    glBegin(GL_LINES);
    for (const TZEPVertex3& end : m_ends) glVertex3dv(end.Data().data());
    glEnd();
}

} // namespace ZEP
