#include <zep/converters/dxf/Drawing.h>

namespace ZEP {

bool TDXFDrawing::IsAtEnd(std::string_view end) {
    if (Tags.Code() != 0) return false;
    if (Tags.ValStr() == end) return true;
    if (!Options.Extended || !IsDXFSectionMark(Tags.ValStr())) return false;
    Tags.go_back_to_last();
    return true;
}

bool IsDXFSectionMark(std::string_view value) {
    return value == "ENDSEC" || value == "SECTION" || value == "EOF";
}

} // namespace ZEP
