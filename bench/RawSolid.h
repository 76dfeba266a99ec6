#pragma once

#include <zep/scene/Geom.h>

#include <GL/gl.h>

#include <array>
#include <vector>

namespace ZEP {

/// A solid of four-cornered faces as a program would send it that knows nothing else: call by call,
/// in a display list, from arrays or from buffers. What OpenGL holds of it goes with the context.
class TRawSolid {
public:
    enum Way { Calls, List, Arrays, Buffers, WayCount };
    struct TVertex {
        std::array<float, 2> Place; ///< in a picture
        TGLArrayf3 Normal, Point;
    };
    using TVertexes = std::vector<TVertex>;

    static TVertexes Box();
    /// Of 20 by 20 cells, each row of corners with the normals of its cells.
    static TVertexes Sphere();

    /// \param textured  with the places in a picture
    TRawSolid(TVertexes vertexes, bool textured);

    void Begin(Way way) const;
    void Send(Way way) const;
    static void End();

private:
    void SendCalls() const;

    TVertexes m_vertexes;
    bool m_textured;
    GLuint m_list;
    GLuint m_buffer = 0;
};

} // namespace ZEP
