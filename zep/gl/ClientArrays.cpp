#include <zep/gl/ClientArrays.h>

namespace ZEP {

void PushClientArrays(std::initializer_list<GLenum> arrays) {
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    for (const GLenum array :
         std::initializer_list<GLenum>{GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_COLOR_ARRAY,
                                       GL_INDEX_ARRAY, GL_TEXTURE_COORD_ARRAY, GL_EDGE_FLAG_ARRAY})
        glDisableClientState(array);
    for (const GLenum array : arrays) glEnableClientState(array);
}

} // namespace ZEP
