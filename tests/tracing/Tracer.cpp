#include "tests/tracing/Tracer.h"

#include <algorithm>
#include <limits>

namespace ZEP::Tracing {

namespace {

constexpr double Nearly = 1e-4;    // a length
constexpr double Brightened = 1.2; // what is averaged

/// How many more surfaces are entered than left before that.
bool IsWithin(const TCrossings& crossings, double at) {
    int depth = 0;
    for (const TCrossing& crossing : crossings)
        if (crossing.At < at) depth += crossing.Enters ? 1 : -1;
    return depth > 0;
}

/// The light that a surface with that normal sends back.
TVector Reflected(const TLamp& lamp, const TVector& matte, const TVector& point,
                  const TVector& normal) {
    const TVector way = lamp.IsAimed ? lamp.Position - point : lamp.Position;
    return matte * lamp.Color * std::max(Dot(Unit(way), normal), 0.0);
}

double Largest(const TVector& color) {
    return std::max({color.X, color.Y, color.Z});
}

unsigned LitBits(const std::vector<TVector>& lights) {
    unsigned bits = 0;
    for (std::size_t i = 0; i < lights.size(); ++i)
        if (Largest(lights[i]) > 0) bits |= 1U << i;
    return bits;
}

/// \name The curve of sRGB
/// @{
double ToLight(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}
double FromLight(double part) {
    return part <= 0.0031308 ? part * 12.92 : 1.055 * std::pow(part, 1 / 2.4) - 0.055;
}
/// @}

TVector EachOf(const TVector& color, double (*change)(double)) {
    return {change(color.X), change(color.Y), change(color.Z)};
}

} // namespace

TSample TTracer::Trace(const TEye& eye, double x, double y, double aspect) const {
    const TVector ahead = Unit(eye.Target - eye.Position);
    const TVector right = Unit(Cross(ahead, {0, 0, 1}));
    const double half = std::tan(eye.Field * std::numbers::pi / 360);
    return Trace({eye.Position, ahead + right * ((2 * x - 1) * half * aspect) +
                                    Cross(right, ahead) * ((1 - 2 * y) * half)});
}

void TTracer::CrossPiece(const TRay& ray, int number, TCrossings& crossings) const {
    const TPiece& piece = Pieces[static_cast<std::size_t>(number)];
    const std::size_t before = crossings.size();
    if (piece.Shape) piece.Shape(piece.Inner.Ray(ray), crossings);
    for (std::size_t i = before; i < crossings.size(); ++i) crossings[i].Piece = number;
}

void TTracer::CrossCarving(const TRay& ray, const TCarving& carving, TCrossings& crossings) const {
    TCrossings first;
    TCrossings second;
    CrossPiece(ray, carving.First, first);
    CrossPiece(ray, carving.Second, second);
    const bool isDifference = carving.Operation == TSetOperation::Difference;
    const bool isCommon = carving.Operation == TSetOperation::Common;
    for (TCrossing crossing : first) {
        if (IsWithin(second, crossing.At) != (isCommon || isDifference)) continue;
        if (isDifference) {
            crossing.Enters = !crossing.Enters;
            crossing.Normal = crossing.Normal * -1;
        }
        crossings.push_back(crossing);
    }
    for (const TCrossing& crossing : second)
        if (IsWithin(first, crossing.At) == isCommon) crossings.push_back(crossing);
}

TCrossing TTracer::Hit(const TRay& ray) const {
    TCrossings crossings;
    for (int i = 0; i < static_cast<int>(Pieces.size()); ++i)
        if (!Pieces[static_cast<std::size_t>(i)].IsCarved) CrossPiece(ray, i, crossings);
    for (const TCarving& carving : Carvings) CrossCarving(ray, carving, crossings);
    TCrossing nearest{.At = std::numeric_limits<double>::infinity()};
    for (const TCrossing& crossing : crossings)
        if (crossing.Enters && crossing.At > 0 && crossing.At < nearest.At) nearest = crossing;
    if (nearest.Piece < 0) return nearest;
    const TPiece& piece = Pieces[static_cast<std::size_t>(nearest.Piece)];
    nearest.Normal = piece.Inner.OuterNormal(nearest.Normal);
    return nearest;
}

bool TTracer::IsInShadow(const TVector& point, double near) const {
    return std::ranges::any_of(Lamps, [&](const TLamp& lamp) {
        for (const TVector& way : {TVector{}, {near, 0, 0}, {0, near, 0}, {0, 0, near}})
            if (IsBlocked(point + way, lamp) || IsBlocked(point - way, lamp)) return true;
        return false;
    });
}

bool TTracer::IsBlocked(const TVector& point, const TLamp& lamp) const {
    if (!lamp.Casts || Method == TMethod::NoShadows) return false;
    const TVector way = lamp.IsAimed ? point - lamp.Position : lamp.Position * -1;
    const double reached = 1 - Nearly / std::sqrt(Dot(way, way));
    TCrossings crossings;
    for (int i = 0; i < static_cast<int>(Pieces.size()); ++i) {
        const TPiece& piece = Pieces[static_cast<std::size_t>(i)];
        if (piece.Look.Casts && !piece.IsCarved) CrossPiece({point - way, way}, i, crossings);
    }
    return std::ranges::any_of(crossings, [&](const TCrossing& crossing) {
        return crossing.Enters && crossing.At > 0 && crossing.At < reached;
    });
}

/// One, or those that are accumulated: one in which no lamp casts, and one for each that does.
std::size_t TTracer::ImageCount() const {
    const auto casting = static_cast<std::size_t>(std::ranges::count(Lamps, true, &TLamp::Casts));
    return Method == TMethod::Accumulated && casting > 1 ? casting + 1 : 1;
}

/// The last of them are black in the shadow of their lamp, elsewhere lit by that and by those that
/// do not cast.
std::vector<TVector> TTracer::Images(const TLook& look, const std::vector<TVector>& lights,
                                     unsigned blocked) const {
    TVector always = look.Glow;
    TVector all = look.Glow;
    for (std::size_t i = 0; i < Lamps.size(); ++i) {
        if ((blocked & 1U << i) == 0) all = all + lights[i];
        if (!Lamps[i].Casts) always = always + lights[i];
    }
    const std::size_t count = ImageCount();
    if (count == 1 || !look.Receives) return std::vector(count, all);
    std::vector images{always};
    for (std::size_t i = 0; i < Lamps.size(); ++i)
        if (Lamps[i].Casts)
            images.push_back((blocked & 1U << i) == 0 ? always + lights[i] : TVector());
    return images;
}

TVector TTracer::Average(const std::vector<TVector>& images) const {
    if (images.size() == 1) return images[0];
    TVector sum;
    for (const TVector& image : images) sum = sum + (AddsLight ? EachOf(image, ToLight) : image);
    sum = sum * (Brightened / static_cast<double>(images.size()));
    return AddsLight ? EachOf(sum, FromLight) : sum;
}

TSample TTracer::Mirrored(const TRay& ray, int mirror) const {
    TTracer image = *this;
    image.Method = TMethod::NoShadows;
    image.Pieces[static_cast<std::size_t>(mirror)].Shape = nullptr;
    for (TPiece& piece : image.Pieces) piece.Look.Mirror = 0;
    return image.Trace(ray);
}

/// Of the light that each lamp sends back from there, what is blocked.
unsigned TTracer::Blocked(const TLook& look, const TVector& point,
                          const std::vector<TVector>& lights) const {
    unsigned blocked = 0;
    for (std::size_t i = 0; i < Lamps.size(); ++i)
        if (look.Receives && Largest(lights[i]) > 0 && IsBlocked(point, Lamps[i]))
            blocked |= 1U << i;
    return blocked;
}

/// The lamps that are blocked where that changes what is seen.
unsigned TTracer::Missing(const TLook& look, const std::vector<TVector>& lights,
                          unsigned blocked) const {
    unsigned missing = 0;
    for (unsigned bit = 1; bit <= blocked; bit <<= 1U) {
        if ((blocked & bit) == 0) continue;
        const TVector lit = Average(Images(look, lights, blocked & ~bit));
        if (Largest(lit - Average(Images(look, lights, blocked))) > GoodDeal) missing |= bit;
    }
    return missing;
}

TSample TTracer::Trace(const TRay& ray) const {
    const TCrossing hit = Hit(ray);
    if (hit.Piece < 0) return {.Color = Average(std::vector(ImageCount(), Background))};
    const TLook& look = Pieces[static_cast<std::size_t>(hit.Piece)].Look;
    const TVector point = ray.Point(hit.At);
    std::vector<TVector> lights;
    for (const TLamp& lamp : Lamps)
        lights.push_back(Reflected(lamp, look.Matte, point, hit.Normal));
    const unsigned blocked = Blocked(look, point, lights);
    TSample sample{.First = {hit.Piece, hit.Facet, LitBits(lights) & ~blocked},
                   .Missing = Missing(look, lights, blocked)};
    std::vector<TVector> images = Images(look, lights, blocked);
    if (look.Mirror > 0 && hit.Facet == 0) {
        const TVector back = hit.Normal * (2 * Dot(ray.Along, hit.Normal));
        const TSample mirrored = Mirrored({point, ray.Along - back}, hit.Piece);
        sample.Mirrored = mirrored.First;
        for (TVector& image : images)
            image = image * (1 - look.Mirror) + mirrored.Color * look.Mirror;
    }
    sample.Color = Average(images);
    return sample;
}

} // namespace ZEP::Tracing
