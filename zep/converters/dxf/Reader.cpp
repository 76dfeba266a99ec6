#include <zep/converters/dxf/Reader.h>

#include <zep/converters/dxf/Colors.h>
#include <zep/converters/dxf/Entities.h>

namespace ZEP {

TDXFReader::TDXFReader(TDXFDrawing& drawing) : m_drawing(drawing), m_tags(drawing.Tags) {
    if (drawing.Options.Extended) m_extended.emplace(drawing);
}

void TDXFReader::Read() {
    ReadSections("HEADER", &TDXFReader::read_header);
    ReadSections("TABLES", &TDXFReader::read_tables);
    if (m_extended) ReadSections("BLOCKS", &TDXFReader::read_blocks);
    ReadSections("ENTITIES", &TDXFReader::read_entity_section);
}

void TDXFReader::ReadSections(std::string_view name, TReadSection read) {
    m_tags.mark_position();
    while (m_tags.skip_upto_section(name)) {
        (this->*read)();
        if (m_tags.IsCut())
            m_drawing.Report.Add(name, TDXFReport::TReason::CutOff, m_tags.LineNumber());
        if (!m_drawing.Options.Extended) break;
        m_tags.PassSearched();
    }
    m_tags.goto_marked_position();
}

void TDXFReader::read_header() {
    std::string_view name, codePage, version;
    while (m_tags.NextGroupCode() >= 0 && !m_drawing.IsAtEnd("ENDSEC")) {
        if (m_tags.Code() == 3 && name == "$DWGCODEPAGE") codePage = m_tags.ValStr();
        if (m_tags.Code() == 1 && name == "$ACADVER") version = m_tags.ValStr();
        if (m_tags.Code() == 40 && name == "$LTSCALE")
            m_drawing.LineTypes.SetScale(m_tags.ValDbl());
        if (m_tags.Code() == 290 && name == "$LWDISPLAY")
            m_drawing.Weights.AreShown = m_tags.ValInt() != 0;
        if (m_tags.Code() != 9) continue;
        name = m_tags.ValStr();
        if (name == "$EXTMAX") m_tags.read_2Dpoint(m_drawing.MaxExtent);
        if (name == "$EXTMIN") m_tags.read_2Dpoint(m_drawing.MinExtent);
    }
    m_drawing.Text = TDXFTextDecoder(codePage, version);
}

void TDXFReader::read_tables() {
    bool begins = false;
    while (m_tags.NextGroupCode() >= 0 && !m_drawing.IsAtEnd("ENDSEC")) {
        if (m_tags.Code() == 0) begins = m_tags.ValStr() == "TABLE";
        if (m_tags.Code() != 2 || !begins) continue;
        begins = false;
        if (m_tags.ValStr() == "LAYER") read_layer_information();
        if (!m_extended) continue;
        if (m_tags.ValStr() == "LTYPE") m_extended->ReadLineTypes();
        if (m_tags.ValStr() == "STYLE") m_extended->ReadTextStyles();
    }
}

void TDXFReader::read_layer_information() {
    while (m_tags.NextGroupCode() >= 0 && !m_drawing.IsAtEnd("ENDTAB"))
        if (m_tags.Code() == 0 && m_tags.ValStr() == "LAYER") ReadLayer();
}

// The host may free the layer while it is asked for progress.
void TDXFReader::ReadLayer() {
    if (m_extended) return m_extended->ReadLayer();
    QPointer<TZEPObject> layer;
    while (m_tags.NextGroupCode() > 0) {
        if (m_tags.Code() == 2 && !layer) layer = m_drawing.Layers.Declare(m_tags.ValStr());
        if (!layer || m_tags.Code() != 62) continue;
        if (const auto color = DXFColor(m_tags.ValInt())) layer->SetColor(*color);
    }
    if (m_tags.Code() == 0) m_tags.go_back_to_last();
}

void TDXFReader::read_blocks() {
    m_extended->ReadBlocks();
}

void TDXFReader::read_entity_section() {
    if (m_extended) return m_extended->ReadEntities();
    read_entities(m_drawing);
}

} // namespace ZEP
