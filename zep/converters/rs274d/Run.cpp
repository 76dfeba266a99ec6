#include <zep/converters/rs274d/Run.h>

namespace ZEP {

namespace {

constexpr std::size_t CharactersOfBlock = 64;

struct TFaultText {
    TRS274DPassed Kind;
    const char* Message;
};

/// By `TRS274DFault`.
constexpr TFaultText FaultTexts[] = {
    {},
    {TRS274DPassed::Unreadable, "Values that cannot be read."},
    {TRS274DPassed::Expression, "Expression with too many brackets within each other."},
    {TRS274DPassed::UndefinedParameter, "Parameter without a value."},
    {TRS274DPassed::DivisionByZero, "Division by zero."},
    {TRS274DPassed::OutOfRange, "Value out of range."},
};

} // namespace

TRS274DRun::TRS274DRun(std::string_view text, const TRS274DOptions& options, TRS274DSink& sink,
                       TRS274DReport& report)
    : m_text(text), m_isFanuc(options.Dialect == TRS274DDialect::Fanuc), m_options(options),
      m_report(report), m_machine(options, sink, report), m_parameters(m_machine, options.Dialect),
      m_statement(m_parameters), m_subprograms(text, options.FileName), m_flow(m_subprograms),
      m_size(static_cast<qint64>(text.size())), m_maxMotions(m_size + options.MaxMotions),
      m_blocksLeft(m_size + options.MaxBlocks) {
    m_machine.SetCenterJudge([this](TRS274DCenters told) { return Judge(told); });
    if (m_isFanuc) m_machine.SetTurns(TurnsRS274D(text));
}

bool TRS274DRun::Go(const TProgress& progress) {
    m_progress = progress;
    std::string_view line;
    while (m_machine.IsRunning()) {
        const bool isThere = m_flow.Next(line);
        if (!isThere && m_flow.Depth() == 0) return true;
        if (m_flow.Taken() >= m_nextStep && progress && !TellProgress(progress)) return false;
        Spend(line.size());
        if (isThere)
            RunLine(line);
        else
            Leave();
    }
    return !m_isCancelled;
}

bool TRS274DRun::TellProgress(const TProgress& progress) {
    m_nextStep = m_flow.Taken() + ProgressStep;
    return progress(static_cast<qint64>(m_flow.Position()), m_size);
}

void TRS274DRun::Spend(std::size_t characters) {
    const auto cost = static_cast<qint64>(1 + characters / CharactersOfBlock);
    if (m_blocksLeft < cost || m_machine.Motions() > m_maxMotions) RefuseMore();
    m_blocksLeft -= cost;
}

void TRS274DRun::RefuseMore() {
    m_machine.StandAt(m_flow.Place());
    m_machine.Refuse(
        m_machine.Motions() > m_maxMotions
            ? QStringLiteral("The program makes more than %1 motions in loops and calls.")
                  .arg(m_options.MaxMotions)
            : QStringLiteral("The program runs more than %1 blocks in loops and calls.")
                  .arg(m_options.MaxBlocks));
}

void TRS274DRun::RunLine(std::string_view line) {
    if (line.data() == m_loopEndLine) return RunLoopWord(m_loopEnd, {});
    if (line.size() > MaxRS274DLineLength) return m_machine.PassLine(m_flow.Place());
    RunText(line, line.data());
    const TRS274DTransfer transfer = m_machine.TakeTransfer();
    if (transfer != TRS274DTransfer::None) Transfer(transfer);
}

void TRS274DRun::RunText(std::string_view text, const char* line) {
    m_block.Read(text, true);
    switch (m_block.End()) {
    case TRS274DBlockEnd::Complete:
    case TRS274DBlockEnd::Deleted:
    case TRS274DBlockEnd::BadNumber:
        return RunWords();
    default:
        if (RunControl(line) || (m_isFanuc && RunMacro(line))) return;
        RunStatement();
    }
}

void TRS274DRun::RunWords() {
    if (!m_isFanuc) return m_machine.Run(m_block, m_flow.Place()); // tells what cannot be read
    if (RunMacroCall()) return;
    const qint64 motions = m_machine.Motions();
    m_machine.Run(m_block, m_flow.Place());
    if (m_modalMacro.Count > 0 && m_machine.Motions() != motions) CallModalMacro();
}

void TRS274DRun::RunStatement() {
    m_machine.StandAt(m_flow.Place());
    const TRS274DFault fault = m_statement.Read(m_block);
    TellNotes();
    if (fault != TRS274DFault::None && fault != TRS274DFault::Unreadable) return TellFault(fault);
    if (m_statement.DroppedWords() > 0) m_report.Add(TPassed::UnneededWord, m_flow.Place().Line);
    if (m_statement.RefusedSettings() > 0)
        m_report.Add(TPassed::RefusedSetting, m_flow.Place().Line);
    RunWords();
}

void TRS274DRun::TellFault(TRS274DFault fault) {
    const TFaultText& text = FaultTexts[static_cast<std::size_t>(fault)];
    const QString name = QString::fromUtf8(m_parameters.Missing());
    if (fault == TRS274DFault::NoSuchValue && !name.isEmpty())
        return m_machine.Fail(text.Kind, QStringLiteral("Parameter %1 without a value.").arg(name));
    m_machine.Fail(text.Kind, QLatin1String(text.Message));
}

void TRS274DRun::TellNotes() {
    const qint64 line = m_flow.Place().Line;
    if (m_parameters.TakeReadUnset()) m_report.Add(TPassed::UnsetParameter, line);
    if (m_parameters.TakeReadUnknown()) m_report.Add(TPassed::MachineParameter, line);
    if (m_parameters.IsFull())
        m_machine.Refuse(
            QStringLiteral("The program has more than %1 named parameters.").arg(MaxRS274DNames));
}

} // namespace ZEP
