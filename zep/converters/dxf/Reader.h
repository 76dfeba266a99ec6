#pragma once

#include <zep/converters/dxf/Extended.h>

namespace ZEP {

/// Reads the sections of a drawing: the header's extents, the layers, the entities. Sections come
/// in any order. Of several of one kind the first counts, in the extended reading all.
class TDXFReader {
public:
    explicit TDXFReader(TDXFDrawing& drawing);

    void Read();

private:
    using TReadSection = void (TDXFReader::*)();

    void ReadSections(std::string_view name, TReadSection read);
    void read_header();
    void read_tables();
    void read_layer_information();
    void ReadLayer();
    void read_blocks();
    void read_entity_section();

    TDXFDrawing& m_drawing;
    TDXFTags& m_tags;
    std::optional<TDXFExtendedReader> m_extended;
};

} // namespace ZEP
