#include <zep/converters/dxf/Extended.h>

#include <zep/converters/dxf/Palette.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace ZEP {

namespace {

constexpr int FrozenFlag = 1;
constexpr int WhiteNumber = 7;
constexpr int MaxNumber = 256;
constexpr int DictionaryCode = 360;

struct TKind {
    std::string_view Name;
    TDXFAddEntity Add;
};

constexpr TKind Kinds[] = {
    {"LINE", AddDXFLine},
    {"LWPOLYLINE", AddDXFLightPolyline},
    {"POLYLINE", AddDXFPolyline},
    {"ARC", AddDXFArc},
    {"CIRCLE", AddDXFCircle},
    {"POINT", AddDXFPoint},
    {"TEXT", AddDXFText},
    {"ATTRIB", AddDXFText},
    {"ATTDEF", AddDXFText},
    {"MTEXT", AddDXFLines},
    {"3DFACE", AddDXFFace},
    {"SOLID", AddDXFSolid},
    {"TRACE", AddDXFSolid},
    {"ELLIPSE", AddDXFEllipse},
    {"SPLINE", AddDXFSpline},
    {"HELIX", AddDXFSpline},
    {"HATCH", AddDXFHatch},
    {"LEADER", AddDXFLeader},
    {"MULTILEADER", AddDXFMultiLeader},
    {"MLEADER", AddDXFMultiLeader},
    {"XLINE", AddDXFEndlessLine},
    {"RAY", AddDXFEndlessLine},
    {"ACAD_TABLE", AddDXFTable},
    {"MLINE", AddDXFMultiLine},
    {"TOLERANCE", AddDXFTolerance},
    {"IMAGE", AddDXFImage},
    {"MESH", AddDXFMesh},
    {"DIMENSION", AddDXFDimension},
    {"ARC_DIMENSION", AddDXFDimension},
    {"LARGE_RADIAL_DIMENSION", AddDXFDimension},
};

/// What belongs to other entities, or shows nothing in a model.
constexpr std::string_view SilentKinds[] = {"SEQEND", "VERTEX", "BLOCK", "ENDBLK"};

/// Begins what an object says of a layer in a viewport.
constexpr std::string_view OwnLookOfLayer = "{ADSK_LYR_";

/// What may be the outline of a viewport.
constexpr std::string_view OutlineKinds[] = {"LWPOLYLINE", "POLYLINE", "CIRCLE", "ELLIPSE",
                                             "SPLINE"};

TDXFAddEntity FindKind(std::string_view name) {
    for (const TKind& kind : Kinds)
        if (kind.Name == name) return kind.Add;
    return nullptr;
}

/// What the repeats of a block mean for the progress.
class TRepeats {
public:
    TRepeats(TDXFTags& tags, double bytes)
        : m_tags(tags), m_left(static_cast<qint64>(std::min(bytes, double(TDXFLimits::MaxBytes)))) {
        m_tags.ExpectRepeats(m_left);
    }
    ~TRepeats() { m_tags.ExpectRepeats(-m_left); }
    Q_DISABLE_COPY_MOVE(TRepeats)

    void Count(std::size_t bytes) {
        m_tags.CountRepeat(bytes);
        m_left -= static_cast<qint64>(bytes);
    }

private:
    TDXFTags& m_tags;
    qint64 m_left;
};

template <class TList>
bool Contains(const TList& list, std::string_view name) {
    return std::find(std::begin(list), std::end(list), name) != std::end(list);
}

bool AttributesFollow(TDXFTags& tags) {
    tags.NextGroupCode();
    const bool follow = tags.ValStr() == "ATTRIB";
    tags.go_back_to_last();
    return follow;
}

} // namespace

TDXFExtendedReader::TDXFExtendedReader(TDXFDrawing& drawing, TDXFOtherDrawings& others)
    : m_drawing(drawing), m_sheets(drawing), m_limits(drawing.Limits), m_others(others) {}

void TDXFExtendedReader::ReadLayer() {
    if (!m_record.Read(m_drawing.Tags) || !m_record.Has(2)) return;
    const std::string_view name = m_record.Text(2);
    const bool isOfOther = !m_drawing.Options.LayerPrefix.isEmpty();
    if (isOfOther && name == "0") return; // the layer of the insertion
    // What the drawing says of layers of others goes first.
    const bool isKept = isOfOther && m_drawing.Layers.FindLayer(name);
    TZEPObject* layer = m_drawing.Layers.Declare(name);
    if (!layer) return;
    if (!isKept) SetLook(*layer);
    m_sheets.AddLayer(m_record, layer);
    m_drawing.LineTypes.SetOfLayer(layer, m_record.Text(6));
    m_drawing.Weights.OfLayers[layer] = m_record.Integer(370, TDXFWeights::Default);
}

/// A layer is off where its colour is negative.
void TDXFExtendedReader::SetLook(TZEPObject& layer) {
    const int number = std::clamp(m_record.Integer(62, WhiteNumber), -MaxNumber, MaxNumber);
    const bool isFrozen = m_record.Flag(70, FrozenFlag);
    layer.SetColor(m_record.Has(420) ? DXFTrueColor(m_record.Integer(420), std::abs(number))
                                     : DXFPaletteColor(std::abs(number)));
    if (number < 0 || isFrozen) layer.SetVisible(false);
    if (isFrozen) m_frozen.insert(&layer);
}

template <class Add>
void TDXFExtendedReader::ReadTable(std::string_view kind, Add&& add) {
    TDXFTags& tags = m_drawing.Tags;
    while (tags.NextGroupCode() >= 0 && !m_drawing.IsAtEnd("ENDTAB"))
        if (tags.Code() == 0 && tags.ValStr() == kind && m_record.Read(tags)) add();
}

void TDXFExtendedReader::ReadLineTypes() {
    ReadTable("LTYPE", [this] {
        m_drawing.LineTypes.Add(m_record, m_drawing.Text);
        m_drawing.Handles.Add(m_record);
    });
}

void TDXFExtendedReader::ReadTextStyles() {
    ReadTable("STYLE", [this] {
        m_drawing.TextStyles.Add(m_record);
        m_drawing.Handles.Add(m_record);
    });
}

void TDXFExtendedReader::ReadDimensionStyles() {
    ReadTable("DIMSTYLE", [this] { m_drawing.DimensionStyles.Add(m_record); });
}

void TDXFExtendedReader::ReadBlockRecords() {
    ReadTable("BLOCK_RECORD", [this] { m_drawing.Handles.Add(m_record); });
}

void TDXFExtendedReader::ReadObjects() {
    TDXFTags& tags = m_drawing.Tags;
    while (tags.NextGroupCode() >= 0 && !m_drawing.IsAtEnd("ENDSEC")) {
        if (tags.Code() == 102 && tags.ValStr().starts_with(OwnLookOfLayer))
            m_sheets.AddOwnLook(tags.LineNumber());
        if (tags.Code() != 0 || tags.ValStr() != "LAYOUT") continue;
        if (m_record.Read(tags)) m_sheets.AddLayout(m_record);
    }
}

void TDXFExtendedReader::ReadSheets() {
    m_sheets.ForEachBlock([this](std::string_view name, TDXFScope& scope) {
        const TDXFBlock* block = m_blocks.Find(name);
        if (!block || block->Size == 0) return;
        m_drawing.Tags.Goto(block->Begin);
        ReadEntities(scope, "ENDBLK");
    });
    m_sheets.Finish();
}

void TDXFExtendedReader::ReadEntities() {
    TDXFScope scope(m_drawing);
    ReadEntities(scope, "ENDSEC");
}

// NOLINTNEXTLINE(misc-no-recursion)
void TDXFExtendedReader::ReadEntitiesInto(TDXFScope& scope) {
    m_drawing.Tags.Goto({});
    while (m_drawing.Tags.skip_upto_section("ENTITIES")) {
        ReadEntities(scope, "ENDSEC");
        if (m_drawing.Tags.IsCut())
            m_drawing.Report.Add("ENTITIES", TDXFReport::TReason::CutOff,
                                 m_drawing.Tags.LineNumber());
        m_drawing.Tags.PassSearched();
    }
}

// NOLINTNEXTLINE(misc-no-recursion): as deep as `TDXFScope::MaxDepth`
void TDXFExtendedReader::ReadEntities(TDXFScope& scope, std::string_view end) {
    TDXFTags& tags = m_drawing.Tags;
    while (tags.NextGroupCode() >= 0) {
        if (tags.Code() != 0) continue;
        if (m_drawing.IsAtEnd(end)) return;
        if (end == "ENDBLK" && tags.ValStr() == "BLOCK") return;
        if (scope.IsInBlock() && m_limits.AreReached()) return;
        ReadEntity(scope);
    }
}

// NOLINTNEXTLINE(misc-no-recursion)
void TDXFExtendedReader::ReadEntity(TDXFScope& scope) {
    TDXFTags& tags = m_drawing.Tags;
    const std::string_view kind = tags.ValStr();
    const TDXFAddEntity add = FindKind(kind);
    const bool isInsert = kind == "INSERT";
    if (kind == "VIEWPORT") return ReadViewport(scope);
    if (!add && !isInsert) {
        if (!Contains(SilentKinds, kind))
            m_drawing.Report.Add(kind, TDXFReport::TReason::NotDrawn, tags.LineNumber());
        return;
    }
    if (!m_record.Read(tags)) return;
    const bool isOnPaper = m_record.Integer(67) != 0 && !scope.IsOnSheet();
    TDXFScope& space = isOnPaper && !scope.IsInBlock() ? m_sheets.ScopeOf(m_record) : scope;
    TDXFBuilder builder(m_drawing, space, m_limits, *this);
    if (isOnPaper && scope.IsInBlock())
        return builder.Pass(m_record, TDXFReport::TReason::PaperSpace);
    if (isInsert) return ReadInsert(space);
    if (space.IsSheet() && Contains(OutlineKinds, kind)) return AddOnSheet(add, builder);
    add(builder, m_record);
}

/// In a model it shows nothing.
void TDXFExtendedReader::ReadViewport(TDXFScope& scope) {
    TDXFTags& tags = m_drawing.Tags;
    const TDXFPosition begin = tags.Position();
    if (!m_record.Read(tags) || scope.IsInBlock()) return;
    if (!scope.IsSheet() && m_record.Integer(67) == 0) return;
    TDXFScope& sheet = scope.IsSheet() ? scope : m_sheets.ScopeOf(m_record);
    const TDXFWindow window = TDXFWindow::Of(m_record, tags, begin);
    if (tags.Cancelled()) return; // the host may have freed what is there
    TDXFBuilder builder(m_drawing, sheet, m_limits, *this);
    m_sheets.AddViewport(builder, m_record, window);
}

/// What may be the outline of a viewport. Of a wide polyline that is the line in its middle.
void TDXFExtendedReader::AddOnSheet(TDXFAddEntity add, TDXFBuilder& builder) {
    TZEPObject* layer = builder.Scope.LayerOf(m_record);
    const QPointer<TZEPObject> part = layer ? builder.Scope.ParentOn(layer) : nullptr;
    const int first = part ? part->GetItemsCount() : 0;
    const quint64 handle = DXFHandle(m_record.Text(5));
    add(builder, m_record);
    for (int i = first; part && i < part->GetItemsCount(); ++i)
        m_sheets.AddOutline(handle, *part->GetItem(i));
}

// NOLINTNEXTLINE(misc-no-recursion)
void TDXFExtendedReader::ReadInsert(TDXFScope& scope) {
    const TDXFBlock* block = m_blocks.Find(m_record.Text(2));
    const auto problem = ProblemOf(scope, block);
    if (problem) m_drawing.Report.Add("INSERT", *problem, m_record.Line());
    if (problem && !AttributesFollow(m_drawing.Tags)) return;
    if (m_record.Has(DictionaryCode) &&
        m_drawing.Objects.HasBoundary(m_record.Text(DictionaryCode)))
        m_drawing.Report.Add("INSERT", TDXFReport::TReason::NotClipped, m_record.Line());
    Insert(scope, m_record, problem ? nullptr : block, TDXFInsertion::Of(m_record), true);
}

// What the record of all scopes holds is needed again behind the insertion.
// NOLINTNEXTLINE(misc-no-recursion)
bool TDXFExtendedReader::InsertNamed(TDXFScope& scope, const TDXFRecord& record,
                                     std::string_view name, const TDXFInsertion& insertion) {
    const TDXFBlock* block = m_blocks.Find(name);
    if (!block) return false;
    const auto problem = ProblemOf(scope, block);
    if (problem) {
        m_drawing.Report.Add(record.Kind(), *problem, record.Line());
        return true;
    }
    TDXFRecord kept;
    std::swap(kept, m_record);
    Insert(scope, &record == &m_record ? kept : record, block, insertion, false);
    std::swap(kept, m_record);
    return true;
}

std::optional<TDXFReport::TReason> TDXFExtendedReader::ProblemOf(const TDXFScope& scope,
                                                                 const TDXFBlock* block) {
    if (!block) return TDXFReport::TReason::NoBlock;
    if (scope.IsWithin(*block)) return TDXFReport::TReason::InItself;
    if (scope.Depth() >= TDXFScope::MaxDepth) return TDXFReport::TReason::TooDeep;
    return std::nullopt;
}

// NOLINTNEXTLINE(misc-no-recursion)
void TDXFExtendedReader::Insert(TDXFScope& scope, const TDXFRecord& record, const TDXFBlock* block,
                                TDXFInsertion insertion, bool withAttributes) {
    const qint64 line = record.Line();
    const std::string_view kind = record.Kind();
    TZEPObject* const layer = scope.LayerOf(record);
    if (!layer) return m_drawing.Report.Add(kind, TDXFReport::TReason::NoLayer, line);
    insertion.Hidden = insertion.Hidden || m_frozen.contains(layer);
    const TDXFLook look = scope.LookOf(record, *layer);
    if (block && block->IsOther) InsertOther(scope, *block, insertion, look, line);
    if (block && !block->IsOther) InsertCells(scope, *block, insertion, look);
    if (withAttributes) ReadAttributes(scope, insertion, look);
    if (m_limits.AreReached() && !scope.IsInBlock())
        m_drawing.Report.Add(kind, TDXFReport::TReason::TooMany, line);
}

// NOLINTNEXTLINE(misc-no-recursion)
void TDXFExtendedReader::InsertCells(TDXFScope& scope, const TDXFBlock& block,
                                     const TDXFInsertion& insertion, const TDXFLook& look) {
    TDXFTags& tags = m_drawing.Tags;
    const TDXFPosition back = tags.Position();
    TRepeats repeats(tags, double(block.Size) * insertion.Rows * insertion.Columns);
    for (int row = 0; row < insertion.Rows; ++row)
        for (int column = 0; column < insertion.Columns; ++column) {
            if (block.Size == 0 || tags.Cancelled() || !m_limits.TakeInsertion(block.Size)) return;
            TDXFScope inner(scope, block, insertion.Single(column, row), look);
            tags.Goto(block.Begin);
            ReadEntities(inner, "ENDBLK");
            tags.Goto(back);
            repeats.Count(block.Size);
        }
}

/// In each cell, by the reader of the other drawing.
// NOLINTNEXTLINE(misc-no-recursion)
void TDXFExtendedReader::InsertOther(TDXFScope& scope, const TDXFBlock& block,
                                     const TDXFInsertion& insertion, const TDXFLook& look,
                                     qint64 line) {
    if (block.IsOverlay && !m_drawing.Options.LayerPrefix.isEmpty()) return;
    const TDXFOtherDrawing other = m_others.Find(block, line);
    if (!other.Reader) return m_drawing.Report.Add("INSERT", other.Reason, line);
    TDXFTags& tags = m_drawing.Tags;
    TRepeats repeats(tags, double(other.Size) * insertion.Rows * insertion.Columns);
    for (int row = 0; row < insertion.Rows; ++row)
        for (int column = 0; column < insertion.Columns; ++column) {
            if (tags.Cancelled() || !m_limits.TakeInsertion(other.Size)) return;
            TDXFScope inner(other.Reader->Drawing(), scope, block, insertion.Single(column, row),
                            look);
            other.Reader->ReadEntitiesInto(inner);
            repeats.Count(other.Size);
        }
}

/// The texts that stand behind an insertion.
void TDXFExtendedReader::ReadAttributes(TDXFScope& scope, const TDXFInsertion& insertion,
                                        const TDXFLook& look) {
    TDXFTags& tags = m_drawing.Tags;
    while (tags.NextGroupCode() == 0 && tags.ValStr() == "ATTRIB") {
        if (!m_record.Read(tags)) return;
        AddAttribute(scope, insertion, look);
    }
    if (tags.Code() == 0) tags.go_back_to_last();
}

/// In each cell.
void TDXFExtendedReader::AddAttribute(TDXFScope& scope, TDXFInsertion insertion,
                                      const TDXFLook& look) {
    const TDXFInsertion first = insertion;
    for (int row = 0; row < first.Rows; ++row)
        for (int column = 0; column < first.Columns; ++column) {
            const bool isRepeat = row != 0 || column != 0;
            if (isRepeat && !m_limits.TakeObject(0)) return;
            insertion.Place = first.WayTo(column, row);
            TDXFScope beside(scope, insertion, look);
            TDXFBuilder builder(m_drawing, beside, m_limits, *this);
            if (m_record.Integer(67) != 0 && !beside.IsOnSheet())
                return builder.Pass(m_record, TDXFReport::TReason::PaperSpace);
            AddDXFText(builder, m_record);
        }
}

} // namespace ZEP
