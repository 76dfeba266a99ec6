#pragma once

#include <zep/scene/Geom.h>
#include <zep/scene/Vectors.h>

#include <GL/gl.h>

#include <array>
#include <cmath>

namespace ZEP {

/// A point of a surface that a grid samples.
struct TGridPoint {
    TGLArrayd3 Point{};
    TGLArrayd3 Normal{}; ///< of any length above 0
    double S = 0, T = 0; ///< texture coordinates
    std::array<float, 4> Color{};
};

/// How a grid is sent.
struct TGridStyle {
    bool Draft = false;    ///< the outlines of the cells only
    bool Smooth = false;   ///< each point's own normal; else the normal of each cell
    bool Textured = false; ///< with texture coordinates
    bool Colored = false;  ///< with colours
};

inline void SendGridPoint(const TGridPoint& point, const TGridStyle& style) {
    if (style.Smooth) glNormal3dv(point.Normal.data());
    if (style.Textured) glTexCoord2d(point.S, point.T);
    if (style.Colored) glColor4fv(point.Color.data());
    glVertex3dv(point.Point.data());
}

/// One cell; `corners` run counter-clockwise. A cell with a corner that is no number is left out.
inline void SendCell(const std::array<TGridPoint, 4>& corners, const TGridStyle& style) {
    const TGLArrayd3 p = corners[2].Point - corners[0].Point;
    const TGLArrayd3 q = corners[3].Point - corners[1].Point;
    if (!IsFinite(p) || !IsFinite(q)) return;
    if (style.Draft) glBegin(GL_LINE_LOOP);
    if (!style.Smooth) {
        // The diagonals' normal also serves a cell that is not flat or has fallen to a triangle.
        const TGLArrayd3 normal = Unit(Cross(p, q));
        glNormal3dv(normal.data());
    }
    for (const TGridPoint& corner : corners) SendGridPoint(corner, style);
    if (style.Draft) glEnd();
}

/// Sends `columns` by `rows` cells of a surface. `at(i, j)` gives the point at column i (0 to
/// `columns`) and row j; with columns to the right and rows upwards one looks at its front.
template <class PointAt>
void SendGrid(int columns, int rows, const TGridStyle& style, PointAt&& at) {
    if (!style.Draft) glBegin(GL_QUADS);
    for (int j = 0; j < rows; ++j) {
        TGridPoint lower = at(0, j);
        TGridPoint upper = at(0, j + 1);
        for (int i = 1; i <= columns; ++i) {
            const TGridPoint nextLower = at(i, j);
            const TGridPoint nextUpper = at(i, j + 1);
            SendCell({lower, nextLower, nextUpper, upper}, style);
            lower = nextLower;
            upper = nextUpper;
        }
    }
    if (!style.Draft) glEnd();
}

} // namespace ZEP
