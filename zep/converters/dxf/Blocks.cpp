#include <zep/converters/dxf/Blocks.h>

#include <zep/converters/dxf/Drawing.h>
#include <zep/converters/dxf/Names.h>
#include <zep/converters/dxf/Record.h>

namespace ZEP {

namespace {

constexpr int OverlayFlag = 8;
constexpr int ExternalFlags = 4 | OverlayFlag;

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
    const bool isOther = record.Flag(70, ExternalFlags);
    const std::string_view name = record.Text(2);
    TDXFBlock block{text.Decode(name), begin,   tags.Position().Offset - begin.Offset,
                    record.Point(10),  isOther, record.Flag(70, OverlayFlag)};
    if (isOther) block.File = text.Decode(record.Text(1));
    m_byName.try_emplace(FoldedDXFName(name), std::move(block));
}

const TDXFBlock* TDXFBlocks::Find(std::string_view name) const {
    const auto place = m_byName.find(FoldedDXFName(name));
    return place == m_byName.end() ? nullptr : &place->second;
}

} // namespace ZEP
