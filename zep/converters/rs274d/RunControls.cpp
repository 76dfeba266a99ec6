#include <zep/converters/rs274d/Run.h>

#include <cmath>

namespace ZEP {

bool TRS274DRun::RunControl(const char* line) {
    const auto block = ControlOf(m_block);
    if (!block || block->Control == TRS274DControl::Unknown) return false;
    m_machine.StandAt(m_flow.Place());
    const int index = m_flow.Text().Words().IndexOf(line);
    const bool isListed = index != TControlWord::None; // one behind THEN is not
    if (isListed && HasCounterpart(WordAt(index)))
        RunWord(index, *block);
    else
        m_machine.Fail(TPassed::UnmatchedControl,
                       QStringLiteral("Control word without its counterpart."));
    TellNotes();
    return true;
}

const TRS274DControlWord& TRS274DRun::WordAt(int index) {
    return m_flow.Text().Words()[index];
}

bool TRS274DRun::HasCounterpart(const TControlWord& word) {
    using enum TRS274DControl;
    switch (word.Control) {
    case Label:
    case Call:
    case Unknown:
        return true;
    case EndSub:
    case Return:
        return m_flow.Depth() > 0;
    case EndIf:
    case EndWhile:
    case EndDo:
    case EndRepeat:
        return word.Partner != TControlWord::None;
    case Break:
    case Continue:
        return word.Partner != TControlWord::None && HasCounterpart(WordAt(word.Partner));
    default:
        return word.End != TControlWord::None;
    }
}

void TRS274DRun::RunWord(int index, const TControlBlock& block) {
    using enum TRS274DControl;
    const TControlWord& word = WordAt(index);
    const bool isUndecided = std::exchange(m_isUndecided, false);
    switch (word.Control) {
    case Sub:
        return GoBehind(word.End);
    case Call:
        return CallSub(block);
    case EndSub:
    case Return:
        return ReturnFromSub(block);
    case ElseIf:
    case Else:
        if (!isUndecided) return GoBehind(word.End);
        if (word.Control == Else) return;
        [[fallthrough]];
    case If:
        m_isUndecided = ValueOf(block) == 0;
        if (m_isUndecided) GoTo(word.Partner);
        return;
    default:
        return RunLoopWord(index, block);
    }
}

void TRS274DRun::RunLoopWord(int index, const TControlBlock& block) {
    using enum TRS274DControl;
    const TControlWord& word = WordAt(index);
    switch (word.Control) {
    case While:
        if (ValueOf(block) == 0) GoBehind(word.End);
        return;
    case EndWhile:
        m_loopEnd = index;
        m_loopEndLine = word.Line;
        return GoTo(word.Partner);
    case EndDo:
        if (ValueOf(block) != 0) GoBehind(word.Partner);
        return;
    case Repeat:
        return BeginRepeat(index, block);
    case EndRepeat:
        m_loopEnd = index;
        m_loopEndLine = word.Line;
        if (m_flow.Again(word.Partner)) GoBehind(word.Partner);
        return;
    case Break:
        return GoBehind(WordAt(word.Partner).End);
    case Continue: {
        const bool isWhile = WordAt(word.Partner).Control == While;
        return GoTo(isWhile ? word.Partner : WordAt(word.Partner).End);
    }
    default:
        return;
    }
}

void TRS274DRun::BeginRepeat(int index, const TControlBlock& block) {
    const double count = std::nearbyint(ValueOf(block));
    if (count < 1) return GoBehind(WordAt(index).End);
    m_flow.Begin(index, count);
}

double TRS274DRun::ValueOf(const TControlBlock& block) {
    if (!ReadValues(block.Arguments)) return 0;
    if (m_values.size() == 1) return m_values[0];
    TellFault(TRS274DFault::Unreadable);
    return 0;
}

bool TRS274DRun::ReadValues(std::string_view text) {
    m_values.clear();
    TRS274DExpression values(text, m_parameters);
    while (!values.Rest().empty()) m_values.push_back(values.Value());
    if (values.Fault() == TRS274DFault::None) return true;
    TellFault(values.Fault());
    return false;
}

} // namespace ZEP
