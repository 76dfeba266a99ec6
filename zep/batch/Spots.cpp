#include <zep/batch/Spots.h>

#include <zep/objects/Label.h>
#include <zep/scene/Vectors.h>

#include <algorithm>

namespace ZEP {

namespace {

constexpr std::size_t MostSpots = 8;
constexpr std::size_t MostSamples = 255;
constexpr double Reach = 1000;      // of the distances that are usual
constexpr double ChordError = 1e-4; // of the diagonal: a tenth of a pixel, about

bool IsOfNumbers(const TZEPBlockBox& box) {
    return IsFinite(box.Min) && IsFinite(box.Max);
}

TGLArrayd3 MiddleOf(const TZEPBlockBox& box) {
    return box.Min / 2 + box.Max / 2; // no overflow where the sum has one
}

/// From the place to what is nearest in the box.
double DistanceTo(const TGLArrayd3& place, const TZEPBlockBox& box) {
    TGLArrayd3 gap;
    for (std::size_t k = 0; k < 3; ++k)
        gap[k] = std::max({box.Min[k] - place[k], place[k] - box.Max[k], 0.0});
    return Length(gap);
}

/// Some of them, evenly spread.
std::vector<TZEPBlockBox> SamplesOf(const std::vector<TZEPBlockBox>& boxes) {
    std::vector<TZEPBlockBox> samples;
    const std::size_t step = 1 + boxes.size() / MostSamples;
    for (std::size_t i = 0; i < boxes.size(); i += step)
        if (IsOfNumbers(boxes[i])) samples.push_back(boxes[i]);
    if (!samples.empty() || step == 1) return samples;
    const auto first =
        std::ranges::find_if(boxes, [](const auto& box) { return IsOfNumbers(box); });
    if (first != boxes.end()) samples.push_back(*first);
    return samples;
}

/// The value that a part of the numbers does not exceed.
double Quantile(std::vector<double> numbers, double part) {
    const auto at = numbers.begin() +
                    static_cast<std::ptrdiff_t>(part * static_cast<double>(numbers.size() - 1));
    std::ranges::nth_element(numbers, at);
    return *at;
}

template <class Number>
std::vector<double> Each(const std::vector<TZEPBlockBox>& boxes, const Number& number) {
    std::vector<double> numbers;
    for (const TZEPBlockBox& box : boxes) numbers.push_back(number(box));
    return numbers;
}

/// The middle of one box, near that of most.
TGLArrayd3 Amid(const std::vector<TZEPBlockBox>& samples) {
    TGLArrayd3 median;
    for (std::size_t k = 0; k < 3; ++k)
        median[k] = Quantile(Each(samples, [k](const auto& box) { return MiddleOf(box)[k]; }), 0.5);
    return MiddleOf(*std::ranges::min_element(
        samples, {}, [&](const auto& box) { return Distance(median, MiddleOf(box)); }));
}

} // namespace

TSpots::TSpots(const std::vector<TZEPBlockBox>& boxes) {
    if (boxes.empty()) return;
    const std::vector<TZEPBlockBox> samples = SamplesOf(boxes);
    m_spots.push_back({samples.empty() ? zero3d : Amid(samples)});
    if (samples.empty()) return;
    const auto distance = [&](const auto& box) {
        return Distance(m_spots.front().Origin, MiddleOf(box));
    };
    const auto size = [](const auto& box) { return Distance(box.Min, box.Max); };
    m_reach = Reach * std::max(Quantile(Each(samples, distance), 0.25),
                               Quantile(Each(samples, size), 0.25));
}

std::size_t TSpots::Place(const TZEPBlockBox& box) {
    if (!IsOfNumbers(box)) return 0;
    const std::size_t found = Find(box);
    MinBoundsd(m_spots[found].Box.Min, box.Min);
    MaxBoundsd(m_spots[found].Box.Max, box.Max);
    return found;
}

std::size_t TSpots::Find(const TZEPBlockBox& box) {
    const auto near = std::ranges::min_element(
        m_spots, {}, [&](const TSpot& spot) { return DistanceTo(spot.Origin, box); });
    const bool far = DistanceTo(near->Origin, box) > m_reach;
    m_tooFew = m_tooFew || (far && m_spots.size() == MostSpots);
    if (far && m_spots.size() < MostSpots) {
        m_spots.push_back({MiddleOf(box)});
        return m_spots.size() - 1;
    }
    return static_cast<std::size_t>(near - m_spots.begin());
}

double TSpots::Error(std::size_t spot) const {
    const TZEPBlockBox& box = m_spots[spot].Box;
    return box.Min[0] <= box.Max[0] ? ChordError * Distance(box.Min, box.Max) : 0;
}

TZEPBlockBox BoxOf(const TZEPObject& object, const TGLMatrixd4& matrix) {
    TZEPBlockBox box;
    box.Min = box.Max = zero3d;
    if (!qobject_cast<const TZEPLabel*>(&object)) object.GetSize(box.Min, box.Max);
    XformBoxd(matrix, box.Min, box.Max);
    return box;
}

} // namespace ZEP
