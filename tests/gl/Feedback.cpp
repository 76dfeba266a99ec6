#include "tests/gl/Feedback.h"

#include <GL/gl.h>

#include <array>

namespace ZEP {

namespace {

constexpr int FloatsOfVertex = 12; // window x y z w, colour, texture coordinates

/// Generated texture coordinates come only with a texture.
class TexelTexture {
public:
    TexelTexture() {
        constexpr std::array<GLubyte, 4> texel{};
        glGenTextures(1, &m_name);
        glBindTexture(GL_TEXTURE_2D, m_name);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, texel.data());
        glEnable(GL_TEXTURE_2D);
    }
    ~TexelTexture() { glDeleteTextures(1, &m_name); }
    TexelTexture(const TexelTexture&) = delete;
    TexelTexture& operator=(const TexelTexture&) = delete;

private:
    GLuint m_name = 0;
};

/// Texture coordinates are the normals; clip space is `reach` in all directions.
void SetUp(double reach) {
    constexpr std::array Coordinates{GL_S, GL_T, GL_R};
    constexpr std::array Switches{GL_TEXTURE_GEN_S, GL_TEXTURE_GEN_T, GL_TEXTURE_GEN_R};
    for (std::size_t i = 0; i < 3; ++i) {
        glTexGeni(static_cast<GLenum>(Coordinates[i]), GL_TEXTURE_GEN_MODE, GL_NORMAL_MAP);
        glEnable(static_cast<GLenum>(Switches[i]));
    }
    glDisable(GL_CULL_FACE);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(-reach, reach, -reach, reach, -reach, reach);
    glMatrixMode(GL_MODELVIEW);
}

void TakeBack() {
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopAttrib();
}

std::vector<GLfloat> Record(const std::function<void()>& draw) {
    for (std::size_t size = 1 << 16;; size *= 4) {
        std::vector<GLfloat> buffer(size);
        glFeedbackBuffer(static_cast<GLsizei>(size), GL_4D_COLOR_TEXTURE, buffer.data());
        glRenderMode(GL_FEEDBACK);
        draw();
        const GLint count = glRenderMode(GL_RENDER);
        if (count < 0) continue;
        buffer.resize(static_cast<std::size_t>(count));
        return buffer;
    }
}

TDrawnVertex Vertex(const GLfloat* values, double reach, const std::array<double, 4>& viewport) {
    const double x = values[0], y = values[1], z = values[2];
    return {.Point = {((x - viewport[0]) / viewport[2] * 2 - 1) * reach,
                      ((y - viewport[1]) / viewport[3] * 2 - 1) * reach, (1 - 2 * z) * reach},
            .Normal = {values[8], values[9], values[10]}};
}

} // namespace

std::vector<TDrawnPolygon> DrawnPolygons(double reach, const std::function<void()>& draw) {
    glPushAttrib(GL_ENABLE_BIT | GL_TEXTURE_BIT | GL_TRANSFORM_BIT);
    const TexelTexture texture;
    SetUp(reach);
    const std::vector<GLfloat> buffer = Record(draw);
    TakeBack();
    std::array<double, 4> viewport{};
    glGetDoublev(GL_VIEWPORT, viewport.data());
    std::vector<TDrawnPolygon> polygons;
    for (std::size_t at = 0; at + 1 < buffer.size();) {
        if (buffer[at] != static_cast<float>(GL_POLYGON_TOKEN)) return {}; // no polygon
        TDrawnPolygon polygon(static_cast<std::size_t>(buffer[at + 1]));
        at += 2;
        for (TDrawnVertex& vertex : polygon) {
            vertex = Vertex(&buffer[at], reach, viewport);
            at += FloatsOfVertex;
        }
        polygons.push_back(std::move(polygon));
    }
    return polygons;
}

} // namespace ZEP
