#include <zep/objects/Polyhedra.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Vectors.h>

#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

const TRegisterObject<TZEPOctahedron> RegisteredOctahedron;
const TRegisterObject<TZEPIcosahedron> RegisteredIcosahedron;
const TRegisterObject<TZEPDodecahedron> RegisteredDodecahedron;

template <std::size_t Count>
using TPoints = std::array<TGLArrayf3, Count>;
/// Numbers of the corners of each face, counter-clockwise seen from outside.
template <std::size_t Count, std::size_t Size>
using TFaces = std::array<std::array<unsigned char, Size>, Count>;

// The corners of an icosahedron are those of three rectangles whose sides are in the golden ratio,
// one in each coordinate plane; those of a dodecahedron are the same with the ratio squared, and
// the corners of a cube (Euclid, Elements XIII, 16 and 17). A face joins the corners that are an
// edge length apart.
constexpr float Golden = std::numbers::phi_v<float>;

/// Adds three rectangles that reach to `a` along one axis and to `b` along the next.
template <std::size_t Count>
constexpr void AddRectangles(TPoints<Count>& points, std::size_t first, float a, float b) {
    constexpr float Signs[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (const auto& [s, t] : Signs) {
            points[first][(axis + 1) % 3] = s * a;
            points[first][(axis + 2) % 3] = t * b;
            ++first;
        }
}

constexpr TPoints<12> IcosahedronPoints() {
    TPoints<12> points{};
    AddRectangles(points, 0, 0.5F / Golden, 0.5F);
    return points;
}

constexpr TPoints<20> DodecahedronPoints() {
    TPoints<20> points{{{-1, -1, -1},
                        {1, -1, -1},
                        {1, 1, -1},
                        {-1, 1, -1},
                        {-1, -1, 1},
                        {1, -1, 1},
                        {1, 1, 1},
                        {-1, 1, 1}}};
    AddRectangles(points, 8, 1 / Golden, Golden);
    return points;
}

constexpr TPoints<6> Octahedron{
    {{0.5F, 0, 0}, {-0.5F, 0, 0}, {0, 0.5F, 0}, {0, -0.5F, 0}, {0, 0, 0.5F}, {0, 0, -0.5F}}};
constexpr TFaces<8, 3> OctahedronFaces{
    {{0, 2, 4}, {2, 1, 4}, {1, 3, 4}, {3, 0, 4}, {2, 0, 5}, {1, 2, 5}, {3, 1, 5}, {0, 3, 5}}};

constexpr TPoints<12> Icosahedron = IcosahedronPoints();
constexpr TFaces<20, 3> IcosahedronFaces{
    {{0, 4, 1},   {0, 1, 7}, {0, 8, 4}, {0, 7, 9},  {0, 9, 8},  {1, 4, 11},  {1, 10, 7},
     {1, 11, 10}, {2, 5, 3}, {2, 3, 6}, {2, 11, 5}, {2, 6, 10}, {2, 10, 11}, {3, 5, 8},
     {3, 9, 6},   {3, 8, 9}, {4, 8, 5}, {4, 5, 11}, {6, 9, 7},  {6, 7, 10}}};

constexpr TPoints<20> Dodecahedron = DodecahedronPoints();
constexpr TFaces<12, 5> DodecahedronFaces{{{0, 8, 1, 17, 16},
                                           {2, 9, 3, 19, 18},
                                           {6, 18, 19, 7, 10},
                                           {4, 16, 17, 5, 11},
                                           {0, 12, 3, 9, 8},
                                           {4, 11, 10, 7, 13},
                                           {5, 14, 6, 10, 11},
                                           {1, 8, 9, 2, 15},
                                           {0, 16, 4, 13, 12},
                                           {1, 15, 14, 5, 17},
                                           {2, 18, 6, 14, 15},
                                           {3, 12, 13, 7, 19}}};
/// Brings the golden ratio, how far the dodecahedron's table reaches, within the unit box.
constexpr float DodecahedronScale = 0.3F;

/// The corners of a face lie on a circle in the picture.
void SendTextureCorner(std::size_t corner, std::size_t corners) {
    const double angle =
        2 * std::numbers::pi * static_cast<double>(corner) / static_cast<double>(corners);
    glTexCoord2d(0.5 + std::sin(angle) / 2, 0.5 + std::cos(angle) / 2);
}

template <std::size_t Count, std::size_t FaceCount, std::size_t Size>
void SendFaces(const TPoints<Count>& points, const TFaces<FaceCount, Size>& faces, GLenum mode,
               bool textured) {
    for (const auto& face : faces) {
        const TGLArrayf3& second = points[face[1]];
        TGLArrayf3 normal;
        CrossProdf(second - points[face[0]], points[face[2]] - second, normal);
        glBegin(mode);
        glNormal3fv(normal.data());
        for (std::size_t i = 0; i < Size; ++i) {
            if (textured) SendTextureCorner(i, Size);
            glVertex3fv(points[face[i]].data());
        }
        glEnd();
    }
}

} // namespace

// Places in a picture do no harm where there is none.
template <class Send>
void TZEPPolyhedron::DrawFaces(bool draft, Send&& send) {
    TZEPDrawRun& run = DrawFrame().Run;
    run.OpenSurface();
    const bool textured = !draft && (run.Waits() || HasTexture());
    m_lists.DrawInRow(run, typeid(*this), {}, draft, [&] { send(textured); });
}

void TZEPOctahedron::DrawSpecific(GLenum, bool draft) {
    DrawFaces(draft, [draft](bool textured) {
        SendFaces(Octahedron, OctahedronFaces, draft ? GL_LINE_LOOP : GL_TRIANGLES, textured);
    });
}

void TZEPIcosahedron::DrawSpecific(GLenum, bool draft) {
    DrawFaces(draft, [draft](bool textured) {
        SendFaces(Icosahedron, IcosahedronFaces, draft ? GL_LINE_LOOP : GL_TRIANGLES, textured);
    });
}

void TZEPDodecahedron::DrawSpecific(GLenum, bool draft) {
    DrawFaces(draft, [draft](bool textured) {
        glPushMatrix();
        glScalef(DodecahedronScale, DodecahedronScale, DodecahedronScale);
        SendFaces(Dodecahedron, DodecahedronFaces, draft ? GL_LINE_LOOP : GL_TRIANGLE_FAN,
                  textured);
        glPopMatrix();
    });
}

} // namespace ZEP
