#include <zep/objects/Line.h>

namespace ZEP {

namespace {

const TRegisterObject<TZEPLine> RegisteredLine;

} // namespace

void TZEPLine::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    min = max = FirstPoint();
    MinBoundsd(min, SecondPoint());
    MaxBoundsd(max, SecondPoint());
}

void TZEPLine::DrawShape(GLenum, bool) {
    glBegin(GL_LINES);
    glVertex3dv(FirstPoint().data());
    glVertex3dv(SecondPoint().data());
    glEnd();
}

} // namespace ZEP
