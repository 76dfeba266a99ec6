#include <zep/converters/rs274d/Run.h>

#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

/// The code of a macro call in the block; 0 without one.
int MacroCode(const TRS274DBlock& block) {
    for (const TRS274DWord& word : block.Words())
        if (word.Letter == 'G' && word.Value >= 65 && word.Value <= 67)
            return static_cast<int>(word.Value);
    return 0;
}

} // namespace

bool TRS274DRun::RunMacro(const char* line) {
    const auto block = MacroOf(m_block);
    if (!block) return false;
    m_machine.StandAt(m_flow.Place());
    switch (block->Macro) {
    case TRS274DMacro::GoTo:
        if (ReadValues(block->Rest) && m_values.size() == 1) GoToLine(m_values[0]);
        break;
    case TRS274DMacro::If:
        RunBranch(*block, line);
        break;
    default:
        RunLoop(*block, line);
    }
    TellNotes();
    return true;
}

double TRS274DRun::ConditionOf(const TRS274DMacroBlock& block) {
    return ReadValues(block.Condition) && m_values.size() == 1 ? m_values[0] : 0;
}

void TRS274DRun::RunBranch(const TRS274DMacroBlock& block, const char* line) {
    if (ConditionOf(block) == 0) return;
    if (m_branches == MaxRS274DExpressionDepth) return TellFault(TRS274DFault::TooDeep);
    Spend(block.Rest.size());
    const QScopedValueRollback nested(m_branches, m_branches + 1);
    m_statementText = block.Rest; // the block that it is a part of is read over
    RunText(m_statementText, line);
}

void TRS274DRun::RunLoop(const TRS274DMacroBlock& block, const char* line) {
    const TLineSource* partner = m_flow.Text().Loops().PartnerOf(line);
    if (!partner)
        return m_machine.Fail(TPassed::UnmatchedControl,
                              QStringLiteral("Control word without its counterpart."));
    if (block.Macro == TRS274DMacro::End) return m_flow.GoTo(*partner);
    if (!block.Condition.empty() && ConditionOf(block) == 0) m_flow.GoBehind(*partner);
}

void TRS274DRun::GoToLine(double number) {
    const TLineSource* line = m_flow.Text().FindLine(number, m_flow.PlaceInText());
    if (line) return m_flow.GoTo(*line);
    m_machine.Fail(TPassed::NoLine, QStringLiteral("No line N%1.").arg(number));
}

bool TRS274DRun::RunMacroCall() {
    const int code = MacroCode(m_block);
    if (code == 67) m_modalMacro = {};
    if (code != 65 && code != 66) return false;
    m_machine.StandAt(m_flow.Place());
    if (!m_block.Has('P')) return TellNoSubprogram(QStringLiteral("without a number")), true;
    const double count = m_block.Has('L') ? std::round(m_block.Value('L')) : 1;
    ReadArguments();
    if (code == 66)
        m_modalMacro = {m_block.Value('P'), count, m_flow.Depth(), m_values};
    else if (count >= 1)
        CallMacro(m_block.Value('P'), count);
    return true;
}

void TRS274DRun::ReadArguments() {
    m_values.assign(TRS274DParameters::MaxLocalCount, RS274DVacant);
    std::array<int, 3> seen{}; // of I, J and K
    for (const TRS274DWord& word : m_block.Words()) {
        const bool isOfRow = word.Letter >= 'I' && word.Letter <= 'K';
        const int nth = isOfRow ? seen[static_cast<std::size_t>(word.Letter - 'I')]++ : 0;
        if (const int number = ArgumentOf(word.Letter, nth))
            m_values[static_cast<std::size_t>(number - 1)] = word.Value;
    }
}

void TRS274DRun::CallMacro(double number, double count) {
    const std::string label = RS274DLabelOf(number);
    const auto subprogram = m_subprograms.Find(label, m_flow.Text());
    if (!subprogram.Text) return TellNoSubprogram(QString::fromStdString(label));
    Enter(subprogram, count, true);
    m_parameters.EnterSub(m_values);
}

void TRS274DRun::CallModalMacro() {
    if (m_flow.Depth() != m_modalMacro.Depth) return;
    m_values = m_modalMacro.Arguments;
    CallMacro(m_modalMacro.Number, m_modalMacro.Count);
}

} // namespace ZEP
