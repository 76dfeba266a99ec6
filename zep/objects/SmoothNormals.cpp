#include <zep/objects/SmoothNormals.h>

#include <zep/objects/JoinedPlaces.h>
#include <zep/scene/Vectors.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace ZEP {

namespace {

constexpr std::size_t MostNeighbours = 200; // around a corner; each would look at all others

/// Faces around each place, and what their normals add up to.
class TNormals {
public:
    TNormals(TZEPMesh& mesh, double angle)
        : m_mesh(mesh), m_least(std::cos(angle * std::numbers::pi / 180)), m_places(mesh) {
        ListFaces();
        ListNeighbours();
    }

    [[nodiscard]] std::vector<TGLArrayf3> All() const {
        std::vector<TGLArrayf3> normals(3 * m_faces.size());
        ForEachCorner([&](std::size_t corner, std::size_t place) {
            normals[corner] = ToFloats(NormalAt(m_faces[corner / 3], place));
        });
        return normals;
    }

private:
    struct TSide {
        bool Exists = false;       // all its vertexes do
        TGLArrayd3 Unit{}, Area{}; // its normal, and the same as long as the face is large
    };

    [[nodiscard]] TGLArrayd3 NormalAt(const TSide& face, std::size_t place) const {
        const std::size_t first = m_first[place];
        const std::size_t end = m_first[place + 1];
        if (end - first > MostNeighbours) return face.Unit;
        TGLArrayd3 sum{};
        for (std::size_t i = first; i < end; ++i)
            if (const TSide& other = m_faces[m_around[i]]; Dotd(face.Unit, other.Unit) >= m_least)
                sum += other.Area;
        const double length = std::sqrt(Dotd(sum, sum));
        return length > 0 ? sum / length : face.Unit;
    }

    void ListFaces() {
        const auto& vertexes = *m_mesh.Vertexes();
        const auto count = static_cast<unsigned>(vertexes.Count());
        for (int i = 0; i < m_mesh.Faces()->Count(); ++i) {
            const std::array<int, 3> corners = CornersOf(i);
            TSide& side = m_faces.emplace_back();
            side.Exists = std::ranges::all_of(
                corners, [count](int c) { return static_cast<unsigned>(c) < count; });
            if (!side.Exists) continue;
            const TGLArrayd3& a = vertexes[corners[0]].Data();
            side.Area = Cross(vertexes[corners[1]].Data() - a, vertexes[corners[2]].Data() - a);
            side.Unit = Unit(side.Area);
        }
    }

    void ListNeighbours() {
        m_first.assign(m_places.Last + 2, 0);
        ForEachCorner([&](std::size_t, std::size_t place) { ++m_first[place + 1]; });
        std::partial_sum(m_first.begin(), m_first.end(), m_first.begin());
        m_around.resize(m_first.back());
        std::vector<std::size_t> next(m_first.begin(), m_first.end() - 1);
        ForEachCorner(
            [&](std::size_t corner, std::size_t place) { m_around[next[place]++] = corner / 3; });
    }

    [[nodiscard]] std::array<int, 3> CornersOf(int face) const {
        const TZEPFace3CI& corners = (*m_mesh.Faces())[face];
        return {corners.A(), corners.B(), corners.C()};
    }

    template <class Visit>
    void ForEachCorner(Visit&& visit) const {
        for (std::size_t i = 0; i < m_faces.size(); ++i) {
            if (!m_faces[i].Exists) continue;
            const std::array<int, 3> corners = CornersOf(static_cast<int>(i));
            for (std::size_t k = 0; k < 3; ++k)
                visit(3 * i + k, m_places.Of[static_cast<std::size_t>(corners[k])]);
        }
    }

    TZEPMesh& m_mesh;
    double m_least; // cosine of the angle
    TJoinedPlaces m_places;
    std::vector<TSide> m_faces;
    std::vector<std::size_t> m_first;  // of a place, in `m_around`
    std::vector<std::size_t> m_around; // faces
};

} // namespace

std::vector<TGLArrayf3> SmoothNormals(TZEPMesh& mesh, double angle) {
    return TNormals(mesh, angle).All();
}

} // namespace ZEP
