#include <zep/objects/Point.h>

#include <zep/scene/Frame.h>

namespace ZEP {

namespace {

const TRegisterObject<TZEPPoint> RegisteredPoint;

} // namespace

TZEPPoint::TZEPPoint(TComponent* owner)
    : TZEPShape(owner), m_place(Notify<&TZEPObject::Invalidate>(this)) {}

TZEPVertex3* TZEPPoint::VectorAt(int number) {
    return number == 0 ? &m_place : TZEPShape::VectorAt(number);
}

const TGLArrayd3* TZEPPoint::VectorData(int number) const {
    return number == 0 ? &m_place.Data() : TZEPShape::VectorData(number);
}

void TZEPPoint::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    min = max = m_place.Data();
}

void TZEPPoint::DrawSpecific(GLenum, bool) {
    const TZEPDrawRun::AttributeScope attributes(
        DrawFrame().Run, TZEPPointAttributes{.Width = Width(), .Smooth = Smooth()});
    glBegin(GL_POINTS);
    glNormal3b(127, 0, 0);
    glVertex3dv(m_place.Data().data());
    glEnd();
}

} // namespace ZEP
