#include <zep/converters/rs274d/Codes.h>

#include <zep/converters/rs274d/Sink.h>

#include <array>
#include <cmath>
#include <cstdint>

namespace ZEP {

namespace {

constexpr TRS274DCode UnknownCode{-1, TRS274DGroup::Unknown, 0, nullptr};

constexpr auto Codes = [] {
    using enum TRS274DGroup;
    return std::to_array<TRS274DCode>({
        {0, Rapid, 0, "quick move"},
        {10, Feed, 0, "linear interpolation"},
        {20, Clockwise, 0, "arc interpolation"},
        {30, CounterClockwise, 0, "arc interpolation"},
        {40, Dwell, 0, nullptr},
        {80, Silent, 0, nullptr},
        {90, Silent, 0, nullptr},
        {100, SetData, 0, "set coordinate system data"},
        {131, Silent, 0, nullptr},
        {150, Polar, 0, nullptr},
        {160, Polar, 1, nullptr},
        {170, Plane, apXY, "select XY plane"},
        {180, Plane, apXZ, "select XZ plane"},
        {190, Plane, apYZ, "select YZ plane"},
        {200, Units, 1, "inch system selection"},
        {210, Units, 0, "millimeter system selection"},
        {280, Reference, 0, "return to reference point"},
        {281, StoreReference, 0, "store reference point"},
        {300, Reference, 1, "return to reference point"},
        {301, StoreReference, 1, "store reference point"},
        {330, Feed, 1, "linear interpolation"},
        {331, Tap, 0, "rigid tapping"},
        {382, Feed, 0, "probe"},
        {383, Feed, 0, "probe"},
        {384, Feed, 0, "probe"},
        {385, Feed, 0, "probe"},
        {400, Silent, 0, nullptr},
        {410, Radius, 0, nullptr},
        {411, Radius, 0, nullptr},
        {420, Radius, 0, nullptr},
        {421, Radius, 0, nullptr},
        {430, Length, 0, nullptr},
        {431, Length, 0, nullptr},
        {432, Length, 0, nullptr},
        {440, Length, 0, nullptr},
        {490, Silent, 0, nullptr},
        {500, Silent, 0, nullptr},
        {501, Silent, 0, nullptr},
        {520, LocalOffset, 0, "local coordinate system"},
        {530, MachineFrame, 0, "machine coordinates"},
        {540, WorkSystem, 0, "work coordinate system 1"},
        {550, WorkSystem, 1, "work coordinate system 2"},
        {560, WorkSystem, 2, "work coordinate system 3"},
        {570, WorkSystem, 3, "work coordinate system 4"},
        {580, WorkSystem, 4, "work coordinate system 5"},
        {590, WorkSystem, 5, "work coordinate system 6"},
        {591, WorkSystem, 6, "work coordinate system 7"},
        {592, WorkSystem, 7, "work coordinate system 8"},
        {593, WorkSystem, 8, "work coordinate system 9"},
        {610, Silent, 0, nullptr},
        {611, Silent, 0, nullptr},
        {640, Silent, 0, nullptr},
        {670, Silent, 0, nullptr},
        {680, Rotation, 1, nullptr},
        {690, EndRotation, 0, nullptr},
        {730, Cycle, 73, "drill"},
        {740, Quadrants, 74, "quadrant arc"},
        {750, Quadrants, 75, "multiquadrant arc"},
        {760, Boring, 76, nullptr},
        {800, CancelMotion, 0, "cancel drill"},
        {810, Cycle, 81, "drill"},
        {820, Cycle, 82, "drill"},
        {830, Cycle, 83, "drill"},
        {840, Cycle, 84, "drill"},
        {850, Cycle, 85, "drill"},
        {860, Cycle, 86, "drill"},
        {870, Cycle, 87, "drill"},
        {880, Cycle, 88, "drill"},
        {890, Cycle, 89, "drill"},
        {900, Distance, 0, "absolute distance mode"},
        {901, CenterDistance, 0, "absolute arc centres"},
        {910, Distance, 1, "incremental distance mode"},
        {911, CenterDistance, 1, "incremental arc centres"},
        {920, Offset, 0, "coordinate offset"},
        {921, ClearOffset, 0, "clear coordinate offset"},
        {922, SuspendOffset, 0, "suspend coordinate offset"},
        {923, RestoreOffset, 0, "restore coordinate offset"},
        {930, FeedMode, static_cast<int>(TRS274DFeedMode::InverseTime), nullptr},
        {940, FeedMode, static_cast<int>(TRS274DFeedMode::PerMinute), nullptr},
        {950, FeedMode, static_cast<int>(TRS274DFeedMode::PerRevolution), nullptr},
        {960, SurfaceSpeed, 1, nullptr},
        {970, SurfaceSpeed, 0, nullptr},
        {980, RetractLevel, 0, "initial level return in canned cycles"},
        {990, RetractLevel, 1, "R value return in canned cycles"},
    });
}();

constexpr int CodeLimit = 1000;

/// Place in `Codes` for each code in tenths; -1 where there is none.
constexpr auto Places = [] {
    std::array<std::int16_t, CodeLimit> places{};
    for (auto& place : places) place = -1;
    std::int16_t next = 0;
    for (const TRS274DCode& code : Codes) places[static_cast<std::size_t>(code.Tenths)] = next++;
    return places;
}();

} // namespace

const TRS274DCode& FindGCode(double number) {
    const double tenths = std::nearbyint(number * 10);
    constexpr double rounding = 1e-6;
    if (tenths < 0 || tenths >= CodeLimit || std::abs(number * 10 - tenths) > rounding)
        return UnknownCode;
    const int place = Places[static_cast<std::size_t>(tenths)];
    return place < 0 ? UnknownCode : Codes[static_cast<std::size_t>(place)];
}

} // namespace ZEP
