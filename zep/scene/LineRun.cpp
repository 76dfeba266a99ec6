#include <zep/scene/LineRun.h>

#include <zep/gl/ClientArrays.h>
#include <zep/scene/Vectors.h>

#include <GL/gl.h>

namespace ZEP {

namespace {

bool Is(GLenum state, GLint value) {
    GLint present = 0;
    glGetIntegerv(state, &present);
    return present == value;
}

/// While it lives, what is sent has the ambient and diffuse colours that its colours say.
class TColorsAsMaterial {
public:
    TColorsAsMaterial() {
        glGetFloatv(GL_CURRENT_COLOR, m_color.data());
        glEnable(GL_COLOR_MATERIAL);
    }
    ~TColorsAsMaterial() {
        glDisable(GL_COLOR_MATERIAL);
        glColor4fv(m_color.data());
    }
    TColorsAsMaterial(const TColorsAsMaterial&) = delete;
    TColorsAsMaterial& operator=(const TColorsAsMaterial&) = delete;

private:
    TGLColor m_color{};
};

} // namespace

// Without light a line has the current colour, and a display list would keep what is asked now.
bool TZEPLineRun::PaysOff() const {
    return m_lines.size() >= Fewest && glIsEnabled(GL_LIGHTING) &&
           !glIsEnabled(GL_COLOR_MATERIAL) && Is(GL_COLOR_MATERIAL_FACE, GL_FRONT_AND_BACK) &&
           Is(GL_COLOR_MATERIAL_PARAMETER, GL_AMBIENT_AND_DIFFUSE) && Is(GL_LIST_INDEX, 0) &&
           Is(GL_RENDER_MODE, GL_RENDER);
}

void TZEPLineRun::SendArrays() {
    m_vertexes.clear();
    for (const TLine& line : m_lines) {
        const TGLColor color = ToGLColor(line.Color, 0);
        m_vertexes.push_back({color, ToFloats(line.From)});
        m_vertexes.push_back({color, ToFloats(line.To)});
    }
    const TClientArraysScope arrays{GL_VERTEX_ARRAY, GL_COLOR_ARRAY};
    const TColorsAsMaterial colors;
    glVertexPointer(3, GL_FLOAT, sizeof(TVertex), m_vertexes.front().Point.data());
    glColorPointer(4, GL_FLOAT, sizeof(TVertex), m_vertexes.front().Color.data());
    glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(m_vertexes.size()));
}

} // namespace ZEP
