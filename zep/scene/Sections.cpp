#include <zep/scene/Sections.h>

#include <zep/scene/Vectors.h>

#include <algorithm>

namespace ZEP {

std::optional<TGLArrayd4> TZEPSection::Plane() const {
    const double length = Length(Normal);
    if (!On || !(length > 0) || !std::isfinite(length) || !std::isfinite(Distance)) return {};
    return TGLArrayd4{-Normal[0] / length, -Normal[1] / length, -Normal[2] / length, Distance};
}

bool AnyCuts(const TZEPSections& sections) {
    return std::ranges::any_of(sections, [](const auto& each) { return each.Plane().has_value(); });
}

} // namespace ZEP
