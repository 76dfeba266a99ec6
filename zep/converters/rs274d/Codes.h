#pragma once

#include <cstdint>

namespace ZEP {

/// What a G code of a machine is about.
enum class TRS274DGroup : std::uint8_t {
    Unknown,
    Silent, ///< changes nothing that a path shows: path modes, cancellations
    Length, ///< tool length compensation
    Radius, ///< tool radius compensation
    Rapid,
    Feed,
    Clockwise,
    CounterClockwise,
    Cycle,     ///< drilling and its kin
    Quadrants, ///< G74, G75: also cycles
    Boring,    ///< G76: a cycle of mills, threads elsewhere
    Polar,     ///< G15, G16 of mills
    Rotation,  ///< G68 of mills
    EndRotation,
    CancelMotion,
    Plane,
    Units,
    Distance,
    CenterDistance,
    RetractLevel,
    WorkSystem,
    MachineFrame,
    Dwell,
    FeedMode,
    SurfaceSpeed, ///< S is that of the surface, or turns a minute
    SetData,
    Reference,
    StoreReference,
    LocalOffset,
    Offset,
    ClearOffset,
    SuspendOffset,
    RestoreOffset,
    Tap
};

struct TRS274DCode {
    int Tenths; ///< the code times ten: G59.1 is 591
    TRS274DGroup Group;
    int Value;         ///< which one of the group
    const char* Trace; ///< the trace's text; null: "skip word"
};

/// The machine's code of that number, a dotted one by itself; its group is `Unknown` for others.
[[nodiscard]] const TRS274DCode& FindGCode(double number);

} // namespace ZEP
