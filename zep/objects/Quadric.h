#pragma once

#include <GL/glu.h>

namespace ZEP {

/// A quadric of GLU, set up as the solids draw theirs.
class TQuadric {
public:
    /// \param draft  lines without texture coordinates
    TQuadric(bool draft, bool smooth) : m_quadric(gluNewQuadric()) {
        gluQuadricDrawStyle(m_quadric, draft ? GLU_LINE : GLU_FILL);
        if (!draft) gluQuadricTexture(m_quadric, GL_TRUE);
        if (!smooth) gluQuadricNormals(m_quadric, GLU_FLAT);
    }
    ~TQuadric() { gluDeleteQuadric(m_quadric); }
    TQuadric(const TQuadric&) = delete;
    TQuadric& operator=(const TQuadric&) = delete;

    [[nodiscard]] GLUquadric* Get() const { return m_quadric; }

private:
    GLUquadric* m_quadric;
};

} // namespace ZEP
