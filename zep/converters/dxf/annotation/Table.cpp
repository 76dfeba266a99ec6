#include <zep/converters/dxf/Builder.h>

#include <cmath>
#include <numbers>

namespace ZEP {

void AddDXFTable(TDXFBuilder& builder, const TDXFRecord& record) {
    const TGLArrayd3 along = record.Point(11, unitx);
    const TDXFInsertion insertion{.Place = record.Point(10),
                                  .Rotation =
                                      std::atan2(along[1], along[0]) * 180 / std::numbers::pi,
                                  .Extrusion = record.Point(210, unitz),
                                  .Hidden = record.Integer(60) != 0};
    if (!builder.Insert(record, record.Text(2), insertion))
        builder.Pass(record, TDXFReport::TReason::NoBlock);
}

} // namespace ZEP
