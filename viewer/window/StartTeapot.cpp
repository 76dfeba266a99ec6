#include "viewer/window/StartTeapot.h"

#include <zep/objects/Mesh.h>
#include <zep/objects/TeapotPatches.h>
#include <zep/scene/Vectors.h>

#include <algorithm>

namespace ZEP {

namespace {

constexpr int Segments = 7; // of each side of a patch
constexpr double Scale = 0.25;
constexpr double Middle = 0.75; // of the table's heights
constexpr double Nudge = 1e-3;  // from the sides, some of which are a single point

using TWeights = std::array<double, 4>;

/// Bernstein's polynomials of the third degree, and their derivatives.
TWeights WeightsAt(double t) {
    const double s = 1 - t;
    return {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
}

TWeights SlopesAt(double t) {
    const double s = 1 - t;
    return {-3 * s * s, 3 * s * (s - 2 * t), 3 * t * (2 * s - t), 3 * t * t};
}

TGLArrayd3 Sum(const TBezierPatch& patch, const TWeights& columns, const TWeights& rows) {
    TGLArrayd3 sum{};
    for (std::size_t i = 0; i < 16; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            sum[k] += columns[i % 4] * rows[i / 4] * static_cast<double>(patch[i][k]);
    return sum;
}

TGLArrayf3 NormalAt(const TBezierPatch& patch, double u, double v) {
    u = std::clamp(u, Nudge, 1 - Nudge);
    v = std::clamp(v, Nudge, 1 - Nudge);
    TGLArrayd3 normal;
    CrossProdd(Sum(patch, SlopesAt(u), WeightsAt(v)), Sum(patch, WeightsAt(u), SlopesAt(v)),
               normal);
    Normalized(normal);
    return ToFloats(normal);
}

void AddVertex(TZEPMesh& mesh, const TBezierPatch& patch, double u, double v) {
    TGLArrayd3 place = Sum(patch, WeightsAt(u), WeightsAt(v));
    place[2] -= Middle;
    for (double& part : place) part *= Scale;
    TZEPVertex3TexCI* vertex = mesh.Vertexes()->Add();
    vertex->SetPoint(place);
    vertex->SetNormal(NormalAt(patch, u, v));
}

void AddFace(TZEPMesh& mesh, int a, int b, int c) {
    TZEPFace3CI* face = mesh.Faces()->Add();
    face->SetA(a);
    face->SetB(b);
    face->SetC(c);
}

void AddPatch(TZEPMesh& mesh, const TBezierPatch& patch) {
    const int first = mesh.Vertexes()->Count();
    for (int j = 0; j <= Segments; ++j)
        for (int i = 0; i <= Segments; ++i)
            AddVertex(mesh, patch, 1.0 * i / Segments, 1.0 * j / Segments);
    for (int j = 0; j < Segments; ++j)
        for (int i = 0; i < Segments; ++i) {
            const int corner = first + j * (Segments + 1) + i;
            const int below = corner + Segments + 1;
            AddFace(mesh, corner, corner + 1, below + 1);
            AddFace(mesh, corner, below + 1, below);
        }
}

} // namespace

void MakeTeapot(TZEPMesh& mesh) {
    mesh.SetColorFaces(false);
    mesh.SetSmooth(true);
    for (const TTeapotPatch& patch : TeapotPatches())
        for (int image = 0; image < patch.Images; ++image)
            AddPatch(mesh, TeapotImage(patch, image));
}

} // namespace ZEP
