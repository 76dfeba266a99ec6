#include <zep/objects/Mesh.h>
#include <zep/scene/Vectors.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

namespace ZEP {
namespace {

struct TPlainBox {
    TGLArrayd3 Min, Max;

    [[nodiscard]] bool Meets(const TGLArrayd3& min, const TGLArrayd3& max) const {
        for (std::size_t k = 0; k < 3; ++k)
            if (max[k] < Min[k] || min[k] > Max[k]) return false;
        return true;
    }
};

TPlainBox BoxOf(TZEPMesh& mesh, int number) {
    const TZEPFace3CI& face = (*mesh.Faces())[number];
    const auto at = [&](int corner) { return (*mesh.Vertexes())[corner].Data(); };
    TPlainBox box{at(face.A()), at(face.A())};
    for (const TGLArrayd3& point : {at(face.B()), at(face.C())})
        for (std::size_t k = 0; k < 3; ++k) {
            box.Min[k] = std::min(box.Min[k], point[k]);
            box.Max[k] = std::max(box.Max[k], point[k]);
        }
    return box;
}

/// Triangles about places of a row, each moved a little, and two that name no vertex.
void FillRow(TZEPMesh& mesh, int count) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> away(-1, 1);
    mesh.Vertexes()->AddEach(static_cast<std::size_t>(3 * count),
                             [&](TZEPVertex3TexCI& vertex, std::size_t i) {
                                 vertex.SetPointQuietly({static_cast<double>(i / 3) + away(random),
                                                         away(random), away(random)});
                             });
    mesh.Faces()->AddEach(static_cast<std::size_t>(count), [](TZEPFace3CI& face, std::size_t i) {
        const int first = 3 * static_cast<int>(i);
        face.SetCornersQuietly(first, first + 1, first + 2);
    });
    mesh.Faces()->Add()->SetCornersQuietly(0, 1, 3 * count);
    mesh.Faces()->Add()->SetCornersQuietly(-1, 1, 2);
}

TEST(MeshNear, AllFacesThatReachIntoABoxAreVisitedAndFewOthers) {
    constexpr int count = 1000;
    TZEPMesh mesh;
    FillRow(mesh, count);
    const auto visited = [&](const TPlainBox& wanted) {
        std::set<int> numbers;
        mesh.ForEachFaceIn([&](const auto& min, const auto& max) { return wanted.Meets(min, max); },
                           [&](int face) { numbers.insert(face); });
        return numbers;
    };
    const auto check = [&](const TPlainBox& wanted, std::size_t most) {
        const std::set<int> numbers = visited(wanted);
        EXPECT_LE(numbers.size(), most);
        for (int i = 0; i < count; ++i) {
            const TPlainBox box = BoxOf(mesh, i);
            if (wanted.Meets(box.Min, box.Max)) EXPECT_TRUE(numbers.contains(i)) << i;
        }
    };
    check({{500, -1, -1}, {502, 1, 1}}, 100);
    check({{-9, -1, -1}, {2, 0, 0}}, 100);
    check({{0, 5, 0}, {999, 6, 1}}, 0);
    check({{-1e9, -1e9, -1e9}, {1e9, 1e9, 1e9}}, count);
    (*mesh.Vertexes())[3 * 500].SetPoint({200, 50, 0});
    check({{199, 49, -1}, {201, 51, 1}}, 100);
    EXPECT_TRUE(visited({{199, 49, -1}, {201, 51, 1}}).contains(500)) << "as it was before";
    mesh.Faces()->Clear();
    EXPECT_TRUE(visited({{-1e9, -1e9, -1e9}, {1e9, 1e9, 1e9}}).empty());
}

} // namespace
} // namespace ZEP
