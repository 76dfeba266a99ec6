#pragma once

#include <zep/Export.h>
#include <zep/converters/ReadReport.h>

#include <cstdint>

namespace ZEP {

/// What a reader of NC programs can pass over.
enum class TRS274DPassed : std::uint8_t {
    Deleted,
    Variable,
    Expression,
    ControlWord,
    BadNumber,
    Unreadable,
    LongLine,
    NoMotionMode,
    ArcWithoutCenter,
    ArcOutOfReach,
    Spiral,
    OtherAxes,
    Repetitions,
    UndefinedParameter,
    UnsetParameter,
    MachineParameter,
    RefusedSetting,
    UnneededWord,
    DivisionByZero,
    OutOfRange,
    UnmatchedControl,
    NoSubprogram,
    MainReturn,
    AbsoluteCenter,
    LengthCompensation,
    RadiusCompensation,
    BackBoring,
    NoLine,
    Alarm
};

/// What was passed over in a program, counted by kind.
class ZEP_CORE_EXPORT TRS274DReport : public TReadReport {
public:
    using TReadReport::Add;
    /// One more of that kind; a kind is counted at most once for each call.
    void Add(TRS274DPassed kind, qint64 line);
    /// One more block with an unknown code: letter G or M with its number.
    void AddCode(char letter, double code, qint64 line);
};

} // namespace ZEP
