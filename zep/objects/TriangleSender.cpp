#include <zep/objects/TriangleSender.h>

namespace ZEP {

// NOLINTNEXTLINE(*-member-init): what is not sent is not written either
TArraySender::TArraySender(bool textured) : m_textured(textured) {
    const TVertex& first = m_vertexes.front();
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glVertexPointer(3, GL_FLOAT, sizeof(TVertex), first.Point.data());
    glNormalPointer(GL_FLOAT, sizeof(TVertex), first.Normal.data());
    if (!textured) return;
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, sizeof(TVertex), first.TexCoord.data());
}

TArraySender::~TArraySender() {
    Flush();
    glPopClientAttrib();
}

void TArraySender::Flush() {
    if (m_count > 0) glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(m_count));
    m_count = 0;
}

} // namespace ZEP
