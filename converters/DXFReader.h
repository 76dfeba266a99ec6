#pragma once

#include "converters/DXFDrawing.h"

namespace ZEP {

/// Reads the sections of a drawing: the header's extents, the layers, the entities. Sections come
/// in any order. Of several of one kind the first counts, in the extended reading all.
class TDXFReader {
public:
    explicit TDXFReader(TDXFDrawing& drawing) : m_drawing(drawing), m_tags(drawing.Tags) {}

    void Read();

private:
    using TReadSection = void (TDXFReader::*)();

    void ReadSections(std::string_view name, TReadSection read);
    void read_header();
    void read_tables();
    void read_layer_information();
    void ReadLayer();
    void read_entity_section();

    TDXFDrawing& m_drawing;
    TDXFTags& m_tags;
};

} // namespace ZEP
