#include "objects/Point.h"

#include "framework/Registry.h"

namespace ZEP {

namespace {

const TRegisterClass<TZEPPoint> Registered;

} // namespace

void TZEPPoint::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    min = max = FirstPoint();
}

void TZEPPoint::DrawSpecific(GLenum, bool) {
    glPushAttrib(GL_POINT_BIT);
    glPointSize(Width());
    if (Smooth()) glEnable(GL_POINT_SMOOTH);
    glBegin(GL_POINTS);
    glNormal3b(127, 0, 0);
    glVertex3dv(FirstPoint().data());
    glEnd();
    glPopAttrib();
}

} // namespace ZEP
