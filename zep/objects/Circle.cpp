#include <zep/objects/Circle.h>

#include <zep/framework/Property.h>
#include <zep/objects/CirclePoints.h>
#include <zep/objects/SegmentCount.h>

#include <numbers>

namespace ZEP {

namespace {

const TRegisterObject<TZEPCircle> RegisteredCircle;

} // namespace

void TZEPCircle::SetSegments(int segments) {
    if (Change(m_segments, SegmentCount(segments))) Invalidate(this);
}

void TZEPCircle::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    min = {-0.5, -0.5, 0};
    max = {0.5, 0.5, 0};
}

void TZEPCircle::DrawShape(GLenum, bool) {
    glBegin(GL_LINE_LOOP);
    glNormal3b(127, 0, 0);
    ForCirclePoints(0, 2 * std::numbers::pi / m_segments, m_segments, [](double x, double y) {
        glVertex3f(static_cast<float>(x), static_cast<float>(y), 0);
    });
    glEnd();
}

} // namespace ZEP
