#include "converters/DXFDrawing.h"

namespace ZEP {

namespace {

/// Takes its colour from its layer, unless it says another one.
constexpr int ByLayer = 256;

} // namespace

bool TDXFDrawing::Read(TEntity& entity) {
    if (Options.Extended) entity.Color = ByLayer;
    return read_entity_data(Tags, entity);
}

bool TDXFDrawing::IsAtEnd(std::string_view end) {
    if (Tags.Code() != 0) return false;
    if (Tags.ValStr() == end) return true;
    if (!Options.Extended || !IsDXFSectionMark(Tags.ValStr())) return false;
    Tags.go_back_to_last();
    return true;
}

void TDXFDrawing::PassPairBehindEnd() {
    if (Tags.NextGroupCode() == 0 && Options.Extended) Tags.go_back_to_last();
}

bool IsDXFSectionMark(std::string_view value) {
    return value == "ENDSEC" || value == "SECTION" || value == "EOF";
}

} // namespace ZEP
