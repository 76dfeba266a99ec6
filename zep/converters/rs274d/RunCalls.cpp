#include <zep/converters/rs274d/Run.h>

#include <cmath>

namespace ZEP {

namespace {

/// Controls without the word L put the count in front of four digits: P30012 is O0012, three times.
constexpr double PackedCount = 10000;

} // namespace

void TRS274DRun::Transfer(TRS274DTransfer transfer) {
    if (transfer == TRS274DTransfer::Return) return ReturnFromProgram();
    const double count = m_block.Has('L') ? std::round(m_block.Value('L')) : 1;
    if (!m_block.Has('P')) return TellNoSubprogram(QStringLiteral("without a number"));
    if (count < 1) return;
    const double number = m_block.Value('P');
    return transfer == TRS274DTransfer::CallLine ? CallLine(number, count)
                                                 : CallProgram(number, count);
}

void TRS274DRun::CallProgram(double number, double count) {
    const std::string label = RS274DLabelOf(number);
    if (const auto subprogram = m_subprograms.Find(label, m_flow.Text()); subprogram.Text)
        return Enter(subprogram, count, false);
    if (number < PackedCount || m_block.Has('L'))
        return TellNoSubprogram(QString::fromStdString(label));
    const std::string packed = RS274DLabelOf(std::fmod(number, PackedCount));
    const auto subprogram = m_subprograms.Find(packed, m_flow.Text());
    if (!subprogram.Text) return TellNoSubprogram(QString::fromStdString(label));
    Enter(subprogram, std::floor(number / PackedCount), false);
}

void TRS274DRun::CallLine(double number, double count) {
    const TLineSource* line = m_flow.Text().FindLine(number);
    if (!line) return TellNoSubprogram(u'N' + QString::fromStdString(RS274DLabelOf(number)));
    Enter({&m_flow.Text(), *line}, count, false);
}

void TRS274DRun::CallSub(const TControlBlock& block) {
    std::string label = RS274DLabelText(block.Label);
    if (label.starts_with('#') || label.starts_with('[')) {
        if (!ReadValues(block.Label)) return;
        label = RS274DLabelOf(m_values[0]);
    }
    const auto subprogram = m_subprograms.Find(label, m_flow.Text());
    if (!subprogram.Text) return TellNoSubprogram(QString::fromStdString(label));
    if (!ReadValues(block.Arguments)) return;
    if (m_values.size() > static_cast<std::size_t>(m_parameters.LocalCount()))
        return m_parameters.ForgetMissing(), TellFault(TRS274DFault::NoSuchValue);
    Enter(subprogram, 1, true);
    m_parameters.EnterSub(m_values);
}

void TRS274DRun::Enter(const TRS274DSubprogram& subprogram, double count, bool isSub) {
    if (m_flow.Depth() >= MaxRS274DCallDepth)
        m_machine.Refuse(
            QStringLiteral("More than %1 subprograms call each other.").arg(MaxRS274DCallDepth));
    m_flow.Call(subprogram, count, isSub);
    if (!isSub) m_parameters.EnterProgram();
}

void TRS274DRun::TellNoSubprogram(const QString& name) {
    m_machine.Fail(TPassed::NoSubprogram, QStringLiteral("No subprogram %1.").arg(name));
}

void TRS274DRun::Leave() {
    switch (m_flow.Return()) {
    case TRS274DReturn::Nothing:
        return;
    case TRS274DReturn::Program:
        return m_parameters.LeaveProgram();
    case TRS274DReturn::Sub:
        return m_parameters.LeaveSub();
    }
}

void TRS274DRun::ReturnFromProgram() {
    if (m_flow.Depth() == 0) {
        m_report.Add(TPassed::MainReturn, m_flow.Place().Line);
        return m_machine.End();
    }
    if (m_block.Has('P')) m_flow.DropTimes();
    Leave();
    if (m_block.Has('P')) GoToLine(m_block.Value('P'));
}

void TRS274DRun::ReturnFromSub(const TControlBlock& block) {
    if (!ReadValues(block.Arguments)) return;
    m_parameters.SetReturned(m_values.empty() ? std::nullopt : std::optional(m_values[0]));
    Leave();
}

} // namespace ZEP
