#include <zep/objects/FeatureEdges.h>

#include <zep/objects/JoinedPlaces.h>
#include <zep/scene/Vectors.h>

#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

/// An edge of one face.
struct TSideOfFace {
    std::array<std::size_t, 2> Places; ///< in order of their numbers
    std::array<int, 2> Vertexes;
    int Face;
    bool IsReversed; ///< the face goes from the second place to the first
};

class TSides {
public:
    explicit TSides(TZEPMesh& mesh) : m_mesh(mesh), m_places(mesh) {
        const auto count = static_cast<std::size_t>(mesh.Faces()->Count());
        m_sides.reserve(3 * count);
        m_normals.resize(count);
        for (int i = 0; i < mesh.Faces()->Count(); ++i) AddFace(i);
        std::ranges::sort(m_sides, {}, &TSideOfFace::Places);
    }

    [[nodiscard]] const std::vector<TSideOfFace>& All() const { return m_sides; }
    /// Cosine of the angle between the faces of two sides of one edge, however they go round.
    [[nodiscard]] double Cosine(const TSideOfFace& a, const TSideOfFace& b) const {
        const double cosine = Dotd(NormalOf(a), NormalOf(b));
        return a.IsReversed == b.IsReversed ? -cosine : cosine;
    }

private:
    void AddFace(int index) {
        const auto& vertexes = *m_mesh.Vertexes();
        const TZEPFace3CI& face = (*m_mesh.Faces())[index];
        const std::array<int, 3> corners{face.A(), face.B(), face.C()};
        const auto exists = [&](int corner) { return corner >= 0 && corner < vertexes.Count(); };
        if (!std::ranges::all_of(corners, exists)) return;
        const TGLArrayd3& a = vertexes[corners[0]].Data();
        const TGLArrayd3 normal =
            Unit(Cross(vertexes[corners[1]].Data() - a, vertexes[corners[2]].Data() - a));
        if (!(Dotd(normal, normal) > 0)) return;
        m_normals[static_cast<std::size_t>(index)] = normal;
        for (std::size_t k = 0; k < 3; ++k) AddSide({corners[k], corners[(k + 1) % 3]}, index);
    }

    void AddSide(const std::array<int, 2>& ends, int face) {
        const std::size_t from = m_places.Of[static_cast<std::size_t>(ends[0])];
        const std::size_t to = m_places.Of[static_cast<std::size_t>(ends[1])];
        m_sides.push_back({{std::min(from, to), std::max(from, to)}, ends, face, to < from});
    }

    [[nodiscard]] const TGLArrayd3& NormalOf(const TSideOfFace& side) const {
        return m_normals[static_cast<std::size_t>(side.Face)];
    }

    TZEPMesh& m_mesh;
    TJoinedPlaces m_places;
    std::vector<TSideOfFace> m_sides;
    std::vector<TGLArrayd3> m_normals; ///< of the faces
};

} // namespace

TZEPFeatureEdges FeatureEdges(TZEPMesh& mesh, double angle) {
    const TSides all(mesh);
    const std::vector<TSideOfFace>& sides = all.All();
    const double least = std::cos(angle * std::numbers::pi / 180);
    TZEPFeatureEdges edges;
    for (std::size_t i = 0, end = 0; i < sides.size(); i = end) {
        const TSideOfFace& side = sides[i];
        while (end < sides.size() && sides[end].Places == side.Places) ++end;
        const TSideOfFace* other = end == i + 2 ? &sides[i + 1] : nullptr;
        if (!other || all.Cosine(side, *other) <= least)
            edges.Sharp.push_back(side.Vertexes);
        else
            edges.Smooth.push_back(
                {side.Vertexes, {side.Face, other->Face}, side.IsReversed != other->IsReversed});
    }
    return edges;
}

} // namespace ZEP
