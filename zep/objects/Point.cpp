#include <zep/objects/Point.h>

#include <zep/scene/Frame.h>

namespace ZEP {

namespace {

const TRegisterObject<TZEPPoint> RegisteredPoint;

} // namespace

void TZEPPoint::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    min = max = FirstPoint();
}

void TZEPPoint::DrawSpecific(GLenum, bool) {
    const TZEPDrawRun::AttributeScope attributes(
        DrawFrame().Run, TZEPPointAttributes{.Width = Width(), .Smooth = Smooth()});
    glBegin(GL_POINTS);
    glNormal3b(127, 0, 0);
    glVertex3dv(FirstPoint().data());
    glEnd();
}

} // namespace ZEP
