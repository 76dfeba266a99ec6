#include <zep/converters/dxf/LineTypes.h>

#include <zep/converters/dxf/CodePage.h>
#include <zep/converters/dxf/Names.h>

#include <cmath>

namespace ZEP {

namespace {

constexpr int LengthCode = 49;
constexpr int TextsCode = 74; // 0 for a part without one

bool IsScale(double scale) {
    return std::isfinite(scale) && scale > 0;
}

} // namespace

void TDXFLineTypes::SetScale(double scale) {
    if (IsScale(scale)) m_scale = scale;
}

void TDXFLineTypes::Add(const TDXFRecord& record, const TDXFTextDecoder& text) {
    TDXFLineType type{.Name = text.Decode(record.Text(2))};
    for (const TDXFRecord::TTag& tag : record.Tags()) {
        if (tag.Code == LengthCode) type.Parts.push_back(tag.Number());
        if (tag.Code == TextsCode && DXFInteger(tag.Value) != 0) type.HasTexts = true;
    }
    if (type.Parts.empty()) return;
    m_byName.try_emplace(FoldedDXFName(record.Text(2)), std::move(type));
}

const TDXFLineType* TDXFLineTypes::Find(std::string_view name) const {
    const auto place = m_byName.find(FoldedDXFName(name));
    return place == m_byName.end() ? nullptr : &place->second;
}

const TDXFLineType* TDXFLineTypes::OfLayer(const TZEPObject* layer) const {
    const auto place = m_ofLayers.find(layer);
    return place == m_ofLayers.end() ? nullptr : Find(*place);
}

std::shared_ptr<const TZEPDashPattern> TDXFLineTypes::PatternOf(const TDXFLineType& type,
                                                                double scale) {
    if (!IsScale(scale)) scale = 1;
    const auto [place, isNew] = m_patterns.try_emplace({&type, scale});
    if (!isNew) return place->second;
    std::vector<double> parts = type.Parts;
    for (double& part : parts) part *= scale * m_scale;
    return place->second = TZEPDashPattern::Of(parts, type.Name);
}

} // namespace ZEP
