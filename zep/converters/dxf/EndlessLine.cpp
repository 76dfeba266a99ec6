#include <zep/converters/dxf/Builder.h>
#include <zep/objects/DashedPolyline.h>
#include <zep/scene/Vectors.h>

namespace ZEP {

void AddDXFEndlessLine(TDXFBuilder& builder, const TDXFRecord& record) {
    const TGLArrayd3 place = record.Point(10), way = Unit(record.Point(11));
    if (!IsFinite(place) || !IsFinite(way) || way == zero3d)
        return builder.Pass(record, TDXFReport::TReason::NoPoints);
    TZEPObject* layer = builder.Scope.LayerOf(record);
    const TDXFLineType* type =
        builder.Drawing.LineTypes.AreThere() ? builder.LineTypeOf(record) : nullptr;
    TZEPPolyline* object = nullptr;
    if (type) {
        auto* dashed = builder.Make<TZEPDashedPolyline>(record, layer, 2);
        if (dashed)
            dashed->SetPattern(builder.Drawing.LineTypes.PatternOf(*type, record.Number(48, 1)));
        object = dashed;
    } else {
        object = builder.Make<TZEPPolyline>(record, layer, 2);
    }
    if (!object) return;
    builder.Drawing.EndlessLines.Add({object, builder.Scope.ParentOn(layer), place, way,
                                      record.Kind() == "RAY", record.Kind(), record.Line()});
}

} // namespace ZEP
