#include <zep/converters/rs274d/Report.h>

#include <zep/converters/rs274d/Block.h>

#include <cmath>

namespace ZEP {

namespace {

QString KindText(TRS274DPassed kind) {
    switch (kind) {
    case TRS274DPassed::Deleted:
        return QStringLiteral("deleted blocks (/)");
    case TRS274DPassed::Variable:
        return QStringLiteral("blocks with variables");
    case TRS274DPassed::Expression:
        return QStringLiteral("blocks with expressions");
    case TRS274DPassed::ControlWord:
        return QStringLiteral("blocks with control words");
    case TRS274DPassed::BadNumber:
        return QStringLiteral("blocks with a bad number");
    case TRS274DPassed::Unreadable:
        return QStringLiteral("blocks that cannot be read");
    case TRS274DPassed::LongLine:
        return QStringLiteral("lines longer than %1 characters").arg(MaxRS274DLineLength);
    case TRS274DPassed::NoMotionMode:
        return QStringLiteral("axis words without a motion mode");
    case TRS274DPassed::ArcWithoutCenter:
        return QStringLiteral("arcs without a centre");
    case TRS274DPassed::ArcOutOfReach:
        return QStringLiteral("arcs that cannot reach their end");
    case TRS274DPassed::Spiral:
        return QStringLiteral("arcs of unequal radii (drawn as spirals)");
    case TRS274DPassed::OtherAxes:
        return QStringLiteral("words of the axes A, B, C, U, V and W");
    case TRS274DPassed::Repetitions:
        return QStringLiteral("blocks that repeat too often");
    case TRS274DPassed::UndefinedParameter:
        return QStringLiteral("blocks with parameters that have no value");
    case TRS274DPassed::UnsetParameter:
        return QStringLiteral("parameters that the program does not set (taken as 0)");
    case TRS274DPassed::MachineParameter:
        return QStringLiteral("parameters that only the machine knows (taken as 0)");
    case TRS274DPassed::RefusedSetting:
        return QStringLiteral("settings of parameters that are the machine's own");
    case TRS274DPassed::UnneededWord:
        return QStringLiteral("words F, S, H, D and T without a value (not needed)");
    case TRS274DPassed::DivisionByZero:
        return QStringLiteral("blocks that divide by zero");
    case TRS274DPassed::OutOfRange:
        return QStringLiteral("blocks with values out of range");
    case TRS274DPassed::UnmatchedControl:
        return QStringLiteral("control words without their counterpart");
    case TRS274DPassed::NoSubprogram:
        return QStringLiteral("calls of subprograms that are not there");
    case TRS274DPassed::MainReturn:
        return QStringLiteral("M99 in the program itself (its end)");
    case TRS274DPassed::AbsoluteCenter:
        return QStringLiteral("arcs with absolute centres (without G90.1: only so they fit)");
    case TRS274DPassed::LengthCompensation:
        return QStringLiteral("tool length compensation (not applied)");
    case TRS274DPassed::RadiusCompensation:
        return QStringLiteral("tool radius compensation (not applied)");
    case TRS274DPassed::BackBoring:
        return QStringLiteral("holes of G87 (back boring, not drawn)");
    case TRS274DPassed::NoLine:
        return QStringLiteral("jumps to lines that are not there");
    case TRS274DPassed::Alarm:
        return QStringLiteral("alarms (#3000), which end the program");
    }
    return {};
}

/// The path is as the program has it all the same.
bool IsMinor(TRS274DPassed kind) {
    switch (kind) {
    case TRS274DPassed::Deleted:
    case TRS274DPassed::RefusedSetting:
    case TRS274DPassed::UnneededWord:
    case TRS274DPassed::MainReturn:
    case TRS274DPassed::AbsoluteCenter:
    case TRS274DPassed::LengthCompensation:
        return true;
    default:
        return false;
    }
}

/// Beyond every real code, so that a hostile file can not fill the memory with kinds.
constexpr double MaxReportedCode = 1000;

} // namespace

void TRS274DReport::Add(TRS274DPassed kind, qint64 line) {
    IsMinor(kind) ? AddMinor(KindText(kind), line) : Add(KindText(kind), line);
}

void TRS274DReport::AddCode(char letter, double code, qint64 line) {
    const QLatin1Char prefix(letter);
    if (code < 0 || code >= MaxReportedCode)
        return Add(QStringLiteral("%1 codes out of range").arg(prefix), line);
    const auto hundredths = static_cast<int>(std::lround(code * 100));
    const QString kind = QStringLiteral("code %1%2").arg(prefix).arg(hundredths / 100.0);
    letter == 'M' ? AddMinor(kind, line) : Add(kind, line); // what switches something moves nothing
}

} // namespace ZEP
