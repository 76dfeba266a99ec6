#include <zep/converters/rs274d/Objects.h>

#include <zep/converters/Placing.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Line.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/XForm.h>

#include <charconv>

namespace ZEP {

namespace {

constexpr float DrillPointWidth = 5;

/// Put together by hand: a million of them are made.
void SetIdentOf(TZEPObject& object, qint64 line) {
    char text[32] = "Line ";
    constexpr qsizetype prefix = 5;
    const char* end = std::to_chars(text + prefix, text + sizeof text, line).ptr;
    object.SetIdent(QLatin1String(text, end - text));
}

template <class T>
T* Made(TZEPObject& root, qint64 line, TColor color) {
    auto* object = new T(&root);
    SetIdentOf(*object, line);
    object->SetColor(color);
    return object;
}

/// Turns the arc's own x and y to the first and the second axis of the plane.
TGLArrayd3 RotationTo(TRS274DArcPlane plane) {
    switch (plane) {
    case apXY:
        return zero3d;
    case apXZ:
        return {90, 0, 0};
    case apYZ:
        return {0, 90, 90};
    }
    return zero3d;
}

} // namespace

TZEPLine* AddPathLine(TZEPObject& root, const TRS274DPoint& from, const TRS274DPoint& to,
                      TColor color, qint64 line) {
    auto* object = Made<TZEPLine>(root, line, color);
    object->P1()->SetData(from);
    object->P2()->SetData(to);
    return Place(object, &root, root);
}

TZEPArc* AddPathArc(TZEPObject& root, const TRS274DArc& arc, TColor color, qint64 line) {
    auto* object = Made<TZEPArc>(root, line, color);
    object->SetStartAngle(arc.StartAngle);
    object->SetEndAngle(arc.EndAngle);
    // Quietly but for the last, which recomputes the matrix.
    const double diameter = 2 * arc.Radius;
    object->XForm()->Translate()->SetDataQuietly(arc.Center);
    if (arc.Plane != apXY) object->XForm()->Rotate()->SetDataQuietly(RotationTo(arc.Plane));
    object->XForm()->Scale()->SetData({diameter, diameter, diameter});
    return Place(object, &root, root);
}

TZEPPolyline* AddPathCurve(TZEPObject& root, std::span<const TRS274DPoint> points, TColor color,
                           qint64 line) {
    auto* object = Made<TZEPPolyline>(root, line, color);
    object->SetOrigColor(color);
    object->SetSmooth(false);
    for (const TRS274DPoint& point : points) object->Vertexes()->Add()->SetPoint(point);
    return Place(object, &root, root);
}

TZEPPoint* AddPathPoint(TZEPObject& root, const TRS274DPoint& at, TColor color, qint64 line) {
    auto* object = Made<TZEPPoint>(root, line, color);
    object->SetWidth(DrillPointWidth);
    object->P()->SetData(at);
    return Place(object, &root, root);
}

} // namespace ZEP
