#include <zep/converters/dxf/HatchLines.h>

#include <zep/scene/Vectors.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace ZEP {

namespace {

constexpr double Radian = std::numbers::pi / 180;

/// Of one line, dashes on and off the contours.
constexpr std::size_t MostParts = 64;

/// Numbers of lines that can be counted in ones.
constexpr double MostLines = 1e15;

/// The contours in the axes of a family, whose lines then have v = 0, 1, 2 ...
class TRuled {
public:
    TRuled(const TDXFHatchFamily& family, double scale, const TContours& contours)
        : m_along{std::cos(family.Angle), std::sin(family.Angle), 0}, m_across{-m_along[1],
                                                                               m_along[0], 0},
          m_base(family.Base), m_distance(Dotd(family.Step, m_across) * scale),
          m_shift(Dotd(family.Step, m_along) * scale), m_contours(contours) {}

    /// How often the contours meet the lines.
    [[nodiscard]] double Meetings() const {
        double sum = 0, farthest = 0;
        ForEachEdge([&](const TPlace& a, const TPlace& b) {
            sum += std::abs(a.V - b.V);
            farthest = std::max(farthest, std::abs(b.V));
        });
        const bool canBeCounted = farthest < MostLines || sum > TDXFHatchLines::MaxLines;
        return canBeCounted ? sum : std::numeric_limits<double>::infinity();
    }
    /// Calls it for each part of a line within the contours: the line's number, and from where to
    /// where along it.
    template <class Call>
    void ForEachPart(const Call& call) const {
        std::vector<std::pair<double, double>> meetings = ListMeetings();
        std::ranges::sort(meetings);
        for (std::size_t i = 0; i + 1 < meetings.size(); i += 2)
            call(meetings[i].first, meetings[i].second, meetings[i + 1].second);
    }
    [[nodiscard]] TGLArrayd3 At(double line, double u, double z) const {
        TGLArrayd3 point = m_base + m_along * u + m_across * (line * m_distance);
        point[2] = z;
        return point;
    }
    /// Where the pattern of a line begins.
    [[nodiscard]] double ShiftOf(double line) const { return line * m_shift; }

private:
    struct TPlace {
        double U, V;
    };

    [[nodiscard]] TPlace Within(const TGLArrayd3& point) const {
        const TGLArrayd3 way = point - m_base;
        return {Dotd(way, m_along), Dotd(way, m_across) / m_distance};
    }
    template <class Call>
    void ForEachEdge(const Call& call) const {
        for (const auto& contour : m_contours) {
            TPlace last = Within(contour.back());
            for (const TGLArrayd3& point : contour) {
                const TPlace place = Within(point);
                call(last, place);
                last = place;
            }
        }
    }
    /// Lines, and how far along them. A contour goes through an even number of places of each.
    [[nodiscard]] std::vector<std::pair<double, double>> ListMeetings() const {
        std::vector<std::pair<double, double>> meetings;
        ForEachEdge([&](const TPlace& a, const TPlace& b) {
            const double from = std::ceil(std::min(a.V, b.V)), to = std::max(a.V, b.V);
            for (double line = from; line < to; ++line)
                meetings.emplace_back(line, a.U + (b.U - a.U) * ((line - a.V) / (b.V - a.V)));
        });
        return meetings;
    }

    TGLArrayd3 m_along, m_across, m_base;
    double m_distance, m_shift;
    const TContours& m_contours;
};

/// Where dashes lie between two places of a line. Calls `dash` from where to where.
template <class Dash>
void ForEachDash(const std::vector<double>& dashes, double scale, double from, double to,
                 const Dash& dash) {
    double period = 0;
    for (const double part : dashes) period += std::abs(part) * scale;
    const double first = std::floor(from / period), last = std::floor(to / period);
    const double count = last - first; // place and number may be too large to be counted in ones
    for (double i = 0; i <= count; ++i) {
        double place = (first + i) * period;
        for (const double part : dashes) {
            const double end = place + std::abs(part) * scale;
            if (part >= 0 && end >= from && place <= to)
                dash(std::max(place, from), std::min(end, to));
            place = end;
        }
    }
}

double PeriodOf(const TDXFHatchFamily& family) {
    double period = 0;
    for (const double part : family.Dashes) period += std::abs(part);
    return period;
}

/// Lines and dashes that a family has in the contours, about, or more.
double CountOf(const TDXFHatchFamily& family, const TContours& contours, double scale) {
    const TRuled ruled(family, scale, contours);
    const double meetings = ruled.Meetings();
    if (family.Dashes.empty() || !(meetings < TDXFHatchLines::MaxLines)) return meetings;
    double length = 0;
    ruled.ForEachPart([&](double, double from, double to) { length += to - from; });
    return meetings + length / (PeriodOf(family) * scale) * double(family.Dashes.size());
}

/// It has lines at a distance, and is not solid throughout.
bool CanBeDrawn(const TDXFHatchFamily& family) {
    const TGLArrayd3 across{-std::sin(family.Angle), std::cos(family.Angle), 0};
    const double distance = std::abs(Dotd(family.Step, across));
    return std::isnormal(distance) && IsFinite(family.Step) && IsFinite(family.Base) &&
           std::isfinite(family.Angle) &&
           (family.Dashes.empty() || std::isnormal(PeriodOf(family)));
}

/// Of all families together.
double CountOf(const std::vector<TDXFHatchFamily>& pattern, const TContours& contours,
               double scale) {
    double count = 0;
    for (const TDXFHatchFamily& family : pattern) count += CountOf(family, contours, scale);
    return count;
}

void Append(const TDXFHatchFamily& family, double scale, const TContours& contours,
            std::vector<TGLArrayd3>& points) {
    const TRuled ruled(family, scale, contours);
    const double z = contours.front().front()[2];
    ruled.ForEachPart([&](double line, double from, double to) {
        const auto add = [&](double start, double end) {
            points.push_back(ruled.At(line, start, z));
            points.push_back(ruled.At(line, end, z));
        };
        if (family.Dashes.empty()) return add(from, to);
        const double shift = ruled.ShiftOf(line);
        ForEachDash(family.Dashes, scale, from - shift, to - shift,
                    [&](double start, double end) { add(start + shift, end + shift); });
    });
}

} // namespace

std::vector<TDXFHatchFamily> HatchFamilies(const TDXFRecord& record) {
    std::vector<TDXFHatchFamily> families;
    bool isPattern = false;
    for (const TDXFRecord::TTag& tag : record.Tags()) {
        isPattern = isPattern || tag.Code == 78;
        if (!isPattern) continue;
        if (tag.Code == 98) break; // seeds come behind the pattern
        if (tag.Code == 53) families.push_back({tag.Number() * Radian});
        if (families.empty()) continue;
        TDXFHatchFamily& family = families.back();
        if (tag.Code == 43) family.Base[0] = tag.Number();
        if (tag.Code == 44) family.Base[1] = tag.Number();
        if (tag.Code == 45) family.Step[0] = tag.Number();
        if (tag.Code == 46) family.Step[1] = tag.Number();
        if (tag.Code == 49 && family.Dashes.size() < MostParts)
            family.Dashes.push_back(tag.Number());
    }
    return families;
}

TDXFHatchLines LinesOf(const std::vector<TDXFHatchFamily>& pattern, const TContours& contours,
                       std::size_t most) {
    TDXFHatchLines lines;
    std::vector<TDXFHatchFamily> drawn;
    std::ranges::copy_if(pattern, std::back_inserter(drawn), CanBeDrawn);
    lines.IsCoarser = drawn.size() != pattern.size();
    if (contours.empty() || drawn.empty()) return lines;
    double scale = 1;
    double count = CountOf(drawn, contours, scale);
    const auto limit = static_cast<double>(std::min(most, TDXFHatchLines::MaxLines));
    for (int i = 0; i < 3 && count > limit; ++i) {
        lines.IsCoarser = true;
        scale *= std::ceil(2 * count / limit);
        count = CountOf(drawn, contours, scale);
    }
    if (!(count <= limit)) return lines;
    for (const TDXFHatchFamily& family : drawn) Append(family, scale, contours, lines.Points);
    return lines;
}

} // namespace ZEP
