#include <zep/converters/dxf/Blocks.h>

#include <zep/converters/dxf/Drawing.h>
#include <zep/converters/dxf/Names.h>
#include <zep/converters/dxf/Record.h>

namespace ZEP {

namespace {

constexpr int ExternalFlags = 4 | 8;

} // namespace

void TDXFBlocks::Read(TDXFTags& tags, const TDXFTextDecoder& text) {
    while (tags.NextGroupCode() >= 0) {
        if (tags.Code() != 0) continue;
        if (IsDXFSectionMark(tags.ValStr())) return tags.go_back_to_last();
        if (tags.ValStr() == "BLOCK") ReadBlock(tags, text);
    }
}

void TDXFBlocks::ReadBlock(TDXFTags& tags, const TDXFTextDecoder& text) {
    TDXFRecord record;
    if (!record.Read(tags)) return;
    const TDXFPosition begin = tags.Position();
    while (tags.NextGroupCode() >= 0) {
        if (tags.Code() != 0) continue;
        const std::string_view value = tags.ValStr();
        if (value == "ENDBLK" || value == "BLOCK" || IsDXFSectionMark(value)) break;
    }
    if (tags.Code() == 0) tags.go_back_to_last();
    if (record.Flag(70, ExternalFlags)) return;
    const std::string_view name = record.Text(2);
    m_byName.try_emplace(FoldedDXFName(name),
                         TDXFBlock{text.Decode(name), begin, tags.Position().Offset - begin.Offset,
                                   record.Point(10)});
}

const TDXFBlock* TDXFBlocks::Find(std::string_view name) const {
    const auto place = m_byName.find(FoldedDXFName(name));
    return place == m_byName.end() ? nullptr : &place->second;
}

} // namespace ZEP
