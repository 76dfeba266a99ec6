#include <zep/objects/Cone.h>

#include <zep/framework/Property.h>
#include <zep/objects/Quadric.h>
#include <zep/scene/Frame.h>

#include <algorithm>

namespace ZEP {

namespace {

const TRegisterObject<TZEPCone> RegisteredCone;

} // namespace

void TZEPCone::SetRadius1(double radius) {
    if (Change(m_radius1, SolidRadius(radius))) Invalidate(this);
}

void TZEPCone::SetRadius2(double radius) {
    if (Change(m_radius2, SolidRadius(radius))) Invalidate(this);
}

void TZEPCone::SetSlices(int slices) {
    if (Change(m_slices, CellCount(slices, 3))) Invalidate(this);
}

void TZEPCone::SetStacks(int stacks) {
    if (Change(m_stacks, CellCount(stacks))) Invalidate(this);
}

void TZEPCone::SetParts(TZEPConeParts parts) {
    if (Change(m_parts, parts)) Invalidate(this);
}

void TZEPCone::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    const double radius = std::max(m_radius1, m_radius2);
    min = {-radius, -radius, -0.5};
    max = {radius, radius, 0.5};
}

void TZEPCone::DrawSpecific(GLenum, bool draft) {
    TZEPDrawRun& run = DrawFrame().Run;
    run.OpenSurface();
    const TSharedLists::TSettings settings{
        m_radius1,           m_radius2, 1.0 * m_slices, 1.0 * m_stacks, 1.0 * m_parts.toInt(),
        Smooth() ? 1.0 : 0.0};
    m_lists.DrawInRow(run, typeid(*this), settings, draft, [&] { Send(draft); });
}

void TZEPCone::Send(bool draft) const {
    const TQuadric quadric(draft, Smooth());
    GLUquadric* q = quadric.Get();
    glPushMatrix();
    glTranslatef(0, 0, -0.5F);
    if (m_parts.testFlag(cpSide)) gluCylinder(q, m_radius2, m_radius1, 1, m_slices, m_stacks);
    gluQuadricOrientation(q, GLU_INSIDE);
    if (m_parts.testFlag(cpBottom) && m_radius2 > 0) gluDisk(q, 0, m_radius2, m_slices, 1);
    glTranslatef(0, 0, 1);
    gluQuadricOrientation(q, GLU_OUTSIDE);
    if (m_parts.testFlag(cpTop) && m_radius1 > 0) gluDisk(q, 0, m_radius1, m_slices, 1);
    glPopMatrix();
}

} // namespace ZEP
