#include <zep/converters/rs274d/ExtendedMachine.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace ZEP {

namespace {

/// What has a name and no number of its own.
enum class TNamed : std::uint8_t {
    Absolute,
    AbsoluteCenters,
    CoordinateSystem,
    FeedRate,
    Imperial,
    Incremental,
    Line,
    Metric,
    Motion,
    Plane,
    ReturnsToInitial,
    ReturnsToR,
    SelectedTool,
    SpindleSpeed,
    Tool,
    X,
    Y,
    Z
};

struct TName {
    std::string_view Text;
    TNamed Value;
};

constexpr auto MachineNames = [] {
    using enum TNamed;
    return std::to_array<TName>({
        {"<_ABSOLUTE>", Absolute},
        {"<_COORD_SYSTEM>", CoordinateSystem},
        {"<_CURRENT_TOOL>", Tool},
        {"<_FEED>", FeedRate},
        {"<_IJK_ABSOLUTE_MODE>", AbsoluteCenters},
        {"<_IMPERIAL>", Imperial},
        {"<_INCREMENTAL>", Incremental},
        {"<_LINE>", Line},
        {"<_METRIC>", Metric},
        {"<_MOTION_MODE>", Motion},
        {"<_PLANE>", Plane},
        {"<_RETRACT_OLD_Z>", ReturnsToInitial},
        {"<_RETRACT_R_PLANE>", ReturnsToR},
        {"<_RPM>", SpindleSpeed},
        {"<_SELECTED_TOOL>", SelectedTool},
        {"<_X>", X},
        {"<_Y>", Y},
        {"<_Z>", Z},
    });
}();

/// The numbers of values that stand in rows of nine, one for each axis; X, Y and Z come first.
enum TRow : int {
    FirstReference = 5161,
    SecondReference = 5181,
    OffsetIsSet = 5210,
    OffsetRow = 5211,
    SelectedSystem = 5220,
    SystemRow = 5221, // and one each 20 numbers
    LastOfSystems = 5390,
    ToolNumber = 5400,
    PositionRow = 5420,
    LastPosition = 5428
};

constexpr int SystemStep = 20;
constexpr int AxisCount = 9;

/// The modes of the dialect are its codes, times ten.
constexpr double PlaneCodes[] = {170, 180, 190};
constexpr double NoMotionCode = 800;

} // namespace

double TRS274DExtendedMachine::Programmed(double millimetres) const {
    return millimetres / Units(1);
}

std::optional<double> TRS274DExtendedMachine::MachineValue(int number) const {
    return IsFanuc() ? FanucValue(number) : NumberedValue(number);
}

std::optional<double> TRS274DExtendedMachine::NumberedValue(int number) const {
    const auto inRow = [&](int row, auto value) -> std::optional<double> {
        const auto axis = static_cast<std::size_t>(number - row);
        return axis < m_position.size() ? Programmed(value(axis)) : 0.0;
    };
    const auto isIn = [number](int row) { return number >= row && number < row + AxisCount; };
    for (const std::size_t which : {0U, 1U}) {
        const int row = which == 0 ? FirstReference : SecondReference;
        if (isIn(row))
            return inRow(row, [&](std::size_t axis) { return m_references[which][axis]; });
    }
    if (isIn(OffsetRow))
        return inRow(OffsetRow, [&](std::size_t axis) { return m_frames.CoordinateOffset(axis); });
    if (isIn(PositionRow))
        return inRow(PositionRow,
                     [&](std::size_t axis) { return m_position[axis] - m_frames.Offset(axis); });
    if (number == SelectedSystem) return m_frames.Selected() + 1;
    if (number == ToolNumber) return m_tool;
    if (number < OffsetIsSet || number > LastOfSystems) return std::nullopt;
    if (number == OffsetIsSet) return m_frames.HasCoordinateOffset();
    const int system = (number - SystemRow) / SystemStep;
    return inRow(SystemRow + system * SystemStep,
                 [&](std::size_t axis) { return m_frames.Origin(system, axis); });
}

bool TRS274DExtendedMachine::SetMachineValue(int number, double value) {
    if (IsFanuc() && RunsSignal(number)) return true;
    const int system = (number - SystemRow) / SystemStep;
    const auto axis = static_cast<std::size_t>((number - SystemRow) % SystemStep);
    const bool isOrigin = number >= SystemRow && number <= LastOfSystems;
    if (!isOrigin || axis >= m_position.size()) return false;
    m_frames.SetOrigin(system, axis, Units(value));
    return true;
}

double TRS274DExtendedMachine::MotionCode() const {
    switch (m_mode) {
    case mmQuick:
        return 0;
    case mmLinear:
        return 10;
    case mmArc:
        return m_counterClockwise ? 30 : 20;
    case mmDrill:
        return m_hole.Cycle * 10;
    case mmNone:
        break;
    }
    return NoMotionCode;
}

std::optional<double> TRS274DExtendedMachine::MachineValue(std::string_view name) const {
    const auto* known = std::ranges::find(MachineNames, name, &TName::Text);
    if (known == MachineNames.end()) return std::nullopt;
    using enum TNamed;
    switch (known->Value) {
    case Absolute:
        return !m_incremental;
    case AbsoluteCenters:
        return m_centers == TRS274DCenters::Absolute;
    case CoordinateSystem: {
        constexpr int lastWhole = 6, perSystem = 10, first = 540, behind = 591;
        const int system = m_frames.Selected();
        return system < lastWhole ? first + system * perSystem : behind + system - lastWhole;
    }
    case FeedRate:
        return m_feed;
    case Imperial:
        return m_inch;
    case Incremental:
        return m_incremental;
    case Line:
        return static_cast<double>(m_place.File ? m_place.FileLine : m_place.Line);
    case Metric:
        return !m_inch;
    case Motion:
        return MotionCode();
    case Plane:
        return PlaneCodes[m_plane];
    case ReturnsToInitial:
        return m_returnToInitial;
    case ReturnsToR:
        return !m_returnToInitial;
    case SelectedTool:
        return m_selectedTool;
    case SpindleSpeed:
        return m_speed;
    case Tool:
        return m_tool;
    case X:
    case Y:
    case Z:
        return NumberedValue(PositionRow + static_cast<int>(known->Value) - static_cast<int>(X));
    }
    return std::nullopt;
}

} // namespace ZEP
