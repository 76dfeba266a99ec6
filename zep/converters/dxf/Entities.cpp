#include <zep/converters/dxf/Entities.h>

#include <zep/objects/Arc.h>
#include <zep/objects/Circle.h>
#include <zep/objects/Label.h>
#include <zep/objects/Line.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polygon.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

namespace ZEP {

namespace {

constexpr int CircleSegments = 45;

/// Quietly but for the last, which recomputes the matrix.
void SetPlace(TZEPObject& object, const TGLArrayd3& place, const TGLArrayd3& scale) {
    object.XForm()->Translate()->SetDataQuietly(place);
    object.XForm()->Scale()->SetData(scale);
}

void Fill(TZEPPoint& point, const TEntity& entity, const TDXFDrawing&) {
    point.P()->SetData(entity.Points[0]);
}

void Fill(TZEPLine& line, const TEntity& entity, const TDXFDrawing&) {
    line.P1()->SetData(entity.Points[0]);
    line.P2()->SetData(entity.Points[1]);
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

/// An entity that becomes one object on a layer that must be there.
template <class T>
void ReadSimple(TDXFDrawing& drawing) {
    TEntity entity;
    if (!read_entity_data(drawing.Tags, entity)) return;
    const TDXFSpot spot = drawing.Layers.Find(entity);
    if (!spot.Layer)
        return drawing.Report.Add(entity.Kind, TDXFReport::TReason::NoLayer, entity.Line);
    T* object = MakeOfEntity<T>(drawing, entity, spot.Color);
    Fill(*object, entity, drawing);
    Place(object, spot.Layer, drawing.Root);
}

/// An entity of which nothing is drawn, but whose layer is made.
bool read_generic(TDXFDrawing& drawing, TEntity& entity) {
    if (!read_entity_data(drawing.Tags, entity)) return false;
    drawing.Layers.FindOrMake(entity);
    drawing.Report.Add(entity.Kind, TDXFReport::TReason::NotDrawn, entity.Line);
    return true;
}

void read_insert(TDXFDrawing& drawing) {
    TEntity insert;
    if (!read_generic(drawing, insert) || insert.Follows != 1) return;
    ReadFollowers(drawing.Tags, "ATTRIB", [&] {
        TEntity attribute;
        return read_generic(drawing, attribute);
    });
}

/// Reads the entity whose code 0 was taken last. The next pair is then the code 0 of the next
/// entity, or the text has ended.
using TReadEntity = void (*)(TDXFDrawing& drawing);

struct TPlainKind {
    std::string_view Name;
    TReadEntity Read;
};

constexpr TPlainKind PlainKinds[] = {
    {"LINE", ReadSimple<TZEPLine>},     {"ARC", ReadSimple<TZEPArc>},
    {"CIRCLE", ReadSimple<TZEPCircle>}, {"POINT", ReadSimple<TZEPPoint>},
    {"TEXT", ReadSimple<TZEPLabel>},    {"3DFACE", ReadSimple<TZEPPolygon>},
    {"POLYLINE", read_polyline},        {"INSERT", read_insert},
};

TReadEntity FindReader(std::string_view kind) {
    for (const TPlainKind& known : PlainKinds)
        if (known.Name == kind) return known.Read;
    return nullptr;
}

} // namespace

void read_entities(TDXFDrawing& drawing) {
    TDXFTags& tags = drawing.Tags;
    while (tags.NextGroupCode() >= 0) {
        if (tags.Code() != 0) continue;
        if (tags.ValStr() == "ENDSEC") return;
        if (const TReadEntity read = FindReader(tags.ValStr()))
            read(drawing);
        else if (!IsDXFSectionMark(tags.ValStr()))
            drawing.Report.Add(tags.ValStr(), TDXFReport::TReason::NotDrawn, tags.LineNumber());
    }
}

} // namespace ZEP
