#include <zep/converters/dxf/Frame.h>
#include <zep/converters/dxf/TextLabels.h>
#include <zep/objects/Label.h>
#include <zep/objects/TextShape.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/XForm.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

/// In heights of capital letters.
constexpr double Descent = 1.0 / 3;

constexpr int InvisibleAttribute = 1;
constexpr int ConstantAttribute = 2;
constexpr int Mirrored = 2;
constexpr int UpsideDown = 4;

/// Where along a line of text its place is, by group 72.
enum THorizontal { hzLeft, hzCenter, hzRight, hzAligned, hzMiddle, hzFit };
/// And where across it, by group 73.
enum TVertical { vtBaseline, vtBottom, vtMiddle, vtTop };

TDXFAnchor AnchorOf(const TDXFRecord& record) {
    const int horizontal = record.Integer(72);
    const int vertical = record.Integer(record.Kind() == "TEXT" ? 73 : 74);
    TDXFAnchor anchor;
    if (horizontal == hzCenter || horizontal == hzMiddle) anchor.Along = 0.5;
    if (horizontal == hzRight) anchor.Along = 1;
    if (vertical == vtBottom) anchor.Up = -Descent;
    if (vertical == vtMiddle || horizontal == hzMiddle) anchor.Up = 0.5;
    if (vertical == vtTop) anchor.Up = 1;
    return anchor;
}

/// A text of one line: its size along and across, its place and its turn in its plane.
struct TTextPlace {
    explicit TTextPlace(const TDXFRecord& record);
    void FitBetween(const TZEPLabel& label, const TDXFRecord& record);

    TGLArrayd3 Place;
    double Rotation, Width, Height;
};

TTextPlace::TTextPlace(const TDXFRecord& record)
    : Place(record.Point(10)), Rotation(record.Number(50)), Width(record.Number(41, 1)),
      Height(record.Number(40, 1)) {
    const int horizontal = record.Integer(72);
    const bool isBetween = horizontal == hzAligned || horizontal == hzFit;
    const bool isPlain = AnchorOf(record).Along == 0 && AnchorOf(record).Up == 0;
    if (!isPlain && !isBetween && record.Has(11)) Place = record.Point(11);
    if (!(Width > 0)) Width = 1;
    Width *= Height;
    if (record.Flag(71, Mirrored)) Width = -Width;
    if (record.Flag(71, UpsideDown)) Height = -Height;
}

/// From the first point to the second, for which the width, or width and height, are changed.
void TTextPlace::FitBetween(const TZEPLabel& label, const TDXFRecord& record) {
    const TGLArrayd3 end = record.Point(11);
    const double x = end[0] - Place[0], y = end[1] - Place[1];
    const double wide = WidthOfDXFText(label);
    if (!record.Has(11) || (x == 0 && y == 0) || !(wide > 0)) return;
    Rotation = std::atan2(y, x) * 180 / std::numbers::pi;
    Width = std::hypot(x, y) / wide;
    if (record.Integer(72) == hzAligned) Height = Width;
}

/// The definition of an attribute outside of blocks.
bool IsTag(const TDXFBuilder& builder, const TDXFRecord& record) {
    return record.Kind() == "ATTDEF" && !builder.Scope.IsInBlock();
}

/// The text of a definition in a block, which is but an example, unless it is that of all.
bool IsExample(const TDXFBuilder& builder, const TDXFRecord& record) {
    return record.Kind() == "ATTDEF" && builder.Scope.IsInBlock() &&
           !record.Flag(70, ConstantAttribute);
}

/// As it stands in the file. Insertions without attributes of their own may say the texts of
/// definitions.
std::string_view ShortText(const TDXFBuilder& builder, const TDXFRecord& record) {
    if (IsTag(builder, record)) return record.Text(2);
    if (IsExample(builder, record)) return builder.Scope.TextOf(DXFHandle(record.Text(5)));
    return record.Text(1);
}

void AddRules(TDXFBuilder& builder, const TDXFRecord& record, const QString& text,
              const std::vector<TDXFTextRules>& rules, const QPointer<TZEPObject>& label) {
    const TFont font;
    qsizetype done = 0;
    double along = 0;
    const auto goTo = [&](qsizetype letter) {
        along += AdvanceOfText(text.mid(done, letter - done), font);
        done = letter;
        return along;
    };
    for (const TDXFTextRules& rule : rules) {
        const double from = goTo(rule.From);
        AddDXFTextRules(builder, record, rule.Rules, label, from, goTo(rule.To));
    }
}

} // namespace

void AddDXFText(TDXFBuilder& builder, const TDXFRecord& record) {
    const bool isTag = IsTag(builder, record);
    std::vector<TDXFTextRules> rules;
    const QString text =
        PlainDXFText(builder.Drawing.Text.Decode(ShortText(builder, record)), &rules);
    if (text.trimmed().isEmpty()) return;
    if (builder.Drawing.TextStyles.IsVertical(record.Text(7)))
        builder.Pass(record, TDXFReport::TReason::NotVertical);
    QPointer<TZEPObject> made;
    const bool isAttribute = record.Kind() != "TEXT";
    builder.Add<TZEPLabel>(record, 0, [&](TZEPLabel& label) {
        SetDXFText(label, text);
        if (isAttribute) label.SetIdent(builder.Drawing.Text.Decode(record.Text(2)));
        if (isAttribute && !isTag && record.Flag(70, InvisibleAttribute)) label.SetVisible(false);
        TTextPlace place(record);
        const int horizontal = record.Integer(72);
        if (horizontal == hzAligned || horizontal == hzFit) place.FitBetween(label, record);
        PlaceFlat(label, FrameOf(record), place.Place, place.Rotation,
                  {place.Width, place.Height, std::abs(place.Height)});
        label.XForm()->Translate()->SetData(label.XForm()->Translate()->Data() +
                                            builder.Scope.Shift());
        MoveDXFText(label, AnchorOf(record));
        SlantDXFText(label, record.Number(51), std::abs(place.Height / place.Width));
        if (!rules.empty()) made = &label;
    });
    AddRules(builder, record, text, rules, made);
}

} // namespace ZEP
