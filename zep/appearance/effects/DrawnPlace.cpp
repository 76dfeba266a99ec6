#include <zep/appearance/effects/DrawnPlace.h>

#include <zep/scene/Frame.h>
#include <zep/scene/Object.h>

#include <utility>

namespace ZEP {

TZEPDrawnPlace::TZEPDrawnPlace(TZEPFrame& frame, const TZEPObject& object,
                               const TGLMatrixd4& drawnIn)
    : m_frame(frame), m_outer(std::exchange(frame.Place, this)), m_object(&object),
      m_drawnIn(drawnIn) {}

TZEPDrawnPlace::~TZEPDrawnPlace() {
    m_frame.Place = m_outer;
}

TGLMatrixd4 MatrixAsDrawn(const TZEPFrame& frame, const TZEPObject& object) {
    if (!frame.Place) return object.GetAbsoluteMatrix();
    TGLMatrixd4 matrix = idd;
    for (const TZEPObject* above = &object; above; above = above->Parent()) {
        MultMatrixd(above->GetMatrix(), TGLMatrixd4(matrix), matrix);
        if (above != frame.Place->m_object) continue;
        MultMatrixd(frame.Place->m_drawnIn, TGLMatrixd4(matrix), matrix);
        return matrix;
    }
    return object.GetAbsoluteMatrix();
}

} // namespace ZEP
