#define GL_GLEXT_PROTOTYPES
#include "bench/RawSolid.h"

#include <GL/glext.h>

#include <cmath>
#include <numbers>
#include <utility>

namespace ZEP {

namespace {

constexpr std::array<TGLArrayf3, 6> Normals{
    {{0, 0, 1}, {0, 0, -1}, {1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}}};
constexpr std::array<std::array<int, 4>, 6> Faces{
    {{4, 5, 6, 7}, {1, 0, 3, 2}, {5, 1, 2, 6}, {0, 4, 7, 3}, {3, 7, 6, 2}, {4, 0, 1, 5}}};
constexpr std::array<std::array<float, 2>, 4> Places{{{0, 0}, {1, 0}, {1, 1}, {0, 1}}};
constexpr int Cells = 20;

TGLArrayf3 Corner(int i) {
    return {i % 4 == 1 || i % 4 == 2 ? 0.5F : -0.5F, i % 4 >= 2 ? 0.5F : -0.5F,
            i >= 4 ? 0.5F : -0.5F};
}

TGLArrayf3 OnSphere(double radius, double slice, double stack) {
    const double turn = 2 * std::numbers::pi * slice / Cells;
    const double down = std::numbers::pi * stack / Cells;
    const double out = radius * std::sin(down);
    return {static_cast<float>(out * std::sin(turn)), static_cast<float>(out * std::cos(turn)),
            static_cast<float>(radius * std::cos(down))};
}

} // namespace

TRawSolid::TVertexes TRawSolid::Box() {
    TVertexes vertexes;
    for (std::size_t face = 0; face < 6; ++face)
        for (std::size_t i = 0; i < 4; ++i)
            vertexes.push_back({Places[i], Normals[face], Corner(Faces[face][i])});
    return vertexes;
}

TRawSolid::TVertexes TRawSolid::Sphere() {
    TVertexes vertexes;
    const auto add = [&](int slice, int stack, int edge) {
        vertexes.push_back({{}, OnSphere(1, slice - 0.5, stack + 0.5), OnSphere(0.5, slice, edge)});
    };
    for (int stack = 0; stack < Cells; ++stack)
        for (int slice = 0; slice < Cells; ++slice) {
            add(slice + 1, stack, stack + 1);
            add(slice, stack, stack + 1);
            add(slice, stack, stack);
            add(slice + 1, stack, stack);
        }
    return vertexes;
}

TRawSolid::TRawSolid(TVertexes vertexes, bool textured)
    : m_vertexes(std::move(vertexes)), m_textured(textured), m_list(glGenLists(1)) {
    glNewList(m_list, GL_COMPILE);
    SendCalls();
    glEndList();
    glGenBuffers(1, &m_buffer);
    glBindBuffer(GL_ARRAY_BUFFER, m_buffer);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(m_vertexes.size() * sizeof(TVertex)),
                 m_vertexes.data(), GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void TRawSolid::Begin(Way way) const {
    if (way != Arrays && way != Buffers) return;
    if (way == Buffers) glBindBuffer(GL_ARRAY_BUFFER, m_buffer);
    const char* first = way == Buffers ? nullptr : reinterpret_cast<const char*>(m_vertexes.data());
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glVertexPointer(3, GL_FLOAT, sizeof(TVertex), first + offsetof(TVertex, Point));
    glNormalPointer(GL_FLOAT, sizeof(TVertex), first + offsetof(TVertex, Normal));
    if (!m_textured) return;
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, sizeof(TVertex), first + offsetof(TVertex, Place));
}

void TRawSolid::Send(Way way) const {
    if (way == List) return glCallList(m_list);
    if (way == Calls) return SendCalls();
    glDrawArrays(GL_QUADS, 0, static_cast<GLsizei>(m_vertexes.size()));
}

void TRawSolid::End() {
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    for (const int array : {GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_TEXTURE_COORD_ARRAY})
        glDisableClientState(static_cast<GLenum>(array));
}

void TRawSolid::SendCalls() const {
    glBegin(GL_QUADS);
    for (const TVertex& vertex : m_vertexes) {
        if (m_textured) glTexCoord2fv(vertex.Place.data());
        glNormal3fv(vertex.Normal.data());
        glVertex3fv(vertex.Point.data());
    }
    glEnd();
}

} // namespace ZEP
