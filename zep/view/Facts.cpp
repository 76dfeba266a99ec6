#include <zep/view/Facts.h>

#include <zep/objects/Arc.h>
#include <zep/objects/Circle.h>
#include <zep/objects/DashedPolyline.h>
#include <zep/objects/Label.h>
#include <zep/objects/Line.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Node.h>
#include <zep/objects/Polygon.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/Vertex3.h>
#include <zep/view/Actor.h>

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

constexpr double Same = 1e-6; ///< of the size
constexpr double HalfTurn = 180;

using TPlaces = std::vector<TGLArrayd3>;

TGLArrayd3 AbsoluteOf(const TZEPObject& object, const TGLArrayd3& point) {
    TGLArrayd3 result;
    object.ConvertToAbsolute(point, result);
    return result;
}

template <class TList>
TPlaces PlacesOf(const TZEPObject& object, TList& vertexes) {
    TPlaces places;
    for (int i = 0; i < vertexes.Count(); ++i)
        places.push_back(AbsoluteOf(object, vertexes[i].Data()));
    return places;
}

/// 0 for what is no piece of a circle.
double SweepOf(const TZEPObject& object) {
    if (qobject_cast<const TZEPCircle*>(&object)) return 2 * HalfTurn;
    const auto* arc = qobject_cast<const TZEPArc*>(&object);
    if (!arc) return 0;
    const double sweep = arc->EndAngle() - arc->StartAngle();
    return sweep > 0 ? sweep : sweep + 2 * HalfTurn;
}

std::optional<double> RadiusOf(const TZEPObject& object) {
    if (SweepOf(object) == 0) return {};
    const TGLArrayd3 middle = AbsoluteOf(object, zero3d);
    const double radius = Distance(PointOnCircle(object, 0), middle);
    const double other = Distance(PointOnCircle(object, HalfTurn / 2), middle);
    return std::abs(other - radius) < Same * radius ? std::optional(radius) : std::nullopt;
}

double LengthOfChain(const TPlaces& places, bool closed) {
    double length = 0;
    for (std::size_t i = 1; i < places.size(); ++i) length += Distance(places[i - 1], places[i]);
    return closed && places.size() > 1 ? length + Distance(places.back(), places.front()) : length;
}

/// None of what does not lie in a plane.
std::optional<double> AreaOfChain(const TPlaces& places) {
    if (places.size() < 3) return {};
    TGLArrayd3 twice{};
    double size = 0;
    for (std::size_t i = 2; i < places.size(); ++i)
        twice += Cross(places[i - 1] - places[0], places[i] - places[0]);
    for (const TGLArrayd3& place : places) size = std::max(size, Distance(place, places[0]));
    const TGLArrayd3 normal = Unit(twice);
    for (const TGLArrayd3& place : places)
        if (!(std::abs(Dotd(place - places[0], normal)) <= Same * size)) return {};
    return Length(twice) / 2;
}

double AreaOfMesh(TZEPMesh& mesh) {
    const TPlaces places = PlacesOf(mesh, *mesh.Vertexes());
    const auto corner = [&](int number) {
        return number >= 0 && number < static_cast<int>(places.size())
                   ? places[static_cast<std::size_t>(number)]
                   : TGLArrayd3{};
    };
    double area = 0;
    for (int i = 0; i < mesh.Faces()->Count(); ++i) {
        const TZEPFace3CI& face = (*mesh.Faces())[i];
        const TGLArrayd3 a = corner(face.A());
        area += Length(Cross(corner(face.B()) - a, corner(face.C()) - a)) / 2;
    }
    return area;
}

void TellRound(const TZEPObject& object, TZEPFacts& facts) {
    facts.Radius = RadiusOf(object);
    if (!facts.Radius) return;
    facts.Length = *facts.Radius * SweepOf(object) * std::numbers::pi / HalfTurn;
    if (SweepOf(object) >= 2 * HalfTurn)
        facts.Area = std::numbers::pi * *facts.Radius * *facts.Radius;
}

void TellPolyline(TZEPPolyline& polyline, TZEPFacts& facts) {
    const TPlaces places = PlacesOf(polyline, *polyline.Vertexes());
    facts.Length = LengthOfChain(places, polyline.Closed());
    if (polyline.Closed()) facts.Area = AreaOfChain(places);
    const auto* dashed = qobject_cast<const TZEPDashedPolyline*>(&polyline);
    if (!dashed || !dashed->Pattern()) return;
    const TZEPDashPattern& pattern = *dashed->Pattern();
    facts.LineType = pattern.Name().isEmpty() ? pattern.Text() : pattern.Name();
}

void TellForm(TZEPObject& object, TZEPFacts& facts) {
    TellRound(object, facts);
    if (auto* line = qobject_cast<TZEPLine*>(&object))
        facts.Length =
            Distance(AbsoluteOf(*line, line->P1()->Data()), AbsoluteOf(*line, line->P2()->Data()));
    if (auto* polyline = qobject_cast<TZEPPolyline*>(&object)) TellPolyline(*polyline, facts);
    if (auto* polygon = qobject_cast<TZEPPolygon*>(&object))
        facts.Area = AreaOfChain(PlacesOf(*polygon, *polygon->Vertexes()));
    if (auto* mesh = qobject_cast<TZEPMesh*>(&object)) facts.Area = AreaOfMesh(*mesh);
    if (const auto* label = qobject_cast<const TZEPLabel*>(&object)) facts.Text = label->Caption();
}

void TellPlace(const TZEPObject& object, TZEPFacts& facts) {
    QStringList blocks;
    for (const TZEPObject* above = object.Parent(); above; above = above->Parent()) {
        if (above->metaObject() == &TZEPActor::staticMetaObject) {
            facts.Layer = above->Ident();
            facts.Blocks = blocks.join(u'/');
            return;
        }
        if (above->metaObject() == &TZEPNode::staticMetaObject && !above->Ident().isEmpty())
            blocks.prepend(above->Ident());
    }
}

} // namespace

TZEPFacts FactsOf(TZEPObject& object) {
    TZEPFacts facts;
    TellForm(object, facts);
    TellPlace(object, facts);
    return facts;
}

// Arcs and circles are pieces of the circle of diameter 1.
TGLArrayd3 PointOnCircle(const TZEPObject& object, double degrees) {
    const double angle = degrees * std::numbers::pi / HalfTurn;
    return AbsoluteOf(object, {0.5 * std::cos(angle), 0.5 * std::sin(angle), 0});
}

} // namespace ZEP
