#include <zep/objects/TriangleSender.h>

#include <utility>

namespace ZEP {

// NOLINTNEXTLINE(*-member-init): what is not sent is not written either
TArraySender::TArraySender(bool textured)
    : m_arrays{GL_VERTEX_ARRAY, GL_NORMAL_ARRAY}, m_textured(textured) {
    const TVertex& first = m_vertexes.front();
    glVertexPointer(3, GL_FLOAT, sizeof(TVertex), first.Point.data());
    glNormalPointer(GL_FLOAT, sizeof(TVertex), first.Normal.data());
    if (!textured) return;
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, sizeof(TVertex), first.TexCoord.data());
}

TArraySender::~TArraySender() {
    Flush();
}

void TArraySender::Flush() {
    if (m_count == 0) return;
    glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(m_count));
    // As after single calls, whatever a driver makes of arrays.
    const TVertex& last = m_vertexes[std::exchange(m_count, 0) - 1];
    glNormal3fv(last.Normal.data());
    if (m_textured) glTexCoord2fv(last.TexCoord.data());
}

} // namespace ZEP
