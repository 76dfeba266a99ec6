#pragma once

#include <zep/gl/ClientArrays.h>
#include <zep/scene/Geom.h>
#include <zep/scene/Vectors.h>

#include <GL/gl.h>

#include <array>
#include <cstddef>

namespace ZEP {

/// Sends corners in immediate mode.
class TImmediateSender {
public:
    explicit TImmediateSender(GLenum primitive = GL_TRIANGLES) { glBegin(primitive); }
    ~TImmediateSender() { glEnd(); }
    TImmediateSender(const TImmediateSender&) = delete;
    TImmediateSender& operator=(const TImmediateSender&) = delete;

    static void Normal(const TGLArrayf3& normal) { glNormal3fv(normal.data()); }
    static void TexCoord(double s, double t) { glTexCoord2d(s, t); }
    static void Vertex(const TGLArrayd3& point) { glVertex3dv(point.data()); }
};

/// Sends the same triangles some hundreds at a time, as vertex arrays: where there are many, a
/// fifth quicker than one call for each number (bench/MeshBench.cpp shows it). What is given stays
/// the same: OpenGL holds coordinates as floats in either case.
class TArraySender {
public:
    /// \param textured  texture coordinates are given
    explicit TArraySender(bool textured);
    ~TArraySender();
    TArraySender(const TArraySender&) = delete;
    TArraySender& operator=(const TArraySender&) = delete;

    void Normal(const TGLArrayf3& normal) { m_normal = normal; }
    void TexCoord(double s, double t) {
        m_texCoord = {static_cast<float>(s), static_cast<float>(t)};
    }
    void Vertex(const TGLArrayd3& point) {
        TVertex& vertex = m_vertexes[m_count++];
        vertex.Normal = m_normal;
        vertex.Point = ToFloats(point);
        if (m_textured) vertex.TexCoord = m_texCoord;
        if (m_count == m_vertexes.size()) Flush();
    }

private:
    static constexpr std::size_t Corners = 3 * std::size_t{1024}; // whole triangles
    using TTexCoord = std::array<float, 2>;
    struct TVertex {
        TGLArrayf3 Normal;
        TGLArrayf3 Point;
        TTexCoord TexCoord;
    };

    void Flush();

    TClientArraysScope m_arrays;
    bool m_textured;
    TGLArrayf3 m_normal{};
    TTexCoord m_texCoord{};
    std::size_t m_count = 0;
    std::array<TVertex, Corners> m_vertexes; // those that wait are set
};

} // namespace ZEP
