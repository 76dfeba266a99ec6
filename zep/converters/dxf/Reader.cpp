#include <zep/converters/dxf/Reader.h>

#include <zep/converters/dxf/Colors.h>
#include <zep/converters/dxf/Entities.h>
#include <zep/framework/Exception.h>

#include <QFileInfo>

namespace ZEP {

/// A drawing in another file, which stays for all insertions of it.
struct TDXFReader::TOther {
    std::optional<TDXFDrawing> Drawing{};
    std::optional<TDXFReader> Reader{};
    TDXFOtherDrawing Result{};
    qint64 Line = 0; ///< of its first insertion
};

TDXFReader::TDXFReader(TDXFDrawing& drawing, const TDXFReader* outer)
    : m_drawing(drawing), m_tags(drawing.Tags), m_outer(outer), m_folder(drawing.Options.FileName) {
    if (drawing.Options.Extended)
        m_extended.emplace(drawing, static_cast<TDXFOtherDrawings&>(*this));
}

TDXFReader::~TDXFReader() = default;

void TDXFReader::Read() {
    ReadTables();
    if (m_extended) ReadSections("OBJECTS", &TDXFReader::read_objects);
    if (m_extended && !m_tags.Cancelled()) m_extended->MakeSheets();
    ReadSections("ENTITIES", &TDXFReader::read_entity_section);
    if (m_extended) m_extended->ReadSheets();
    TakeResultsOfOthers();
    m_drawing.EndlessLines.Place(m_drawing.Root, m_drawing.Report);
}

void TDXFReader::ReadTables() {
    ReadSections("HEADER", &TDXFReader::read_header);
    ReadSections("TABLES", &TDXFReader::read_tables);
    if (m_extended) ReadSections("BLOCKS", &TDXFReader::read_blocks);
}

// --- drawings in other files -------------------------------------------------------------------

TDXFOtherDrawing TDXFReader::Find(const TDXFBlock& block, qint64 line) {
    std::unique_ptr<TOther>& other = m_others[&block];
    if (!other) {
        other = std::make_unique<TOther>();
        other->Line = line;
        try {
            Open(block, *other);
        } catch (const Exception&) {
        } // is gone, or cannot be read
    }
    return other->Result;
}

/// Drawings are written as DWG mostly; one that was converted has another suffix.
void TDXFReader::Open(const TDXFBlock& block, TOther& other) {
    constexpr QLatin1String dwg(".dwg"), dxf(".dxf");
    constexpr std::string_view binary = "AutoCAD Binary DXF";
    QString name = block.File;
    if (name.endsWith(dwg, Qt::CaseInsensitive)) name = name.chopped(dwg.size()) + dxf;
    const QString path = QFileInfo(m_folder.Find(name)).canonicalFilePath();
    if (path.isEmpty()) return;
    other.Result.Reason = TDXFReport::TReason::InItself;
    if (IsWithin(path)) return;
    other.Result.Reason = TDXFReport::TReason::TooMany;
    const auto text = m_drawing.ReadFile(path);
    if (!text) return;
    other.Result.Reason = TDXFReport::TReason::NoDrawing;
    TDXFOptions options = m_drawing.Options;
    options.FileName = path;
    options.LayerPrefix = block.Name + u'|';
    other.Drawing.emplace(*text, m_drawing, options);
    other.Drawing->Tags.SetProgress([this](qint64, qint64) { return m_tags.AskOnce(); });
    if (text->starts_with(binary) || !other.Drawing->Tags.IsDrawing()) return;
    other.Reader.emplace(*other.Drawing, this);
    other.Reader->ReadTables();
    other.Result.Size = text->size();
    other.Result.Reader = &*other.Reader->m_extended;
}

bool TDXFReader::IsWithin(const QString& fileName) const {
    for (const TDXFReader* reader = this; reader; reader = reader->m_outer)
        if (QFileInfo(reader->m_drawing.Options.FileName).canonicalFilePath() == fileName)
            return true;
    return false;
}

void TDXFReader::TakeResultsOfOthers() {
    for (const auto& [block, other] : m_others) {
        if (!other->Reader) continue;
        other->Reader->TakeResultsOfOthers();
        m_drawing.Report.Add(other->Drawing->Report, other->Line);
        m_drawing.EndlessLines.Take(other->Drawing->EndlessLines);
    }
}

// --- sections ----------------------------------------------------------------------------------

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
        if (m_extended && m_tags.Code() > 0 && m_tags.Code() != 9)
            m_drawing.DimensionStyles.SetVariable(name, m_tags.ValStr());
        if (m_tags.Code() != 9) continue;
        name = m_tags.ValStr();
        if (m_extended && name == "$INSBASE") m_tags.read_2Dpoint(m_drawing.InsertionBase);
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
        if (m_tags.ValStr() == "DIMSTYLE") m_extended->ReadDimensionStyles();
        if (m_tags.ValStr() == "BLOCK_RECORD") m_extended->ReadBlockRecords();
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

void TDXFReader::read_objects() {
    m_extended->ReadObjects();
}

void TDXFReader::read_entity_section() {
    if (m_extended) return m_extended->ReadEntities();
    read_entities(m_drawing);
}

} // namespace ZEP
