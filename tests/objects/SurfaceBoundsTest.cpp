#include "tests/objects/InvalidationCounter.h"
#include <zep/objects/Mesh.h>
#include <zep/objects/Polygon.h>
#include <zep/scene/Vertex3.h>

#include <gmock/gmock.h>

using namespace ZEP;
using testing::ElementsAre;

namespace {

using TPoints = std::vector<TGLArrayd3>;

template <class T>
void Fill(T& surface, const TPoints& points) {
    surface.Vertexes()->Clear();
    for (const TGLArrayd3& point : points) surface.Vertexes()->Add()->SetPoint(point);
}

template <class T>
class SurfaceBounds : public testing::Test {};
using TSurfaces = testing::Types<TZEPPolygon, TZEPMesh>;
TYPED_TEST_SUITE(SurfaceBounds, TSurfaces);

} // namespace

TYPED_TEST(SurfaceBounds, FollowTheVertexes) {
    const struct {
        TPoints Points;
        TGLArrayd3 Min, Max, Center; // the first point does not count in the sum
        double Radius;
    } cases[]{{{}, {}, {}, {}, 0},
              {{{5, 5, 5}}, {}, {}, {}, 0},
              {{{1, 2, 3}, {4, 0, -6}}, {1, 0, -6}, {4, 2, 3}, {2, 0, -3}, 4.5},
              {{{9, 0, 0}, {3, 0, 0}, {3, 6, 3}}, {3, 0, 0}, {9, 6, 3}, {2, 2, 1}, 3}};
    TypeParam surface;
    for (const auto& [points, min, max, center, radius] : cases) {
        Fill(surface, points);
        EXPECT_EQ(surface.GetMin(), min);
        EXPECT_EQ(surface.GetMax(), max);
        EXPECT_EQ(surface.GetCenter(), center);
        EXPECT_EQ(surface.GetRadius(), radius);
    }
    surface.Vertexes()->Item(1)->SetX(-2);
    EXPECT_EQ(surface.GetMin()[0], -2) << "kept bounds are out of date";
}

TEST(PolygonInvalidation, IsPassedOnFromThreeVertexesOn) {
    InvalidationCounter counter;
    TZEPPolygon polygon;
    counter.Watch(polygon);
    Fill(polygon, {{0, 0, 0}, {1, 0, 0}});
    polygon.SetConcave(false);
    EXPECT_EQ(counter.Count, 0);
    polygon.Vertexes()->Add();
    EXPECT_EQ(counter.Count, 1);
    polygon.SetConcave(false);
    EXPECT_EQ(counter.Count, 1) << "nothing has changed";
    polygon.SetParentComponent(nullptr);
}

TEST(PolygonMirror, IsSpannedByTheFirstThreeVertexes) {
    TZEPPolygon polygon;
    Fill(polygon, {{1, 0, 0}, {0, 1, 0}});
    EXPECT_THAT(polygon.MirrorPoints(), ElementsAre(zero3d, zero3d, zero3d));
    Fill(polygon, {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {9, 9, 9}});
    EXPECT_THAT(polygon.MirrorPoints(),
                ElementsAre(TGLArrayd3{1, 0, 0}, TGLArrayd3{0, 1, 0}, TGLArrayd3{0, 0, 1}));
}

TEST(MeshInvalidation, HearsOfFacesVertexesAndItsNormal) {
    InvalidationCounter counter;
    TZEPMesh mesh;
    counter.Watch(mesh);
    mesh.Faces()->Add()->SetMaterialIndex(3);
    EXPECT_EQ(counter.Count, 2);
    mesh.Vertexes()->Add()->SetNormal({0, 0, 1});
    EXPECT_EQ(counter.Count, 4);
    mesh.Normal()->SetX(1);
    EXPECT_EQ(counter.Count, 5);
    mesh.SetColorFaces(true);
    EXPECT_EQ(counter.Count, 5) << "nothing has changed";
    mesh.SetParentComponent(nullptr);
}
