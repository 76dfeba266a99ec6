#include <zep/converters/dxf/annotation/Sketch.h>
#include <zep/scene/Vectors.h>

#include <algorithm>
#include <numbers>

namespace ZEP {

namespace {

/// What a record of a multileader holds, part by part.
enum TMultiLeaderMark {
    mmContext = 300,
    mmContextEnd = 301,
    mmLeader = 302,
    mmLeaderEnd = 303,
    mmLine = 304,
    mmLineEnd = 305
};
constexpr std::string_view ContextMark = "CONTEXT_DATA{";
constexpr std::string_view LeaderMark = "LEADER{";
constexpr std::string_view LineMark = "LEADER_LINE{";

constexpr int CurveType = 2;

/// A stretch of a leader's line that other things cover.
struct TLeaderGap {
    int Piece = 0;
    TGLArrayd3 Start{}, End{};
};

struct TLeaderLine {
    std::vector<TGLArrayd3> Points{};
    std::vector<TLeaderGap> Gaps{};
    int Index = 0;
    int Color = 0; ///< raw
};

void TakeOfLine(const TDXFRecord::TTag& tag, TLeaderLine& line, int& piece) {
    if (tag.Code == 10) line.Points.emplace_back();
    if (!line.Points.empty()) tag.SetCoordinate(10, line.Points.back());
    if (tag.Code == 90) piece = DXFInteger(tag.Value);
    if (tag.Code == 11) line.Gaps.push_back({.Piece = piece});
    if (!line.Gaps.empty()) {
        tag.SetCoordinate(11, line.Gaps.back().Start);
        tag.SetCoordinate(12, line.Gaps.back().End);
    }
    if (tag.Code == 91) line.Index = DXFInteger(tag.Value);
    if (tag.Code == 92) line.Color = DXFInteger(tag.Value);
}

/// The groups of a multileader that stand neither in a leader nor in a line, of which there are
/// many.
struct TMultiLeaderGroups {
    explicit TMultiLeaderGroups(const TDXFRecord& record);

    TDXFRecord Body, Context;

private:
    void Take(const TDXFRecord::TTag& tag);

    bool m_isInContext = false;
    int m_depth = 0;
};

TMultiLeaderGroups::TMultiLeaderGroups(const TDXFRecord& record) {
    Body.Begin(record.Kind(), record.Line());
    Context.Begin(record.Kind(), record.Line());
    for (const TDXFRecord::TTag& tag : record.Tags()) Take(tag);
}

void TMultiLeaderGroups::Take(const TDXFRecord::TTag& tag) {
    if (tag.Code == mmContext && tag.Value == ContextMark) m_isInContext = true;
    if (tag.Code == mmLeader && m_isInContext && tag.Value == LeaderMark) ++m_depth;
    if (m_depth == 0) (m_isInContext ? Context : Body).Add(tag.Code, tag.Value);
    if (tag.Code == mmLeaderEnd && m_depth > 0) --m_depth;
    if (tag.Code == mmContextEnd) m_isInContext = false;
}

/// The handles of heads that lines have by their indexes.
QHash<int, std::string_view> ArrowsOf(const TDXFRecord& body) {
    QHash<int, std::string_view> arrows;
    int index = -1;
    for (const TDXFRecord::TTag& tag : body.Tags()) {
        if (tag.Code == 94) index = DXFInteger(tag.Value);
        if (tag.Code == 345) arrows.insert(index, tag.Value);
    }
    return arrows;
}

class TDXFMultiLeader {
public:
    TDXFMultiLeader(TDXFBuilder& builder, const TDXFRecord& record)
        : m_builder(builder), m_record(record), m_groups(record),
          m_sketch(builder, record, m_context.Point(m_context.Integer(290) != 0 ? 11 : 14, unitz)) {
    }

    void AddContent();
    void AddLeaders();

private:
    void AddText();
    void AddFrame(const TDXFNote& note);
    void AddBlock();
    [[nodiscard]] std::shared_ptr<const TDXFAttributeTexts> BlockTexts() const;
    void AddLeader(const TDXFRecord& leader, const std::vector<TLeaderLine>& lines);
    void AddLine(const TDXFRecord& leader, const TLeaderLine& line);
    void AddPieces(const std::vector<TGLArrayd3>& points, const TLeaderLine& line,
                   const TDXFInk& ink);
    void AddUnderline(const TGLArrayd3& connection);
    [[nodiscard]] TDXFNote Note() const;
    [[nodiscard]] TGLArrayd3 DoglegOf(const TDXFRecord& leader) const;
    [[nodiscard]] std::string_view ArrowOf(int line) const;
    [[nodiscard]] TDXFInk InkOf(int raw) const;
    [[nodiscard]] bool IsHorizontal(const TDXFRecord& leader) const {
        return leader.Integer(271) == 0;
    }

    TDXFBuilder& m_builder;
    const TDXFRecord& m_record;
    TMultiLeaderGroups m_groups;
    const TDXFRecord& m_body = m_groups.Body;
    const TDXFRecord& m_context = m_groups.Context;
    const QHash<int, std::string_view> m_arrows = ArrowsOf(m_groups.Body);
    TDXFSketch m_sketch;
};

TDXFInk TDXFMultiLeader::InkOf(int raw) const {
    TDXFInk ink = TDXFInk::OfRaw(raw);
    if (!ink.Color && !ink.TrueColor) ink = TDXFInk::OfRaw(m_body.Integer(91));
    const int weight = m_body.Integer(171, TDXFWeights::ByBlock);
    if (weight != TDXFWeights::ByBlock) ink.Weight = weight;
    ink.LineType = m_builder.Drawing.Handles.NameOf(m_body.Text(341));
    if (FoldedDXFName(ink.LineType) == "byblock") ink.LineType = {};
    return ink;
}

// --- content -----------------------------------------------------------------------------------

void TDXFMultiLeader::AddContent() {
    if (m_context.Integer(290) != 0) return AddText();
    if (m_context.Integer(296) != 0) AddBlock();
}

TDXFNote TDXFMultiLeader::Note() const {
    const double scale = m_context.Number(40, 1);
    return {.Text = m_context.Text(304),
            .Place = m_sketch.ToPlane(m_context.Point(12)),
            .Direction = m_sketch.ToPlane(m_context.Point(13, unitx)),
            .Height = m_context.Number(41, 1),
            .Attachment = m_context.Integer(171, 1),
            .Style = m_builder.Drawing.Handles.NameOf(m_context.Text(340)),
            .Width = m_context.Number(43) * scale,
            .Spacing = m_context.Number(45, 1)};
}

void TDXFMultiLeader::AddText() {
    const TDXFNote note = Note();
    m_sketch.Text(note, TDXFInk::OfRaw(m_context.Integer(90)));
    if (m_body.Integer(292) != 0) AddFrame(note);
    if (m_context.Integer(292) != 0) m_builder.Pass(m_record, TDXFReport::TReason::NoBackground);
}

void TDXFMultiLeader::AddFrame(const TDXFNote& note) {
    const TDXFTextBox box = m_sketch.BoxOf(note);
    const double gap = m_context.Number(145);
    const TGLArrayd3 along = Unit(note.Direction), up{-along[1], along[0], 0};
    const auto corner = [&](double x, double y) { return note.Place + along * x + up * y; };
    const double left = box.Left - gap, right = box.Right + gap;
    const double bottom = box.Bottom - gap, top = box.Top + gap;
    m_sketch.Chain(
        {corner(left, bottom), corner(right, bottom), corner(right, top), corner(left, top)},
        InkOf(0), true);
}

/// The texts of a block's attributes stand in the record, each behind the handle of its definition.
std::shared_ptr<const TDXFAttributeTexts> TDXFMultiLeader::BlockTexts() const {
    auto texts = std::make_shared<TDXFAttributeTexts>();
    quint64 definition = 0;
    for (const TDXFRecord::TTag& tag : m_body.Tags()) {
        if (tag.Code == 330) definition = DXFHandle(tag.Value);
        if (tag.Code == mmLeader) texts->insert(definition, tag.Value);
    }
    return texts;
}

void TDXFMultiLeader::AddBlock() {
    constexpr double degree = std::numbers::pi / 180;
    const TDXFPart part(m_record, m_record.Kind(), TDXFInk::OfRaw(m_context.Integer(93)));
    const std::string_view name = m_builder.Drawing.Handles.NameOf(m_context.Text(341));
    const TDXFInsertion insertion{.Place = m_sketch.ToPlane(m_context.Point(15)),
                                  .Scale = m_context.Point(16, {1, 1, 1}),
                                  .Rotation = m_context.Number(46) / degree,
                                  .Extrusion = m_context.Point(14, unitz),
                                  .Hidden = m_record.Integer(60) != 0,
                                  .Texts = BlockTexts()};
    if (!m_builder.Insert(part.Record(), name, insertion))
        m_builder.Pass(m_record, TDXFReport::TReason::NoBlock);
}

// --- leaders -----------------------------------------------------------------------------------

void TDXFMultiLeader::AddLeaders() {
    if (m_body.Integer(170, 1) == 0) return;
    TDXFRecord leader;
    std::vector<TLeaderLine> lines;
    bool isInLeader = false, isInLine = false;
    int piece = 0;
    for (const TDXFRecord::TTag& tag : m_record.Tags()) {
        if (tag.Code == mmLeader && tag.Value == LeaderMark) {
            isInLeader = true;
            isInLine = false;
            leader.Begin(m_record.Kind(), m_record.Line());
            lines.clear();
        } else if (tag.Code == mmLine && isInLeader && tag.Value == LineMark) {
            isInLine = true;
            piece = 0;
            lines.emplace_back();
        } else if (tag.Code == mmLineEnd) {
            isInLine = false;
        } else if (tag.Code == mmLeaderEnd && isInLeader) {
            AddLeader(leader, lines);
            isInLeader = isInLine = false;
        } else if (isInLine) {
            TakeOfLine(tag, lines.back(), piece);
        } else if (isInLeader) {
            leader.Add(tag.Code, tag.Value);
        }
    }
}

/// From the last point of a leader to its content.
TGLArrayd3 TDXFMultiLeader::DoglegOf(const TDXFRecord& leader) const {
    if (!IsHorizontal(leader)) return zero3d;
    return m_sketch.ToPlane(Unit(leader.Point(11, unitx))) * leader.Number(40, 1);
}

void TDXFMultiLeader::AddLeader(const TDXFRecord& leader, const std::vector<TLeaderLine>& lines) {
    for (const TLeaderLine& line : lines) AddLine(leader, line);
    if (!lines.empty() && m_context.Integer(290) != 0 && IsHorizontal(leader))
        AddUnderline(m_sketch.ToPlane(leader.Point(10)) + DoglegOf(leader));
}

std::string_view TDXFMultiLeader::ArrowOf(int line) const {
    return m_builder.Drawing.Handles.NameOf(m_arrows.value(line, m_body.Text(342)));
}

void TDXFMultiLeader::AddLine(const TDXFRecord& leader, const TLeaderLine& line) {
    const bool isCurve = m_body.Integer(170, 1) == CurveType;
    const bool hasDogleg = m_body.Integer(291, 1) != 0 && !isCurve;
    std::vector<TGLArrayd3> points;
    for (const TGLArrayd3& point : line.Points) points.push_back(m_sketch.ToPlane(point));
    const TGLArrayd3 last = m_sketch.ToPlane(leader.Point(10)), dogleg = DoglegOf(leader);
    if (!IsHorizontal(leader) || hasDogleg) points.push_back(last);
    if (IsHorizontal(leader)) points.push_back(last + dogleg);
    if (points.size() < 2) return;
    const TDXFInk ink = InkOf(line.Color);
    const std::string_view arrow = ArrowOf(line.Index);
    const double size = m_context.Number(140);
    const TGLArrayd3 along = Unit(points[1] - points[0]);
    m_sketch.Arrow(arrow, points[0], -along, size, ink);
    points[0] += along * TDXFSketch::LengthOfArrow(arrow, size);
    if (!isCurve) return AddPieces(points, line, ink);
    const TGLArrayd3 end =
        IsHorizontal(leader) ? dogleg : points.back() - points[points.size() - 2];
    m_sketch.Curve(points, along, end, ink);
}

/// \param points  of the line, in the plane
void TDXFMultiLeader::AddPieces(const std::vector<TGLArrayd3>& points, const TLeaderLine& line,
                                const TDXFInk& ink) {
    std::vector<TLeaderGap> gaps = line.Gaps;
    std::ranges::stable_sort(gaps, {}, &TLeaderGap::Piece);
    auto gap = std::ranges::find_if(gaps, [](const TLeaderGap& one) { return one.Piece >= 0; });
    std::vector<TGLArrayd3> chain;
    for (std::size_t i = 0; i < points.size(); ++i) {
        chain.push_back(points[i]);
        for (; gap != gaps.end() && gap->Piece == static_cast<int>(i); ++gap) {
            chain.push_back(m_sketch.ToPlane(gap->Start));
            m_sketch.Chain(std::move(chain), ink);
            chain = {m_sketch.ToPlane(gap->End)};
        }
    }
    m_sketch.Chain(std::move(chain), ink);
}

/// By how a leader meets its text on that side: below its last line, or below its first.
void TDXFMultiLeader::AddUnderline(const TGLArrayd3& connection) {
    const TDXFNote note = Note();
    const TGLArrayd3 along = Unit(note.Direction);
    const bool isLeft = Dotd(connection - note.Place, along) < 0;
    const int type = m_body.Integer(isLeft ? 173 : 95, 1);
    if (type != 5 && type != 6 && type != 8) return;
    const TDXFTextBox box = m_sketch.BoxOf(note);
    const double way = box.Right - box.Left + m_context.Number(145);
    m_sketch.Line(connection, connection + along * (isLeft ? way : -way), InkOf(0));
}

} // namespace

void AddDXFMultiLeader(TDXFBuilder& builder, const TDXFRecord& record) {
    TDXFMultiLeader leader(builder, record);
    leader.AddContent();
    leader.AddLeaders();
}

} // namespace ZEP
