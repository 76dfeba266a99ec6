#include <zep/objects/LineSet.h>

#include <zep/gl/Scopes.h>
#include <zep/objects/VertexBounds.h>

namespace ZEP {

namespace {

const TRegisterObject<TZEPLineSet> RegisteredLineSet;

} // namespace

TZEPLineSet::TZEPLineSet(TComponent* owner) : TZEPLineShape(owner) {
    m_vertexes.RegisterObject(this);
}

void TZEPLineSet::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    GetVertexBounds(m_vertexes, min, max);
}

void TZEPLineSet::DrawShape(GLenum, bool) {
    const TPrimitiveScope lines(GL_LINES);
    const int end = m_vertexes.Count() / 2 * 2;
    for (int i = 0; i < end; ++i) glVertex3dv(m_vertexes[i].Data().data());
}

} // namespace ZEP
