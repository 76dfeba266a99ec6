#include <zep/objects/Polygon.h>

#include "tests/gl/Feedback.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/scene/Vectors.h>

#include <GL/glu.h>

#include <cmath>
#include <limits>
#include <numbers>

using namespace ZEP;

namespace {

using PolygonPixel = OffscreenTest;
using TPoints = std::vector<TGLArrayd3>;

/// The area of what is drawn, in a plane of any direction.
double Area(const std::vector<TDrawnPolygon>& polygons) {
    double area = 0;
    for (const TDrawnPolygon& polygon : polygons)
        for (std::size_t i = 2; i < polygon.size(); ++i)
            area += Length(Cross(polygon[i - 1].Point - polygon[0].Point,
                                 polygon[i].Point - polygon[0].Point)) /
                    2;
    return area;
}

double DrawnArea(const TPoints& points, GLenum face) {
    TZEPPolygon polygon;
    polygon.SetUseDisplayList(false);
    for (const TGLArrayd3& point : points) polygon.Vertexes()->Add()->SetPoint(point);
    return Area(DrawnPolygons(10, [&] { polygon.DrawSpecific(face, false); }));
}

TPoints Star() {
    TPoints points;
    for (int i = 0; i < 10; ++i) {
        const double angle = i * std::numbers::pi / 5;
        const double radius = i % 2 == 0 ? 4 : 1;
        points.push_back({radius * std::cos(angle), radius * std::sin(angle), 0});
    }
    return points;
}

constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinite = std::numeric_limits<double>::infinity();

} // namespace

TEST_F(PolygonPixel, AConcaveOneFillsJustItsArea) {
    const double star = 20 * std::sin(std::numbers::pi / 5); // ten triangles, radii 4 and 1
    const struct {
        const char* Name;
        TPoints Points;
        double Area;
    } cases[]{
        {"triangle", {{0, 0, 0}, {4, 0, 0}, {0, 3, 0}}, 6},
        {"clockwise", {{0, 0, 0}, {0, 3, 0}, {4, 0, 0}}, 6},
        {"L", {{0, 0, 0}, {4, 0, 0}, {4, 1, 0}, {1, 1, 0}, {1, 4, 0}, {0, 4, 0}}, 7},
        {"upright L", {{0, 0, 0}, {4, 0, 0}, {4, 0, 1}, {1, 0, 1}, {1, 0, 4}, {0, 0, 4}}, 7},
        {"U",
         {{0, 0, 0}, {3, 0, 0}, {3, 3, 0}, {2, 3, 0}, {2, 1, 0}, {1, 1, 0}, {1, 3, 0}, {0, 3, 0}},
         7},
        {"star", Star(), star},
        {"all on a line", {{0, 0, 0}, {1, 1, 0}, {3, 3, 0}, {2, 2, 0}}, 0},
        {"all in one place", {{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, 0},
        {"a point twice", {{0, 0, 0}, {4, 0, 0}, {4, 0, 0}, {0, 3, 0}}, 6},
        {"no number", {{0, 0, 0}, {4, Nan, 0}, {0, 3, 0}, {1, 1, 0}}, 0},
        {"endless", {{0, 0, 0}, {Infinite, 0, 0}, {0, 3, 0}}, 0},
        {"too far for GLU", {{0, 0, 0}, {1e200, 0, 0}, {0, 3, 0}}, 0}};
    for (const auto& [name, points, area] : cases) {
        EXPECT_NEAR(DrawnArea(points, GL_FRONT), area, 1e-4) << name;
        EXPECT_NEAR(DrawnArea(points, GL_BACK), area, 1e-4) << name;
        EXPECT_NEAR(DrawnArea(points, GL_FRONT_AND_BACK), 2 * area, 1e-4) << name;
    }
}

TEST_F(PolygonPixel, TwoSidesOfACrossingAreFilledOneEach) {
    // The halves of a bow tie wind differently: by order and its reverse each is filled once.
    const TPoints bow{{0, 0, 0}, {2, 2, 0}, {2, 0, 0}, {0, 4, 0}};
    const double both = DrawnArea(bow, GL_FRONT_AND_BACK);
    EXPECT_NEAR(DrawnArea(bow, GL_FRONT) + DrawnArea(bow, GL_BACK), both, 1e-4);
    EXPECT_GT(both, 1);
}

TEST_F(PolygonPixel, ContoursByHandMakeHoles) {
    TZEPPolygon polygon;
    TPoints outer{{0, 0, 0}, {5, 0, 0}, {5, 5, 0}, {0, 5, 0}};
    TPoints hole{{1, 1, 0}, {1, 3, 0}, {3, 3, 0}, {3, 1, 0}};
    for (const TGLArrayd3& point : outer) polygon.Vertexes()->Add()->SetPoint(point);
    const auto send = [](TPoints& points) {
        TZEPPolygon::Begin_Contour();
        for (TGLArrayd3& point : points)
            gluTessVertex(TZEPPolygon::Tessellator(), point.data(), point.data());
        TZEPPolygon::End_Contour();
    };
    const auto drawn = DrawnPolygons(10, [&] {
        gluTessProperty(TZEPPolygon::Tessellator(), GLU_TESS_WINDING_RULE,
                        GLU_TESS_WINDING_POSITIVE);
        polygon.Begin_Polygon();
        send(outer);
        send(hole);
        polygon.End_Polygon();
    });
    EXPECT_NEAR(Area(drawn), 21, 1e-4);
}
