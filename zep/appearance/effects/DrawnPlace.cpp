#include <zep/appearance/effects/DrawnPlace.h>

#include <zep/scene/Object.h>

namespace ZEP {

const TZEPDrawnPlace* TZEPDrawnPlace::s_current = nullptr;

TZEPDrawnPlace::TZEPDrawnPlace(const TZEPObject& object, const TGLMatrixd4& frame)
    : m_object(&object), m_frame(frame) {
    s_current = this;
}

TGLMatrixd4 TZEPDrawnPlace::MatrixOf(const TZEPObject& object) {
    if (!s_current) return object.GetAbsoluteMatrix();
    TGLMatrixd4 matrix = idd;
    for (const TZEPObject* above = &object; above; above = above->Parent()) {
        MultMatrixd(above->GetMatrix(), TGLMatrixd4(matrix), matrix);
        if (above != s_current->m_object) continue;
        MultMatrixd(s_current->m_frame, TGLMatrixd4(matrix), matrix);
        return matrix;
    }
    return object.GetAbsoluteMatrix();
}

} // namespace ZEP
