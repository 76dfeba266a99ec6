#include <zep/converters/dxf/annotation/DimensionStyle.h>

#include <zep/converters/dxf/Handles.h>
#include <zep/converters/dxf/Names.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr int StyleNameCode = 3;

struct TVariable {
    std::string_view Name;
    int Value;
};
constexpr TVariable Variables[] = {{"$DIMPOST", dvPost},
                                   {"$DIMBLK", dvBlockName},
                                   {"$DIMBLK1", dvBlock1Name},
                                   {"$DIMBLK2", dvBlock2Name},
                                   {"$DIMSCALE", dvScale},
                                   {"$DIMASZ", dvArrowSize},
                                   {"$DIMEXO", dvExtensionOffset},
                                   {"$DIMEXE", dvExtensionBeyond},
                                   {"$DIMRND", dvRound},
                                   {"$DIMDLE", dvLineBeyond},
                                   {"$DIMTP", dvUpperTolerance},
                                   {"$DIMTM", dvLowerTolerance},
                                   {"$DIMTXT", dvTextHeight},
                                   {"$DIMCEN", dvCenterMark},
                                   {"$DIMTSZ", dvTickSize},
                                   {"$DIMLFAC", dvLengthFactor},
                                   {"$DIMTVP", dvTextPosition},
                                   {"$DIMTFAC", dvToleranceHeight},
                                   {"$DIMGAP", dvGap},
                                   {"$DIMTOL", dvTolerances},
                                   {"$DIMLIM", dvLimits},
                                   {"$DIMTIH", dvTextInsideHorizontal},
                                   {"$DIMTOH", dvTextOutsideHorizontal},
                                   {"$DIMSE1", dvNoExtension1},
                                   {"$DIMSE2", dvNoExtension2},
                                   {"$DIMTAD", dvTextAbove},
                                   {"$DIMZIN", dvZeros},
                                   {"$DIMAZIN", dvAngleZeros},
                                   {"$DIMTOFL", dvLineInside},
                                   {"$DIMSAH", dvTwoBlocks},
                                   {"$DIMTIX", dvTextInside},
                                   {"$DIMCLRD", dvLineColor},
                                   {"$DIMCLRE", dvExtensionColor},
                                   {"$DIMCLRT", dvTextColor},
                                   {"$DIMADEC", dvAngleDecimals},
                                   {"$DIMDEC", dvDecimals},
                                   {"$DIMTDEC", dvToleranceDecimals},
                                   {"$DIMAUNIT", dvAngleUnit},
                                   {"$DIMLUNIT", dvUnit},
                                   {"$DIMDSEP", dvSeparator},
                                   {"$DIMTMOVE", dvTextMove},
                                   {"$DIMJUST", dvJustify},
                                   {"$DIMSD1", dvNoLine1},
                                   {"$DIMSD2", dvNoLine2},
                                   {"$DIMTXSTY", dvTextStyleName},
                                   {"$DIMLDRBLK", dvLeaderBlockName},
                                   {"$DIMLWD", dvLineWeight},
                                   {"$DIMLWE", dvExtensionWeight}};

/// What an entity has otherwise than its style: "DSTYLE", and pairs of a value's code and the value
/// in braces, in what AutoCAD adds to it.
void TakeChanges(const TDXFRecord& record, TDXFDimensionStyle& style) {
    constexpr int text = 1000, brace = 1002, integer = 1070;
    const auto& added = record.Added();
    auto at = std::ranges::find_if(added, [](const TDXFRecord::TTag& tag) {
        return tag.Code == text && tag.Value == "DSTYLE";
    });
    if (added.end() - at < 2) return;
    for (at += 2; added.end() - at >= 2 && at->Code == integer; at += 2) {
        if (at[1].Code == brace) return;
        style.Set(DXFInteger(at->Value), at[1].Value);
    }
}

} // namespace

std::string_view TDXFDimensionStyle::Text(int value) const {
    const auto place = m_values.find(value);
    return place == m_values.end() ? std::string_view() : place->second;
}

double TDXFDimensionStyle::Number(int value, double otherwise) const {
    const auto place = m_values.find(value);
    return place == m_values.end() ? otherwise : DXFNumber(place->second);
}

int TDXFDimensionStyle::Integer(int value, int otherwise) const {
    const auto place = m_values.find(value);
    return place == m_values.end() ? otherwise : DXFInteger(place->second);
}

/// A scale of 0 is that of a view on a sheet.
double TDXFDimensionStyle::Scale() const {
    const double scale = Number(dvScale, 1);
    return scale > 0 && std::isfinite(scale) ? scale : 1;
}

std::string_view TDXFDimensionStyle::Name(int handleValue, int nameValue,
                                          const TDXFHandles& handles) const {
    const std::string_view name = handles.NameOf(Text(handleValue));
    return name.empty() ? Text(nameValue) : name;
}

void TDXFDimensionStyles::Add(const TDXFRecord& record) {
    TDXFDimensionStyle style;
    for (const TDXFRecord::TTag& tag : record.Tags()) style.Set(tag.Code, tag.Value);
    m_byName.try_emplace(FoldedDXFName(record.Text(2)), std::move(style));
}

void TDXFDimensionStyles::SetVariable(std::string_view name, std::string_view text) {
    const auto* variable = std::ranges::find(Variables, name, &TVariable::Name);
    if (variable != std::end(Variables)) m_ofHeader.Set(variable->Value, text);
}

TDXFDimensionStyle TDXFDimensionStyles::Of(const TDXFRecord& record) const {
    const auto place = m_byName.find(FoldedDXFName(record.Text(StyleNameCode, "standard")));
    TDXFDimensionStyle style = place == m_byName.end() ? m_ofHeader : place->second;
    TakeChanges(record, style);
    return style;
}

} // namespace ZEP
