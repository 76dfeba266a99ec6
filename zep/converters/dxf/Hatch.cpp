#include <zep/converters/dxf/Builder.h>
#include <zep/converters/dxf/HatchLines.h>
#include <zep/converters/dxf/HatchPaths.h>
#include <zep/converters/dxf/Palette.h>
#include <zep/objects/LineSet.h>

#include <optional>

namespace ZEP {

namespace {

constexpr int NumberOfWhite = 7;

TDXFHatchStyle StyleOf(const TDXFRecord& record) {
    const int style = record.Integer(75);
    return style == 1   ? TDXFHatchStyle::Outer
           : style == 2 ? TDXFHatchStyle::Ignore
                        : TDXFHatchStyle::Normal;
}

bool IsGradient(const TDXFRecord& record) {
    return record.Integer(450) != 0;
}

/// The first one of a gradient.
std::optional<TColor> GradientColor(const TDXFRecord& record) {
    bool isFirst = false;
    std::optional<TColor> color;
    for (const TDXFRecord::TTag& tag : record.Tags()) {
        if (tag.Code == 463 && isFirst) break;
        isFirst = isFirst || tag.Code == 463;
        if (isFirst && tag.Code == 63) color = DXFPaletteColor(DXFInteger(tag.Value));
        if (isFirst && tag.Code == 421) return DXFTrueColor(DXFInteger(tag.Value), NumberOfWhite);
    }
    return color;
}

void AddLines(TDXFBuilder& builder, const TDXFRecord& record, const TContours& contours) {
    const TDXFHatchLines lines = LinesOf(HatchFamilies(record), contours, builder.PointsLeft() / 2);
    if (lines.IsCoarser) builder.Pass(record, TDXFReport::TReason::TooFine);
    if (lines.Points.empty()) return;
    const TGLMatrixd4 frame = FrameOf(record);
    builder.Add<TZEPLineSet>(record, lines.Points.size(), [&](TZEPLineSet& set) {
        set.Vertexes()->AddEach(lines.Points.size(), [&](TZEPVertex3CI& vertex, std::size_t i) {
            TGLArrayd3 point = lines.Points[i];
            Xformd(frame, point);
            vertex.SetPointQuietly(point);
        });
    });
}

} // namespace

void AddDXFHatch(TDXFBuilder& builder, const TDXFRecord& record) {
    const TContours contours =
        ContoursOfStyle(HatchContours(record, builder.PointsLeft()), StyleOf(record));
    if (contours.empty()) return builder.Pass(record, TDXFReport::TReason::NoPoints);
    if (record.Integer(70) != 0 || IsGradient(record))
        return builder.AddFilled(record, contours, TFillRule::Odd, FrameOf(record),
                                 IsGradient(record) ? GradientColor(record) : std::nullopt);
    AddLines(builder, record, contours);
}

} // namespace ZEP
