#include <zep/converters/dxf/EndlessLines.h>

#include <zep/converters/Placing.h>
#include <zep/converters/dxf/Report.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/Vectors.h>
#include <zep/view/Extent.h>

#include <cmath>
#include <limits>
#include <optional>

namespace ZEP {

namespace {

constexpr double Endless = std::numeric_limits<double>::infinity();

/// From where to where, in lengths of its way, a line lies within bounds; nothing where it does
/// not. A line in a plane of one z is seen from above, whatever that z is.
std::optional<std::pair<double, double>> CutByBounds(const TGLArrayd3& place, const TGLArrayd3& way,
                                                     bool isRay, const TZEPBounds& bounds) {
    constexpr double rounding = 1e-9;
    const double room = rounding * DiagonalOf(bounds);
    double begin = isRay ? 0 : -Endless, end = Endless;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (std::abs(way[axis]) < rounding) {
            if (place[axis] < bounds.Min[axis] - room || place[axis] > bounds.Max[axis] + room)
                return {};
            continue;
        }
        const double a = (bounds.Min[axis] - place[axis]) / way[axis];
        const double b = (bounds.Max[axis] - place[axis]) / way[axis];
        begin = std::max(begin, std::min(a, b));
        end = std::min(end, std::max(a, b));
    }
    if (!(begin < end) || !std::isfinite(begin) || !std::isfinite(end)) return {};
    return std::pair(begin, end);
}

/// A drawing of nothing else: about the places of the lines, one unit at least to each side.
TZEPBounds BoundsOfPlaces(const std::vector<TDXFEndlessLines::TLine>& lines) {
    TZEPBounds bounds{lines.front().Place, lines.front().Place};
    for (const TDXFEndlessLines::TLine& line : lines) {
        MinBoundsd(bounds.Min, line.Place);
        MaxBoundsd(bounds.Max, line.Place);
    }
    const double room = std::max(Distance(bounds.Min, bounds.Max), 1.0);
    return {bounds.Min - TGLArrayd3{room, room, room}, bounds.Max + TGLArrayd3{room, room, room}};
}

void SetEnds(TZEPPolyline& line, const TGLArrayd3& a, const TGLArrayd3& b) {
    line.SetOrigColor(line.Color());
    line.SetSmooth(false);
    line.Vertexes()->Add()->SetPoint(a);
    line.Vertexes()->Add()->SetPoint(b);
}

/// Within the bounds of the root, told in the frame of its parent.
bool SetEndsWithin(const TDXFEndlessLines::TLine& line, const TZEPBounds& bounds) {
    TGLArrayd3 place, tip;
    line.Parent->ConvertToAbsolute(line.Place, place);
    line.Parent->ConvertToAbsolute(line.Place + line.Way, tip);
    const auto cut = CutByBounds(place, tip - place, line.IsRay, bounds);
    if (!cut) return false;
    const TGLArrayd3 a = line.Place + line.Way * cut->first;
    const TGLArrayd3 b = line.Place + line.Way * cut->second;
    if (!IsFinite(a) || !IsFinite(b)) return false;
    SetEnds(*line.Object, a, b);
    return true;
}

} // namespace

void TDXFEndlessLines::Take(TDXFEndlessLines& other) {
    m_lines.insert(m_lines.end(), other.m_lines.begin(), other.m_lines.end());
    other.m_lines.clear();
}

void TDXFEndlessLines::Place(TZEPObject& root, TDXFReport& report) {
    if (m_lines.empty()) return;
    const TZEPBounds bounds = VisibleExtent(root).Bounds().value_or(BoundsOfPlaces(m_lines));
    for (const TLine& line : m_lines) {
        if (!line.Object) continue;
        if (line.Parent && SetEndsWithin(line, bounds)) {
            ZEP::Place(line.Object.data(), line.Parent, root);
            continue;
        }
        report.Add(line.Kind, TDXFReport::TReason::Beside, line.SourceLine);
        delete line.Object;
    }
}

} // namespace ZEP
