#include "converters/DXFDrawing.h"

#include "converters/DXFEntities.h"

namespace ZEP {

namespace {

/// Takes its colour from its layer, unless it says another one.
constexpr int ByLayer = 256;

bool EndsSection(std::string_view value) {
    return value == "ENDSEC" || value == "SECTION" || value == "EOF";
}

} // namespace

bool TDXFDrawing::Read(TEntity& entity) {
    if (Options.Extended) entity.Color = ByLayer;
    return read_entity_data(Tags, entity);
}

bool TDXFDrawing::IsAtEnd(std::string_view end) {
    if (Tags.Code() != 0) return false;
    if (Tags.ValStr() == end) return true;
    if (!Options.Extended || !EndsSection(Tags.ValStr())) return false;
    Tags.go_back_to_last();
    return true;
}

void TDXFDrawing::PassPairBehindEnd() {
    if (Tags.NextGroupCode() == 0 && Options.Extended) Tags.go_back_to_last();
}

void read_entities(TDXFDrawing& drawing, TDXFPlace& place, std::string_view end) {
    TDXFTags& tags = drawing.Tags;
    while (tags.NextGroupCode() >= 0) {
        if (tags.Code() != 0) continue;
        if (drawing.IsAtEnd(end)) return;
        if (const TDXFReadEntity read = FindEntityReader(tags.ValStr(), drawing.Options.Extended))
            read(drawing, place);
        else if (!EndsSection(tags.ValStr()))
            drawing.Report.Add(tags.ValStr(), TDXFReport::TReason::NotDrawn, tags.LineNumber());
    }
}

} // namespace ZEP
