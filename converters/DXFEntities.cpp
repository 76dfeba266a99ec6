#include "converters/DXFEntities.h"

#include "objects/Arc.h"
#include "objects/Circle.h"
#include "objects/Label.h"
#include "objects/Line.h"
#include "objects/Point.h"
#include "objects/Polygon.h"
#include "scene/Vertex3.h"
#include "scene/XForm.h"

namespace ZEP {

namespace {

constexpr int CircleSegments = 45;

void Set(TZEPVertex3* vertex, const TGLArrayd3& point) {
    vertex->SetData(point[0], point[1], point[2]);
}

/// Quietly but for the last, which recomputes the matrix.
void SetPlace(TZEPObject& object, const TGLArrayd3& place, const TGLArrayd3& scale) {
    object.XForm()->Translate()->SetDataQuietly(place);
    Set(object.XForm()->Scale(), scale);
}

void Fill(TZEPPoint& point, const TEntity& entity, const TDXFDrawing&) {
    Set(point.P(), entity.Points[0]);
}

void Fill(TZEPLine& line, const TEntity& entity, const TDXFDrawing&) {
    Set(line.P1(), entity.Points[0]);
    Set(line.P2(), entity.Points[1]);
}

// A circle is flat: nothing to scale along z.
template <class T>
void FillRound(T& object, const TEntity& entity) {
    const double diameter = 2 * entity.Radius;
    object.SetSegments(CircleSegments);
    SetPlace(object, entity.Points[0], {diameter, diameter, 0});
}

void Fill(TZEPCircle& circle, const TEntity& entity, const TDXFDrawing&) {
    FillRound(circle, entity);
}

void Fill(TZEPArc& arc, const TEntity& entity, const TDXFDrawing&) {
    FillRound(arc, entity);
    arc.SetStartAngle(entity.StartAngle);
    arc.SetEndAngle(entity.EndAngle);
}

void Fill(TZEPLabel& label, const TEntity& entity, const TDXFDrawing& drawing) {
    const double height = entity.Radius;
    label.SetCaption(drawing.Text.Decode(entity.Text));
    label.SetBitmapFont(false);
    label.Font()->SetName(QStringLiteral("Arial"));
    SetPlace(label, entity.Points[0], {height, height, height});
}

// A triangle repeats its third point.
void Fill(TZEPPolygon& polygon, const TEntity& entity, const TDXFDrawing&) {
    polygon.SetColorVertexes(false);
    for (const TGLArrayd3& point : entity.Points) polygon.Vertexes()->Add()->SetPoint(point);
}

/// An entity that becomes one object on a layer that must be there. The object gets its parent last
/// of all, so that what was set before had nobody to tell.
template <class T>
void ReadSimple(TDXFDrawing& drawing, TDXFPlace& place) {
    TEntity entity;
    if (!drawing.Read(entity) || !IsInModel(drawing, entity)) return;
    const TDXFSpot spot = place.Find(entity);
    if (!spot.Parent)
        return drawing.Report.Add(entity.Kind, TDXFReport::TReason::NoLayer, entity.Line);
    T* object = MakeOfEntity<T>(drawing, entity, spot.Color);
    Fill(*object, entity, drawing);
    object->SetParentComponent(spot.Parent);
}

/// An entity of which nothing is drawn, but whose layer is made.
bool read_generic(TDXFDrawing& drawing, TDXFPlace& place, TEntity& entity) {
    if (!drawing.Read(entity)) return false;
    place.FindOrMake(entity);
    drawing.Report.Add(entity.Kind, TDXFReport::TReason::NotDrawn, entity.Line);
    return true;
}

void read_insert(TDXFDrawing& drawing, TDXFPlace& place) {
    TEntity insert;
    if (!read_generic(drawing, place, insert) || insert.Follows != 1) return;
    ReadFollowers(drawing, "ATTRIB", [&] {
        TEntity attribute;
        return read_generic(drawing, place, attribute);
    });
}

constexpr TDXFEntityKind Kinds[] = {
    {"LINE", ReadSimple<TZEPLine>},     {"ARC", ReadSimple<TZEPArc>},
    {"CIRCLE", ReadSimple<TZEPCircle>}, {"POINT", ReadSimple<TZEPPoint>},
    {"TEXT", ReadSimple<TZEPLabel>},    {"3DFACE", ReadSimple<TZEPPolygon>},
    {"POLYLINE", read_polyline},        {"INSERT", read_insert},
};

} // namespace

TDXFReadEntity FindEntityReader(std::string_view kind, bool) {
    for (const TDXFEntityKind& known : Kinds)
        if (known.Name == kind) return known.Read;
    return nullptr;
}

bool IsInModel(TDXFDrawing& drawing, const TEntity& entity) {
    if (!drawing.Options.Extended || !entity.PaperSpace) return true;
    drawing.Report.Add(entity.Kind, TDXFReport::TReason::PaperSpace, entity.Line);
    return false;
}

} // namespace ZEP
