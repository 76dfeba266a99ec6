#include <zep/converters/dxf/Extended.h>

#include <zep/converters/dxf/Palette.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace ZEP {

namespace {

constexpr int FrozenFlag = 1;
constexpr int WhiteNumber = 7;
constexpr int MaxNumber = 256;

struct TKind {
    std::string_view Name;
    TDXFAddEntity Add;
};

constexpr TKind Kinds[] = {
    {"LINE", AddDXFLine},         {"LWPOLYLINE", AddDXFLightPolyline},
    {"POLYLINE", AddDXFPolyline}, {"ARC", AddDXFArc},
    {"CIRCLE", AddDXFCircle},     {"POINT", AddDXFPoint},
    {"TEXT", AddDXFText},         {"ATTRIB", AddDXFText},
    {"ATTDEF", AddDXFText},       {"MTEXT", AddDXFLines},
    {"3DFACE", AddDXFFace},       {"SOLID", AddDXFSolid},
    {"TRACE", AddDXFSolid},       {"ELLIPSE", AddDXFEllipse},
    {"SPLINE", AddDXFSpline},     {"HELIX", AddDXFSpline},
    {"HATCH", AddDXFHatch},
};

/// What belongs to other entities, or shows nothing in a model.
constexpr std::string_view SilentKinds[] = {"SEQEND", "VERTEX", "VIEWPORT", "BLOCK", "ENDBLK"};

/// What shows an anonymous block made for it.
constexpr std::string_view DimensionKinds[] = {"DIMENSION", "ARC_DIMENSION",
                                               "LARGE_RADIAL_DIMENSION"};

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

TDXFExtendedReader::TDXFExtendedReader(TDXFDrawing& drawing)
    : m_drawing(drawing), m_limits(drawing.Budget) {}

// A layer is off where its colour is negative.
void TDXFExtendedReader::ReadLayer() {
    if (!m_record.Read(m_drawing.Tags) || !m_record.Has(2)) return;
    TZEPObject* layer = m_drawing.Layers.Declare(m_record.Text(2));
    if (!layer) return;
    const int number = std::clamp(m_record.Integer(62, WhiteNumber), -MaxNumber, MaxNumber);
    const bool isFrozen = m_record.Flag(70, FrozenFlag);
    layer->SetColor(m_record.Has(420) ? DXFTrueColor(m_record.Integer(420), std::abs(number))
                                      : DXFPaletteColor(std::abs(number)));
    if (number < 0 || isFrozen) layer->SetVisible(false);
    if (isFrozen) m_frozen.insert(layer);
    m_drawing.LineTypes.SetOfLayer(layer, m_record.Text(6));
    m_drawing.Weights.OfLayers[layer] = m_record.Integer(370, TDXFWeights::Default);
}

template <class Add>
void TDXFExtendedReader::ReadTable(std::string_view kind, Add&& add) {
    TDXFTags& tags = m_drawing.Tags;
    while (tags.NextGroupCode() >= 0 && !m_drawing.IsAtEnd("ENDTAB"))
        if (tags.Code() == 0 && tags.ValStr() == kind && m_record.Read(tags)) add();
}

void TDXFExtendedReader::ReadLineTypes() {
    ReadTable("LTYPE", [this] { m_drawing.LineTypes.Add(m_record, m_drawing.Text); });
}

void TDXFExtendedReader::ReadTextStyles() {
    ReadTable("STYLE", [this] { m_drawing.TextStyles.Add(m_record); });
}

void TDXFExtendedReader::ReadEntities() {
    TDXFScope scope(m_drawing);
    ReadEntities(scope, "ENDSEC");
}

// NOLINTNEXTLINE(misc-no-recursion): as deep as `TDXFScope::MaxDepth`
void TDXFExtendedReader::ReadEntities(TDXFScope& scope, std::string_view end) {
    TDXFTags& tags = m_drawing.Tags;
    while (tags.NextGroupCode() >= 0) {
        if (tags.Code() != 0) continue;
        if (m_drawing.IsAtEnd(end)) return;
        if (scope.IsInBlock() && (tags.ValStr() == "BLOCK" || m_limits.AreReached())) return;
        ReadEntity(scope);
    }
}

// NOLINTNEXTLINE(misc-no-recursion)
void TDXFExtendedReader::ReadEntity(TDXFScope& scope) {
    TDXFTags& tags = m_drawing.Tags;
    const std::string_view kind = tags.ValStr();
    const TDXFAddEntity add = FindKind(kind);
    const bool isInsert = kind == "INSERT";
    const bool isDimension = Contains(DimensionKinds, kind);
    if (!add && !isInsert && !isDimension) {
        if (!Contains(SilentKinds, kind))
            m_drawing.Report.Add(kind, TDXFReport::TReason::NotDrawn, tags.LineNumber());
        return;
    }
    if (!m_record.Read(tags)) return;
    TDXFBuilder builder(m_drawing, scope, m_limits);
    if (m_record.Integer(67) != 0) return builder.Pass(m_record, TDXFReport::TReason::PaperSpace);
    if (isInsert) return ReadInsert(scope);
    if (isDimension) return ReadDimension(scope);
    add(builder, m_record);
}

// NOLINTNEXTLINE(misc-no-recursion)
void TDXFExtendedReader::ReadInsert(TDXFScope& scope) {
    const TDXFBlock* block = m_blocks.Find(m_record.Text(2));
    const auto problem = ProblemOf(scope, block);
    if (problem) m_drawing.Report.Add("INSERT", *problem, m_record.Line());
    if (problem && !AttributesFollow(m_drawing.Tags)) return;
    Insert(scope, problem ? nullptr : block, TDXFInsertion::Of(m_record));
}

// NOLINTNEXTLINE(misc-no-recursion)
void TDXFExtendedReader::ReadDimension(TDXFScope& scope) {
    const TDXFBlock* block = m_blocks.Find(m_record.Text(2));
    const auto problem = ProblemOf(scope, block);
    if (problem)
        return m_drawing.Report.Add(m_record.Kind(), TDXFReport::TReason::NotDrawn,
                                    m_record.Line());
    Insert(scope, block, {.Hidden = m_record.Integer(60) != 0, .OfDimension = true});
}

std::optional<TDXFReport::TReason> TDXFExtendedReader::ProblemOf(const TDXFScope& scope,
                                                                 const TDXFBlock* block) {
    if (!block) return TDXFReport::TReason::NoBlock;
    if (scope.IsWithin(*block)) return TDXFReport::TReason::InItself;
    if (scope.Depth() >= TDXFScope::MaxDepth) return TDXFReport::TReason::TooDeep;
    return std::nullopt;
}

// NOLINTNEXTLINE(misc-no-recursion)
void TDXFExtendedReader::Insert(TDXFScope& scope, const TDXFBlock* block, TDXFInsertion insertion) {
    const qint64 line = m_record.Line();
    const std::string_view kind = m_record.Kind();
    TZEPObject* const layer = scope.LayerOf(m_record);
    if (!layer) return m_drawing.Report.Add(kind, TDXFReport::TReason::NoLayer, line);
    insertion.Hidden = insertion.Hidden || m_frozen.contains(layer);
    const TDXFLook look = scope.LookOf(m_record, *layer);
    if (block) InsertCells(scope, *block, insertion, look);
    ReadAttributes(scope, insertion, look);
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
            TDXFBuilder builder(m_drawing, beside, m_limits);
            if (m_record.Integer(67) != 0)
                return builder.Pass(m_record, TDXFReport::TReason::PaperSpace);
            AddDXFText(builder, m_record);
        }
}

} // namespace ZEP
