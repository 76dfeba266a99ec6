#include <zep/converters/dxf/annotation/DimensionSketch.h>

namespace ZEP {

namespace {

enum TDimensionKind {
    dkLinear,
    dkAligned,
    dkAngular,
    dkDiameter,
    dkRadius,
    dkThreePoint,
    dkOrdinate
};
constexpr int DimensionKindMask = 7;

/// Without these points there is nothing to measure.
bool HasPoints(const TDXFRecord& record, int kind) {
    switch (kind) {
    case dkAngular:
        return record.Has(13) && record.Has(14) && record.Has(15) && record.Has(16);
    case dkDiameter:
    case dkRadius:
        return record.Has(10) && record.Has(15);
    case dkThreePoint:
        return record.Has(13) && record.Has(14) && record.Has(15);
    default:
        return record.Has(13) && record.Has(14);
    }
}

bool AddComputedDimension(TDXFBuilder& builder, const TDXFRecord& record) {
    if (record.Kind() != "DIMENSION") return false;
    const int kind = record.Integer(70) & DimensionKindMask;
    if (!HasPoints(record, kind)) return false;
    TDXFDimensionSketch sketch(builder, record);
    switch (kind) {
    case dkLinear:
    case dkAligned:
        return AddDXFLinearDimension(sketch, record, kind == dkAligned);
    case dkAngular:
        return AddDXFAngularDimension(sketch, record);
    case dkDiameter:
        return AddDXFDiameterDimension(sketch, record);
    case dkRadius:
        return AddDXFRadiusDimension(sketch, record);
    case dkThreePoint:
        return AddDXFThreePointDimension(sketch, record);
    case dkOrdinate:
        return AddDXFOrdinateDimension(sketch, record);
    default:
        return false;
    }
}

} // namespace

void AddDXFDimension(TDXFBuilder& builder, const TDXFRecord& record) {
    const TDXFInsertion insertion{.Hidden = record.Integer(60) != 0, .OfDimension = true};
    if (builder.Insert(record, record.Text(2), insertion)) return;
    if (!AddComputedDimension(builder, record)) builder.Pass(record, TDXFReport::TReason::NotDrawn);
}

} // namespace ZEP
