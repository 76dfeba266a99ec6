#include "tests/Cases.h"
#include "tests/gl/Feedback.h"
#include "tests/gl/OffscreenTest.h"
#include "tests/objects/TextScene.h"
#include <zep/scene/Vectors.h>

#include <cmath>
#include <numbers>
#include <set>

using namespace ZEP;

namespace {

/// A triangle of a drawn surface by the numbers of its corners, with what it encloses.
class TSolidSurface {
public:
    explicit TSolidSurface(const std::vector<TDrawnPolygon>& polygons) {
        for (const TDrawnPolygon& polygon : polygons)
            for (std::size_t i = 2; i < polygon.size(); ++i)
                Add(polygon[0], polygon[i - 1], polygon[i]);
    }

    double Area = 0;
    double Volume = 0;
    int Faces = 0;
    double WorstNormal = 1; ///< cosine between a corner's normal and the way its face looks
    TGLArrayd3 Min{1e9, 1e9, 1e9}, Max{-1e9, -1e9, -1e9};

    /// Two faces at an edge run along it in opposite directions, or one of them is turned over.
    [[nodiscard]] int EdgesRunTwice() const { return m_twice; }
    /// Edges that only one face has: none in a closed surface.
    [[nodiscard]] int OpenEdges() const {
        int open = 0;
        for (const auto& [from, to] : m_edges)
            if (!m_edges.contains({to, from})) ++open;
        return open;
    }

private:
    void Add(const TDrawnVertex& a, const TDrawnVertex& b, const TDrawnVertex& c) {
        const TGLArrayd3 p = b.Point - a.Point;
        const TGLArrayd3 q = c.Point - a.Point;
        const TGLArrayd3 normal = Cross(p, q);
        const double area = Length(normal) / 2;
        if (area < 1e-8) return;
        ++Faces;
        Area += area;
        Volume += Dotd(a.Point, normal) / 6;
        for (const TDrawnVertex* vertex : {&a, &b, &c}) {
            WorstNormal = std::fmin(WorstNormal, Dotd(vertex->Normal, normal) / (2 * area));
            MinBoundsd(Min, vertex->Point);
            MaxBoundsd(Max, vertex->Point);
        }
        const int numbers[]{Number(a.Point), Number(b.Point), Number(c.Point)};
        for (int i = 0; i < 3; ++i)
            if (!m_edges.insert({numbers[i], numbers[(i + 1) % 3]}).second) ++m_twice;
    }
    int Number(const TGLArrayd3& point) {
        for (std::size_t i = 0; i < m_points.size(); ++i) {
            if (const TGLArrayd3 d = m_points[i] - point; Dotd(d, d) < 1e-9)
                return static_cast<int>(i);
        }
        m_points.push_back(point);
        return static_cast<int>(m_points.size()) - 1;
    }

    std::vector<TGLArrayd3> m_points;
    std::set<std::pair<int, int>> m_edges;
    int m_twice = 0;
};

class SolidGeometryPixel : public OffscreenTest {};

} // namespace

/// Of the solid "A" of each scene: all faces wind the same way, counter-clockwise seen from
/// outside, and enclose the volume; normals look where the faces do, at worst by that cosine.
TEST_F(SolidGeometryPixel, SolidsAreClosedAndLookOutwardsWithinTheirBox) {
    ExpectCases("solids.txt", [](const TCase& c) {
        TTextScene scene("object S: TZEPScene " + c.Input + " end");
        TZEPObject& solid = scene.Object("A");
        const TSolidSurface surface(
            DrawnPolygons(4, [&] { solid.DrawSpecific(GL_FRONT_AND_BACK, false); }));
        TGLArrayd3 min, max;
        solid.GetSize(min, max);
        for (std::size_t k = 0; k < 3; ++k) {
            EXPECT_GE(surface.Min[k], min[k] - 1e-5) << c.Name;
            EXPECT_LE(surface.Max[k], max[k] + 1e-5) << c.Name;
        }
        return QString::asprintf("%d faces, %d edges open, %d run twice, volume %.4f, area %.4f, "
                                 "normals %.2f",
                                 surface.Faces, surface.OpenEdges(), surface.EdgesRunTwice(),
                                 surface.Volume, surface.Area, surface.WorstNormal)
            .toStdString();
    });
}

TEST_F(SolidGeometryPixel, TheTeapotsPartsLookOutwards) {
    struct Case {
        TZEPTeapotParts Part;
        int Sheets; ///< patches, all images counted
    };
    for (const Case& c : {Case{tpBody, 16}, {tpLid, 8}, {tpHandle, 4}, {tpSpout, 4}}) {
        SCOPED_TRACE(static_cast<int>(c.Part));
        TZEPTeapot teapot;
        teapot.SetParts(c.Part);
        teapot.SetSegments(12);
        const std::vector<TDrawnPolygon> polygons =
            DrawnPolygons(2, [&] { teapot.DrawSpecific(GL_FRONT_AND_BACK, false); });
        const TSolidSurface surface(polygons);
        EXPECT_EQ(surface.Faces, c.Sheets * 288);
        EXPECT_EQ(surface.EdgesRunTwice(), 0) << "all patches wind the same way";
        EXPECT_GT(surface.WorstNormal, 0.1) << "normals look where the faces do";
        // What lies farthest along an axis looks that way.
        for (const TDrawnPolygon& polygon : polygons)
            for (const TDrawnVertex& vertex : polygon)
                EXPECT_TRUE(vertex.Point[1] < surface.Max[1] - 1e-4 || vertex.Normal[1] > 0.5);
    }
}

TEST_F(SolidGeometryPixel, TheTeapotStandsUprightWithItsSpoutTowardsX) {
    TZEPTeapot teapot;
    teapot.SetSegments(8);
    const auto box = [&](TZEPTeapotPartSet parts) {
        teapot.SetParts(parts);
        return TSolidSurface(
            DrawnPolygons(2, [&] { teapot.DrawSpecific(GL_FRONT_AND_BACK, false); }));
    };
    EXPECT_GT(box(tpSpout).Min[0], 0.4);
    EXPECT_LT(box(tpHandle).Max[0], -0.35);
    EXPECT_NEAR(box(tpLid).Max[2], 0.6, 1e-4);
    EXPECT_NEAR(box(tpBody).Min[2], -0.1875, 1e-4);
    EXPECT_NEAR(box(tpBody).Max[1], 0.5, 1e-3);
}
