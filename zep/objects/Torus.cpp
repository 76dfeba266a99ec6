#include <zep/objects/Torus.h>

#include <zep/framework/Property.h>
#include <zep/objects/Grid.h>
#include <zep/scene/Frame.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

const TRegisterObject<TZEPTorus> RegisteredTorus;

/// Where the part `turn` (0 to 1) of a full turn points.
std::array<double, 2> Direction(double turn) {
    // A turn closes exactly where it began.
    const double angle = turn == 1 ? 0 : turn * 2 * std::numbers::pi;
    return {std::cos(angle), std::sin(angle)};
}

/// The point at `s` of the way around the ring and `t` of that around the tube.
TGridPoint TorusPoint(double ring, double tube, double s, double t) {
    const auto [ringX, ringY] = Direction(s);
    const auto [out, up] = Direction(t);
    const double radius = ring + tube * out;
    return {.Point = {radius * ringX, radius * ringY, tube * up},
            .Normal = {out * ringX, out * ringY, up},
            .S = s,
            .T = t};
}

} // namespace

template <class T>
void TZEPTorus::Set(T& field, T value) {
    if (!Change(field, value)) return;
    m_lists.Reset();
    Invalidate(this);
}

void TZEPTorus::SetSmooth(bool smooth) {
    if (smooth != Smooth()) m_lists.Reset();
    TZEPSolid::SetSmooth(smooth);
}

void TZEPTorus::SetRadius1(double radius) {
    Set(m_radius1, SolidRadius(radius));
}

void TZEPTorus::SetRadius2(double radius) {
    Set(m_radius2, SolidRadius(radius));
}

void TZEPTorus::SetSides(int sides) {
    Set(m_sides, std::min(sides, MaxCells));
}

void TZEPTorus::SetRings(int rings) {
    Set(m_rings, std::min(rings, MaxCells));
}

void TZEPTorus::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    const double reach = m_radius1 + m_radius2;
    min = {-reach, -reach, -m_radius2};
    max = {reach, reach, m_radius2};
}

void TZEPTorus::DrawSpecific(GLenum, bool draft) {
    if (m_radius2 == 0) return;
    DrawFrame().Run.OpenSurface();
    const TSharedLists::TSettings settings{m_radius1, m_radius2, 1.0 * m_sides, 1.0 * m_rings,
                                           Smooth() ? 1.0 : 0.0};
    m_lists.Draw(typeid(*this), settings, draft, [&] {
        SendGrid(m_rings, m_sides, {.Draft = draft, .Smooth = Smooth(), .Textured = !draft},
                 [&](int i, int j) {
                     return TorusPoint(m_radius1, m_radius2, static_cast<double>(i) / m_rings,
                                       static_cast<double>(j) / m_sides);
                 });
    });
}

} // namespace ZEP
