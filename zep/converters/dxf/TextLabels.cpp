#include <zep/converters/dxf/TextLabels.h>

#include <zep/objects/Label.h>
#include <zep/objects/Line.h>
#include <zep/scene/XForm.h>

#include <QtEndian>

#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

struct TRulePlace {
    TDXFRule Rule;
    double Up;
};
constexpr TRulePlace RulePlaces[] = {{drUnder, -0.2}, {drOver, 1.2}, {drThrough, 0.5}};

} // namespace

void SetDXFText(TZEPLabel& label, const QString& text) {
    label.SetCaption(text);
    label.SetBitmapFont(false);
    label.Font()->SetName(QStringLiteral("Arial"));
}

double WidthOfDXFText(const TZEPLabel& label) {
    TGLArrayd3 min, max;
    label.GetSize(min, max);
    return max[0];
}

void MoveDXFText(TZEPLabel& label, const TDXFAnchor& anchor) {
    const double along = anchor.Along == 0 ? 0 : anchor.Along * WidthOfDXFText(label);
    if (along != 0 || anchor.Up != 0) label.XForm()->mTranslate(-along, -anchor.Up, 0);
}

void SlantDXFText(TZEPLabel& label, double degrees, double ratio) {
    constexpr double steepest = 85;
    constexpr int xOfY = 4; // in the matrix
    if (degrees == 0 || !(std::abs(degrees) <= steepest)) return;
    QByteArray matrix = label.XForm()->StoreMatrix();
    const double slant = std::tan(degrees * std::numbers::pi / 180) * ratio;
    qToLittleEndian<double>(slant, matrix.data() + xOfY * sizeof slant);
    label.XForm()->LoadMatrix(matrix);
}

void AddDXFTextRules(TDXFBuilder& builder, const TDXFRecord& record, int rules,
                     const QPointer<TZEPObject>& label, double from, double to,
                     const std::optional<TColor>& color) {
    if (!(from < to)) return;
    for (const TRulePlace& place : RulePlaces) {
        if ((rules & place.Rule) == 0 || !label) continue;
        builder.Add<TZEPLine>(record, 0, [&](TZEPLine& line) {
            if (color) line.SetColor(*color);
            line.P1()->SetData(from, place.Up, 0);
            line.P2()->SetData(to, place.Up, 0);
            line.XForm()->Assign(label->XForm());
        });
    }
}

} // namespace ZEP
