#pragma once

#include <zep/converters/dxf/Tags.h>

#include <QString>

#include <string>
#include <unordered_map>

namespace ZEP {

class TDXFTextDecoder;

/// A block of a drawing: entities that insertions show. They stay in the text, and are read again
/// for each insertion.
struct TDXFBlock {
    QString Name;
    TDXFPosition Begin;     ///< of its first entity
    std::size_t Size = 0;   ///< bytes of its entities
    TGLArrayd3 Base{};      ///< the point of it that lies where it is inserted
    bool IsOther = false;   ///< it lies in another file
    bool IsOverlay = false; ///< and is not shown where the drawing is itself in another one
    QString File{};         ///< as the drawing names that
};

/// Where the blocks of a drawing are.
class TDXFBlocks {
public:
    /// Reads a section of blocks, whose name was taken last. Of blocks of one name the first holds.
    void Read(TDXFTags& tags, const TDXFTextDecoder& text);

    /// By a name as it stands in the text, without regard to the case of ASCII letters; null where
    /// there is none.
    [[nodiscard]] const TDXFBlock* Find(std::string_view name) const;

private:
    void ReadBlock(TDXFTags& tags, const TDXFTextDecoder& text);

    std::unordered_map<std::string, TDXFBlock> m_byName;
};

} // namespace ZEP
