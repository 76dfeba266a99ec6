#include <zep/converters/dxf/Curves.h>
#include <zep/converters/dxf/annotation/Sketch.h>
#include <zep/scene/Vectors.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

/// Of a style (group 70).
enum TMultiLineStyleFlag {
    msFilled = 1,
    msMiters = 2,
    msStartSquare = 16,
    msStartInner = 32,
    msStartRound = 64,
    msEndSquare = 256,
    msEndInner = 512,
    msEndRound = 1024
};
/// Of a multiline (group 71).
enum TMultiLineFlag { mlClosed = 2, mlNoStart = 4, mlNoEnd = 8 };

struct TMultiLineElement {
    double Offset = 0;
    TDXFInk Ink{};
};

/// By layer means as the whole.
TDXFInk ElementInk(int number) {
    constexpr int byLayer = 256;
    return number == byLayer ? TDXFInk() : TDXFInk::OfNumber(number);
}

std::vector<TMultiLineElement> ElementsOf(const TDXFRecord& style) {
    std::vector<TMultiLineElement> elements;
    for (const TDXFRecord::TTag& tag : style.Tags()) {
        if (tag.Code == 49) elements.push_back({.Offset = tag.Number()});
        if (elements.empty()) continue;
        if (tag.Code == 62) elements.back().Ink = ElementInk(DXFInteger(tag.Value));
        if (tag.Code == 420) elements.back().Ink.TrueColor = DXFInteger(tag.Value);
        if (tag.Code == 6 && FoldedDXFName(tag.Value) != "bylayer")
            elements.back().Ink.LineType = tag.Value;
    }
    return elements;
}

/// The colour of the area stands before those of the elements.
TDXFInk FillInk(const TDXFRecord& style) {
    TDXFInk ink;
    for (const TDXFRecord::TTag& tag : style.Tags()) {
        if (tag.Code == 49) break;
        if (tag.Code == 62) ink = ElementInk(DXFInteger(tag.Value));
        if (tag.Code == 420) ink.TrueColor = DXFInteger(tag.Value);
    }
    return ink;
}

/// Where the elements run through a corner, which the file says.
struct TMultiLineCorner {
    TGLArrayd3 Place{}, Way{}, Miter{};
    /// Of each element: how far off along the miter, and from there along the way where its line
    /// begins, stops, begins again ...
    std::vector<std::vector<double>> Elements{};

    [[nodiscard]] TGLArrayd3 PlaceOf(std::size_t element) const {
        return Elements[element].empty() ? Place : Place + Miter * Elements[element].front();
    }
};

std::vector<TMultiLineCorner> CornersOfMultiLine(const TDXFRecord& record) {
    std::vector<TMultiLineCorner> corners;
    for (const TDXFRecord::TTag& tag : record.Tags()) {
        if (tag.Code == 11) corners.emplace_back();
        if (corners.empty()) continue;
        TMultiLineCorner& corner = corners.back();
        tag.SetCoordinate(11, corner.Place);
        tag.SetCoordinate(12, corner.Way);
        tag.SetCoordinate(13, corner.Miter);
        if (tag.Code == 74) corner.Elements.emplace_back();
        if (tag.Code == 41 && !corner.Elements.empty())
            corner.Elements.back().push_back(tag.Number());
    }
    return corners;
}

/// The points between both, counter-clockwise.
void AppendHalfCircle(const TGLArrayd3& from, const TGLArrayd3& to,
                      std::vector<TGLArrayd3>& points) {
    const TGLArrayd3 center = Middle(from, to);
    const TDXFChain arc =
        EllipseChain({.Center = center, .MajorAxis = from - center, .End = std::numbers::pi});
    if (arc.Points.size() > 2)
        points.insert(points.end(), arc.Points.begin() + 1, arc.Points.end() - 1);
}

class TMultiLine {
public:
    TMultiLine(TDXFBuilder& builder, const TDXFRecord& record);

    /// Each corner says where all elements are.
    [[nodiscard]] bool IsLine() const {
        return m_corners.size() > 1 && !m_elements.empty() &&
               std::ranges::all_of(m_corners, [this](const TMultiLineCorner& corner) {
                   return corner.Elements.size() == m_elements.size();
               });
    }
    void Add() const;

private:
    void AddElement(std::size_t element) const;
    void AddArea() const;
    void AddMiters() const;
    void AddCap(std::size_t corner, int flags, bool atEnd) const;
    void AddArc(std::size_t corner, std::size_t from, std::size_t to) const;
    void AddStroke(std::size_t corner) const;
    [[nodiscard]] bool IsClosed() const { return m_record.Flag(71, mlClosed); }

    const TDXFRecord& m_record;
    TDXFSketch m_sketch;
    const TDXFRecord* m_style;
    std::vector<TMultiLineElement> m_elements;
    std::vector<TMultiLineCorner> m_corners; // in the plane
    std::vector<std::size_t> m_order;        // of the elements, from one side to the other
};

TMultiLine::TMultiLine(TDXFBuilder& builder, const TDXFRecord& record)
    : m_record(record), m_sketch(builder, record, record.Point(210, unitz)),
      m_style(builder.Drawing.Objects.Find(record.Text(340), "MLINESTYLE")),
      m_corners(CornersOfMultiLine(record)) {
    for (TMultiLineCorner& corner : m_corners) {
        corner.Place = m_sketch.ToPlane(corner.Place);
        corner.Way = m_sketch.ToPlane(corner.Way);
        corner.Miter = m_sketch.ToPlane(corner.Miter);
    }
    if (m_corners.empty()) return;
    if (m_style) m_elements = ElementsOf(*m_style);
    m_elements.resize(m_corners.front().Elements.size());
    for (std::size_t i = 0; i < m_elements.size(); ++i) m_order.push_back(i);
    const auto offset = [this](std::size_t i) {
        const auto& values = m_corners.front().Elements[i];
        return values.empty() ? 0 : values.front();
    };
    std::ranges::sort(m_order, {}, offset);
}

/// A chain from corner to corner, broken where the file says so.
void TMultiLine::AddElement(std::size_t element) const {
    const TDXFInk& ink = m_elements[element].Ink;
    const std::size_t sides = m_corners.size() - (IsClosed() ? 0 : 1);
    bool isWhole = true;
    std::vector<TGLArrayd3> chain{m_corners.front().PlaceOf(element)};
    for (std::size_t i = 0; i < sides; ++i) {
        const TMultiLineCorner& corner = m_corners[i];
        const TGLArrayd3 start = corner.PlaceOf(element);
        for (std::size_t k = 2; k < corner.Elements[element].size(); ++k) {
            const TGLArrayd3 place = start + corner.Way * corner.Elements[element][k];
            isWhole = false;
            if (k % 2 != 0) {
                chain = {place};
                continue;
            }
            chain.push_back(place);
            m_sketch.Chain(std::move(chain), ink);
            chain.clear();
        }
        if (!chain.empty()) chain.push_back(m_corners[(i + 1) % m_corners.size()].PlaceOf(element));
        if (chain.empty()) chain = {m_corners[(i + 1) % m_corners.size()].PlaceOf(element)};
    }
    const bool isRound = isWhole && IsClosed();
    if (isRound) chain.pop_back();
    if (chain.size() > 1) m_sketch.Chain(std::move(chain), ink, isRound);
}

void TMultiLine::AddArea() const {
    std::vector<TGLArrayd3> near, far;
    for (const TMultiLineCorner& corner : m_corners) {
        near.push_back(corner.PlaceOf(m_order.front()));
        far.push_back(corner.PlaceOf(m_order.back()));
    }
    if (IsClosed()) return m_sketch.Area({near, far}, FillInk(*m_style));
    const int style = m_style->Integer(70);
    if ((style & msEndRound) != 0) AppendHalfCircle(near.back(), far.back(), near);
    near.insert(near.end(), far.rbegin(), far.rend());
    if ((style & msStartRound) != 0) AppendHalfCircle(far.front(), near.front(), near);
    m_sketch.Area({near}, FillInk(*m_style));
}

/// From one side to the other, each half in the colour of its side.
void TMultiLine::AddStroke(std::size_t corner) const {
    const std::size_t first = m_order.front(), last = m_order.back();
    const TGLArrayd3 near = m_corners[corner].PlaceOf(first), far = m_corners[corner].PlaceOf(last);
    const TGLArrayd3 middle = Middle(near, far);
    m_sketch.Line(near, middle, m_elements[first].Ink);
    m_sketch.Line(middle, far, m_elements[last].Ink);
}

void TMultiLine::AddMiters() const {
    for (std::size_t i = 0; i < m_corners.size(); ++i)
        if (IsClosed() || (i != 0 && i + 1 != m_corners.size())) AddStroke(i);
}

/// Half a circle, each half of it in the colour of its element.
void TMultiLine::AddArc(std::size_t corner, std::size_t from, std::size_t to) const {
    const TGLArrayd3 a = m_corners[corner].PlaceOf(from), b = m_corners[corner].PlaceOf(to);
    const TGLArrayd3 center = Middle(a, b);
    const double radius = Distance(a, b) / 2;
    const double start = std::atan2(a[1] - center[1], a[0] - center[0]);
    const double middle = start + std::numbers::pi / 2;
    m_sketch.Arc(center, radius, start, middle, m_elements[from].Ink);
    m_sketch.Arc(center, radius, middle, start + std::numbers::pi, m_elements[to].Ink);
}

/// \param flags  of the style, those of the start
void TMultiLine::AddCap(std::size_t corner, int flags, bool atEnd) const {
    constexpr std::size_t leastForInner = 4;
    const auto arc = [&](std::size_t inward) {
        const std::size_t near = m_order[inward], far = m_order[m_order.size() - 1 - inward];
        AddArc(corner, atEnd ? near : far, atEnd ? far : near);
    };
    if ((flags & msStartSquare) != 0) AddStroke(corner);
    if ((flags & msStartRound) != 0) arc(0);
    if ((flags & msStartInner) != 0 && m_order.size() >= leastForInner) arc(1);
}

void TMultiLine::Add() const {
    constexpr int startBits = 4; // up to the same flags of the end
    const int style = m_style ? m_style->Integer(70) : 0;
    const int flags = m_record.Integer(71);
    if ((style & msFilled) != 0) AddArea();
    for (std::size_t i = 0; i < m_elements.size(); ++i) AddElement(i);
    if ((style & msMiters) != 0) AddMiters();
    if (IsClosed()) return;
    if ((flags & mlNoStart) == 0) AddCap(0, style, false);
    if ((flags & mlNoEnd) == 0) AddCap(m_corners.size() - 1, style >> startBits, true);
}

} // namespace

void AddDXFMultiLine(TDXFBuilder& builder, const TDXFRecord& record) {
    const TMultiLine line(builder, record);
    if (!line.IsLine()) return builder.Pass(record, TDXFReport::TReason::NoPoints);
    line.Add();
}

} // namespace ZEP
