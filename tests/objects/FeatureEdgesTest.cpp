#include <zep/objects/FeatureEdges.h>
#include <zep/objects/Mesh.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace ZEP {
namespace {

using TFaces = std::vector<std::array<int, 3>>;

/// Two squares side by side that share an edge, the second one raised; each of two triangles.
struct TRoof {
    explicit TRoof(const TFaces& faces, double raised) {
        const TGLArrayd3 places[] = {
            {-1, 0, 0},     {-1, 1, 0},     {0, 0, 0},
            {0, 1, 0},      {0, 0, 0},      {0, 1, 0},
            {1, 0, raised}, {1, 1, raised}, {std::numeric_limits<double>::quiet_NaN(), 0, 0}};
        for (const TGLArrayd3& place : places) {
            TZEPVertex3TexCI* vertex = Mesh.Vertexes()->Add();
            for (int k = 0; k < 3; ++k) vertex->SetData(k, place[static_cast<std::size_t>(k)]);
        }
        for (const std::array<int, 3>& corners : faces) {
            TZEPFace3CI* face = Mesh.Faces()->Add();
            face->SetA(corners[0]);
            face->SetB(corners[1]);
            face->SetC(corners[2]);
        }
    }
    TZEPMesh Mesh;
};

TEST(FeatureEdges, AreSharpWhereTheFormIsAndSmoothWithin) {
    const TFaces roof = {{0, 2, 1}, {1, 2, 3}, {4, 6, 5}, {5, 6, 7}};
    const TFaces turned = {{0, 2, 1}, {1, 2, 3}, {4, 5, 6}, {5, 6, 7}};
    TFaces three = roof;
    three.push_back({2, 3, 0});
    const TFaces broken = {{0, 2, 1}, {1, 2, 99}, {0, 0, 1}, {0, 2, 8}, {-1, 2, 1}};
    struct TRow {
        const char* Name;
        TFaces Faces;
        double Raised;
        std::size_t Sharp, Smooth, Turned;
    };
    const TRow rows[] = {{"flat, with a seam", roof, 0, 6, 3, 0},
                         {"bent by 17 degrees", roof, 0.3, 6, 3, 0},
                         {"bent by 45 degrees", roof, 1, 7, 2, 0},
                         {"one goes the other way round", turned, 0, 6, 3, 2},
                         {"three faces at one edge", three, 0, 8, 2, 0},
                         {"broken faces", broken, 0, 3, 0, 0}};
    for (const TRow& row : rows) {
        TRoof mesh(row.Faces, row.Raised);
        const TZEPFeatureEdges edges = FeatureEdges(mesh.Mesh);
        std::size_t turnedCount = 0;
        for (const TZEPFeatureEdges::TSmooth& edge : edges.Smooth)
            turnedCount += edge.SameWay ? 0 : 1;
        EXPECT_EQ(edges.Sharp.size(), row.Sharp) << row.Name;
        EXPECT_EQ(edges.Smooth.size(), row.Smooth) << row.Name;
        EXPECT_EQ(turnedCount, row.Turned) << row.Name;
    }
}

} // namespace
} // namespace ZEP
