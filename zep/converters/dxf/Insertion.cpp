#include <zep/converters/dxf/Insertion.h>

#include <zep/converters/dxf/Frame.h>
#include <zep/converters/dxf/Record.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/XForm.h>

#include <algorithm>

namespace ZEP {

TDXFInsertion TDXFInsertion::Of(const TDXFRecord& record) {
    return {.Place = record.Point(10),
            .Scale = {record.Number(41, 1), record.Number(42, 1), record.Number(43, 1)},
            .Rotation = record.Number(50),
            .Extrusion = record.Point(210, unitz),
            .Hidden = record.Integer(60) != 0,
            .Columns = std::max(record.Integer(70), 1),
            .Rows = std::max(record.Integer(71), 1),
            .ColumnDistance = record.Number(44),
            .RowDistance = record.Number(45)};
}

/// In the plane of the extrusion.
TGLArrayd3 TDXFInsertion::FlatWayTo(int column, int row) const {
    TGLMatrixd4 turn = idd;
    Rotated(Rotation, 0, 0, 1, turn);
    TGLArrayd3 way{ColumnDistance * column, RowDistance * row, 0};
    Xformd(turn, way);
    return way;
}

TGLArrayd3 TDXFInsertion::WayTo(int column, int row) const {
    if (column == 0 && row == 0) return zero3d;
    TGLArrayd3 way = FlatWayTo(column, row);
    Xformd(ExtrusionFrame(Extrusion), way);
    return way;
}

TDXFInsertion TDXFInsertion::Single(int column, int row) const {
    TDXFInsertion single = *this;
    if (column != 0 || row != 0) single.Place = Place + FlatWayTo(column, row);
    return single;
}

bool TDXFInsertion::IsIdentity(const TGLArrayd3& base) const {
    return Place == zero3d && Scale == TGLArrayd3{1, 1, 1} && Rotation == 0 && Extrusion == unitz &&
           base == zero3d;
}

void TDXFInsertion::SetTransform(TZEPXForm& xform, const TGLArrayd3& base) const {
    TGLMatrixd4 turn = ExtrusionFrame(Extrusion);
    TGLArrayd3 place = Place;
    Xformd(turn, place);
    Rotated(Rotation, 0, 0, 1, turn);
    xform.Translate()->SetDataQuietly(place);
    xform.Rotate()->SetDataQuietly(RotationAngles(turn));
    xform.Scale()->SetDataQuietly(Scale);
    xform.mTranslate(-base[0], -base[1], -base[2]);
}

} // namespace ZEP
