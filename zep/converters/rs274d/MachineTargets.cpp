#include <zep/converters/rs274d/ExtendedMachine.h>

#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

constexpr double RadiansOfDegree = std::numbers::pi / 180;

/// As the machine has them, which looks at the XZ plane with Z as the first axis.
TRS274DAxes MachineAxesOf(TRS274DArcPlane plane) {
    const TRS274DAxes axes = AxesOf(plane);
    return plane == apXZ ? TRS274DAxes{axes.Second, axes.First, axes.Normal} : axes;
}

} // namespace

TRS274DPoint TRS274DExtendedMachine::Target(const TRS274DBlock& block) {
    if ((m_isPolar || m_rotation.IsOn()) && !m_plan.MachineFrame) return PlacedTarget(block);
    TRS274DPoint target = m_position;
    if (block.HasAnyOf("@^")) ApplyPolar(block, target);
    ForAxisWords(block, [&](std::size_t axis, double value) {
        if (m_plan.MachineFrame)
            target[axis] = value;
        else
            target[axis] = value + (m_incremental ? m_position[axis] : m_frames.Offset(axis));
    });
    return target;
}

/// "@" is the distance from the origin of the coordinate system, "^" the angle about it in
/// degrees; what is not stated stays.
void TRS274DExtendedMachine::ApplyPolar(const TRS274DBlock& block, TRS274DPoint& target) const {
    const double x = m_position[0] - m_frames.Offset(0);
    const double y = m_position[1] - m_frames.Offset(1);
    const auto stated = [&](char letter, double value, double current) {
        if (!block.Has(letter)) return current;
        return m_incremental ? current + value : value;
    };
    const double radius = stated('@', Units(block.Value('@')), std::hypot(x, y));
    const double angle = stated('^', block.Value('^') * std::numbers::pi / 180, std::atan2(y, x));
    target[0] = m_frames.Offset(0) + radius * std::cos(angle);
    target[1] = m_frames.Offset(1) + radius * std::sin(angle);
}

// --- polar words and a rotation of the plane (G16, G68)
// --------------------------------------------

TRS274DPoint TRS274DExtendedMachine::PlacedTarget(const TRS274DBlock& block) {
    const TRS274DPoint present = m_rotation.Undone(m_position);
    TRS274DPoint target = present;
    ForAxisWords(block, [&](std::size_t axis, double value) {
        target[axis] = value + (m_incremental ? present[axis] : m_frames.Offset(axis));
    });
    if (m_isPolar) ApplyPolarMode(block, present, target);
    const TRS274DAxes axes = AxesOf(m_plane);
    if (target[axes.First] == present[axes.First] && target[axes.Second] == present[axes.Second]) {
        target[axes.First] = m_position[axes.First]; // no rounding where it does not move
        target[axes.Second] = m_position[axes.Second];
        return target;
    }
    return m_rotation.Applied(target);
}

/// The word of the plane's first axis is a radius, that of the second an angle. With incremental
/// distances a radius counts from where the tool is, an angle from that of the tool; what is not
/// stated stays.
void TRS274DExtendedMachine::ApplyPolarMode(const TRS274DBlock& block, const TRS274DPoint& present,
                                            TRS274DPoint& target) {
    const TRS274DAxes axes = MachineAxesOf(m_plane);
    const char radiusLetter = LetterOf('X', axes.First), angleLetter = LetterOf('X', axes.Second);
    if (!block.Has(radiusLetter) && !block.Has(angleLetter)) return;
    const double angleBefore = PolarAngleOf(present);
    if (block.Has(radiusLetter)) m_pole = m_incremental ? std::optional(present) : std::nullopt;
    const auto pole = [&](std::size_t axis) {
        return m_pole ? (*m_pole)[axis] : m_frames.Offset(axis);
    };
    const double radius = block.Has(radiusLetter)
                              ? Units(block.Value(radiusLetter))
                              : std::hypot(present[axes.First] - pole(axes.First),
                                           present[axes.Second] - pole(axes.Second));
    const double word = block.Value(angleLetter) * RadiansOfDegree;
    const double angle = !block.Has(angleLetter) ? angleBefore
                         : m_incremental         ? angleBefore + word
                                                 : word;
    target[axes.First] = pole(axes.First) + radius * std::cos(angle);
    target[axes.Second] = pole(axes.Second) + radius * std::sin(angle);
}

/// Radians.
double TRS274DExtendedMachine::PolarAngleOf(const TRS274DPoint& point) const {
    const TRS274DAxes axes = MachineAxesOf(m_plane);
    const auto from = [&](std::size_t axis) {
        return point[axis] - (m_pole ? (*m_pole)[axis] : m_frames.Offset(axis));
    };
    return std::atan2(from(axes.Second), from(axes.First));
}

void TRS274DExtendedMachine::SetPolar(bool on) {
    m_isPolar = on;
    m_pole.reset();
}

/// What is rotated in one plane is no arc in another one: no machine takes it on.
void TRS274DExtendedMachine::SetPlane(TRS274DArcPlane plane) {
    if (plane != m_plane && m_rotation.IsOn()) {
        m_report.AddCode('G', 68, m_place.Line);
        m_rotation.Clear();
    }
    m_plane = plane;
}

/// About the stated point, which is absolute, by R degrees; an axis without a word has it where the
/// tool is. I, J and K ask for a rotation in space, A and B are the point elsewhere: counted.
void TRS274DExtendedMachine::Rotate(const TRS274DBlock& block) {
    if (block.HasAnyOf("ABIJK") || !block.Has('R')) return m_report.AddCode('G', 68, m_place.Line);
    TRS274DPoint center = m_position;
    ForAxisWords(block, [&](std::size_t axis, double value) {
        center[axis] = value + m_frames.Offset(axis);
    });
    m_rotation.Set(center, block.Value('R') * RadiansOfDegree, MachineAxesOf(m_plane));
}

} // namespace ZEP
