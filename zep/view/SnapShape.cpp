#include <zep/view/SnapShape.h>

#include <zep/objects/Arc.h>
#include <zep/objects/Box.h>
#include <zep/objects/Circle.h>
#include <zep/objects/Cone.h>
#include <zep/objects/DashedPolyline.h>
#include <zep/objects/Line.h>
#include <zep/objects/LineSet.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polygon.h>
#include <zep/objects/Polyline.h>
#include <zep/objects/Sphere.h>
#include <zep/objects/Torus.h>
#include <zep/scene/Vectors.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

using enum TZEPSnapKind;

constexpr double Turn = 2 * std::numbers::pi;
constexpr double RadiansPerDegree = std::numbers::pi / 180;

/// Of one object.
class TShaping {
public:
    TShaping(TZEPObject& object, const TSnapBox& near)
        : m_object(object), m_near(near), m_place(object.GetAbsoluteMatrix()) {}

    [[nodiscard]] TSnapShape Shape() {
        if (auto* line = qobject_cast<TZEPLine*>(&m_object)) {
            AddChain({line->P1()->Data(), line->P2()->Data()}, false);
        } else if (auto* polyline = qobject_cast<TZEPPolyline*>(&m_object)) {
            if (!polyline->Smooth()) AddChain(PointsOf(*polyline->Vertexes()), polyline->Closed());
        } else if (auto* lines = qobject_cast<TZEPLineSet*>(&m_object)) {
            AddPairs(PointsOf(*lines->Vertexes()));
        } else if (auto* polygon = qobject_cast<TZEPPolygon*>(&m_object)) {
            AddChain(PointsOf(*polygon->Vertexes()), true);
            m_shape.IsSurface = true;
        } else if (auto* point = qobject_cast<TZEPPoint*>(&m_object)) {
            AddPoint(Vertex, point->P()->Data());
        } else if (const auto* arc = qobject_cast<TZEPArc*>(&m_object)) {
            AddArc(arc->StartAngle(), arc->EndAngle());
        } else if (qobject_cast<TZEPCircle*>(&m_object)) {
            AddCircle(0, 0.5);
        } else {
            AddSurface();
        }
        return std::move(m_shape);
    }

private:
    template <class Vertexes>
    static std::vector<TGLArrayd3> PointsOf(const Vertexes& vertexes) {
        std::vector<TGLArrayd3> points;
        for (int i = 0; i < vertexes.Count(); ++i) points.push_back(vertexes[i].Data());
        return points;
    }

    [[nodiscard]] TGLArrayd3 Absolute(TGLArrayd3 point) const {
        Xformd(m_place, point);
        return point;
    }
    void AddPoint(TZEPSnapKind kind, const TGLArrayd3& point) {
        m_shape.Points.emplace_back(kind, Absolute(point));
    }
    void AddEdge(const TGLArrayd3& from, const TGLArrayd3& to) {
        m_shape.Edges.emplace_back(Absolute(from), Absolute(to));
    }
    void AddChain(const std::vector<TGLArrayd3>& points, bool closed) {
        for (std::size_t i = 0; i < points.size(); ++i) {
            const bool isEnd = !closed && (i == 0 || i + 1 == points.size());
            AddPoint(isEnd ? End : Vertex, points[i]);
            if (i > 0) AddEdge(points[i - 1], points[i]);
        }
        if (closed && points.size() > 2) AddEdge(points.back(), points.front());
    }
    void AddPairs(const std::vector<TGLArrayd3>& points) {
        for (std::size_t i = 1; i < points.size(); i += 2)
            AddChain({points[i - 1], points[i]}, false);
    }
    TSnapCircle& AddCircle(double z, double radius) {
        const TGLArrayd3 center = Absolute({0, 0, z});
        TSnapCircle circle{center, Absolute({radius, 0, z}) - center,
                           Absolute({0, radius, z}) - center};
        circle.Sweep = Turn;
        return m_shape.Circles.emplace_back(circle);
    }
    void AddArc(double start, double end) {
        TSnapCircle& circle = AddCircle(0, 0.5);
        const double sweep = end - start;
        circle.From = start * RadiansPerDegree;
        circle.Sweep = (sweep > 0 ? sweep : sweep + 360) * RadiansPerDegree;
        circle.IsWhole = circle.Sweep >= Turn;
        if (circle.IsWhole) return;
        m_shape.Points.emplace_back(End, circle.At(circle.From));
        m_shape.Points.emplace_back(End, circle.At(circle.From + circle.Sweep));
        m_shape.Points.emplace_back(MiddlePoint, circle.At(circle.From + circle.Sweep / 2));
    }
    void AddSurface() {
        m_shape.IsSurface = true;
        if (auto* mesh = qobject_cast<TZEPMesh*>(&m_object)) return AddMesh(*mesh);
        if (qobject_cast<TZEPBox*>(&m_object)) return AddBox();
        if (qobject_cast<TZEPSphere*>(&m_object) || qobject_cast<TZEPTorus*>(&m_object))
            return AddPoint(Centre, zero3d);
        if (const auto* cone = qobject_cast<TZEPCone*>(&m_object)) {
            AddCircle(0.5, cone->Radius1());
            AddCircle(-0.5, cone->Radius2());
        }
    }
    void AddBox() {
        const auto corner = [](unsigned bits) {
            return TGLArrayd3{bits & 1U ? 0.5 : -0.5, bits & 2U ? 0.5 : -0.5,
                              bits & 4U ? 0.5 : -0.5};
        };
        for (unsigned bits = 0; bits < 8; ++bits) {
            AddPoint(Vertex, corner(bits));
            for (const unsigned axis : {1U, 2U, 4U})
                if ((bits & axis) == 0) AddEdge(corner(bits), corner(bits | axis));
        }
    }
    void AddMesh(TZEPMesh& mesh) {
        const auto at = [&](int corner) { return Absolute((*mesh.Vertexes())[corner].Data()); };
        const auto reaches = [this](const TGLArrayd3& min, const TGLArrayd3& max) {
            return ReachesNear(min, max);
        };
        mesh.ForEachFaceIn(reaches, [&](int i) {
            const TZEPFace3CI& face = (*mesh.Faces())[i];
            AddFace(at(face.A()), at(face.B()), at(face.C()));
        });
    }
    /// \return  a box of the object's frame meets what is near, but for the rounding of its corners
    [[nodiscard]] bool ReachesNear(const TGLArrayd3& min, const TGLArrayd3& max) const {
        constexpr double rounding = 1e-6; // of a coordinate
        const TGLArrayd3 middle = Absolute((min + max) / 2);
        TGLArrayd3 half{};
        for (std::size_t k = 0; k < 3; ++k) {
            half[k] = rounding * std::abs(middle[k]);
            for (std::size_t i = 0; i < 3; ++i)
                half[k] += std::abs(m_place[i][k]) *
                           ((max[i] - min[i]) / 2 +
                            rounding * std::max(std::abs(min[i]), std::abs(max[i])));
        }
        return m_near.Meets(middle, half);
    }
    void AddFace(const TGLArrayd3& a, const TGLArrayd3& b, const TGLArrayd3& c) {
        TGLArrayd3 middle{}, half{};
        for (std::size_t k = 0; k < 3; ++k) {
            const auto [min, max] = std::minmax({a[k], b[k], c[k]});
            middle[k] = (min + max) / 2;
            half[k] = (max - min) / 2;
        }
        if (!m_near.Meets(middle, half)) return;
        for (const auto& [from, to] : {std::pair(a, b), {b, c}, {c, a}}) {
            m_shape.Points.emplace_back(Vertex, from);
            m_shape.Edges.emplace_back(from, to);
        }
    }

    TZEPObject& m_object;
    const TSnapBox& m_near;
    TGLMatrixd4 m_place;
    TSnapShape m_shape;
};

} // namespace

bool TSnapBox::Meets(const TGLArrayd3& middle, const TGLArrayd3& half) const {
    for (std::size_t k = 0; k < 3; ++k)
        if (middle[k] + half[k] < Min[k] || middle[k] - half[k] > Max[k]) return false;
    return Length(Cross(middle - Eye, Sight)) <= Reach + Length(half);
}

TGLArrayd3 TSnapCircle::At(double angle) const {
    return Center + std::cos(angle) * U + std::sin(angle) * V;
}

bool TSnapCircle::Holds(double angle) const {
    if (IsWhole) return true;
    const double turned = std::fmod(angle - From, Turn);
    return (turned < 0 ? turned + Turn : turned) <= Sweep;
}

std::optional<double> TSnapCircle::Radius() const {
    const double radius = Length(U);
    const double error = 1e-6 * radius;
    const bool isRound =
        std::abs(Length(V) - radius) < error && std::abs(Dotd(U, V)) < error * radius;
    return isRound && radius > 0 && std::isfinite(radius) ? std::optional(radius) : std::nullopt;
}

TSnapShape TSnapShape::Of(TZEPObject& object, const TSnapBox& near) {
    return TShaping(object, near).Shape();
}

} // namespace ZEP
