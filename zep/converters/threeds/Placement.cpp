#include <zep/converters/threeds/Placement.h>

#include <zep/objects/Mesh.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/ViewVolume.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr double FloatError = 1e-4; // of a mesh's size: what files round to
constexpr double FlatError = 1e-9;  // of a frame whose axes lie in a plane

TGLArrayd3 AxisOf(const TGLMatrixd4& frame, std::size_t index) {
    return {frame[index][0], frame[index][1], frame[index][2]};
}

/// Above 0 where right stays right.
double Determinant(const TGLMatrixd4& frame) {
    return Dotd(AxisOf(frame, 0), Cross(AxisOf(frame, 1), AxisOf(frame, 2)));
}

/// None where the axes lie in a plane or are no numbers.
std::optional<TGLMatrixd4> InverseOf(const TGLMatrixd4& frame) {
    const double volume = Determinant(frame);
    const double longest =
        Length(AxisOf(frame, 0)) * Length(AxisOf(frame, 1)) * Length(AxisOf(frame, 2));
    if (!(std::abs(volume) > FlatError * longest)) return {};
    TGLMatrixd4 inverse = idd;
    for (std::size_t i = 0; i < 3; ++i) {
        const TGLArrayd3 column =
            (1 / volume) * Cross(AxisOf(frame, (i + 1) % 3), AxisOf(frame, (i + 2) % 3));
        for (std::size_t j = 0; j < 3; ++j) inverse[j][i] = column[j];
    }
    const TGLArrayd3 origin = AxisOf(frame, 3);
    const auto& [x, y, z] = origin;
    Translated(-x, -y, -z, inverse);
    return inverse;
}

/// What leads from the points of the file to where they belong.
std::optional<TGLMatrixd4> WayOf(const TGLMatrixd4& own, const std::optional<TGLMatrixd4>& place) {
    const std::optional<TGLMatrixd4> toOwn = InverseOf(own);
    if (!toOwn) return {};
    TGLMatrixd4 way = place.value_or(own);
    if (Determinant(own) < 0) Scaled(-1, 1, 1, way);
    MultMatrixd(way, *toOwn, way);
    const bool isFinite = std::ranges::all_of(way, [](const auto& row) {
        return std::ranges::all_of(row, [](double value) { return std::isfinite(value); });
    });
    return isFinite ? std::optional(way) : std::nullopt;
}

/// Whether it moves a point of the mesh by more than rounding does.
bool Moves(const TGLMatrixd4& way, TZEPMesh& mesh) {
    const auto& vertexes = *mesh.Vertexes();
    TZEPBlockBox box;
    for (int i = 0; i < vertexes.Count(); ++i) box.Add(vertexes[i].Data());
    const double least = FloatError * Length(box.Max - box.Min);
    for (unsigned corner = 0; corner < 8; ++corner) {
        TGLArrayd3 point{};
        for (std::size_t k = 0; k < 3; ++k) point[k] = corner >> k & 1 ? box.Max[k] : box.Min[k];
        TGLArrayd3 moved = point;
        Xformd(way, moved);
        if (Length(moved - point) > least) return true;
    }
    return false;
}

void Move(const TGLMatrixd4& way, TZEPMesh& mesh) {
    auto& vertexes = *mesh.Vertexes();
    auto& faces = *mesh.Faces();
    vertexes.BeginUpdate();
    for (int i = 0; i < vertexes.Count(); ++i) {
        TGLArrayd3 point = vertexes[i].Data();
        Xformd(way, point);
        vertexes[i].SetPointQuietly(point);
    }
    // Outside stays outside.
    if (Determinant(way) < 0)
        for (int i = 0; i < faces.Count(); ++i)
            faces[i].SetCornersQuietly(faces[i].A(), faces[i].C(), faces[i].B());
    vertexes.Invalidate(&vertexes);
    vertexes.EndUpdate();
}

} // namespace

void TF3DSPlacement::Add(TZEPMesh& mesh, const TGLMatrixd4& own) {
    m_meshes.push_back({&mesh, mesh.Ident(), own});
}

void TF3DSPlacement::Apply(const TF3DSNodes& nodes) const {
    for (const auto& [mesh, name, own] : m_meshes) {
        if (!mesh || mesh->Vertexes()->Count() == 0) continue;
        const auto way = WayOf(own, nodes.PlaceOf(name));
        if (way && Moves(*way, *mesh)) Move(*way, *mesh);
    }
}

} // namespace ZEP
