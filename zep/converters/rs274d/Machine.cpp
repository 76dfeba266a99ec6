#include <zep/converters/rs274d/Machine.h>

#include <zep/framework/UserError.h>

#include <charconv>
#include <cmath>

namespace ZEP {

TRS274DMachine::TRS274DMachine(const TRS274DOptions& options, TRS274DSink& sink,
                               TRS274DReport& report)
    : m_options(options), m_sink(sink), m_report(report) {}

void TRS274DMachine::Run(const TRS274DBlock& block, const TRS274DPlace& place) {
    m_place = place;
    if (block.End() != TRS274DBlockEnd::Complete) NoteEnd(block);
    RunBlock(block);
}

void TRS274DMachine::PassLine(const TRS274DPlace& place) {
    m_place = place;
    Fail(TRS274DPassed::LongLine,
         QStringLiteral("Line longer than %1 characters.").arg(MaxRS274DLineLength));
}

void TRS274DMachine::NoteEnd(const TRS274DBlock& block) {
    switch (block.End()) {
    case TRS274DBlockEnd::Complete:
        return;
    case TRS274DBlockEnd::Deleted:
        return m_report.Add(TRS274DPassed::Deleted, m_place.Line);
    case TRS274DBlockEnd::Variable:
        return m_report.Add(TRS274DPassed::Variable, m_place.Line);
    case TRS274DBlockEnd::Expression:
        return m_report.Add(TRS274DPassed::Expression, m_place.Line);
    case TRS274DBlockEnd::ControlWord:
        return m_report.Add(TRS274DPassed::ControlWord, m_place.Line);
    case TRS274DBlockEnd::Unreadable:
        return m_report.Add(TRS274DPassed::Unreadable, m_place.Line);
    case TRS274DBlockEnd::BadNumber:
        break;
    }
    constexpr std::size_t shown = 40;
    const std::string_view word = block.Rest().substr(0, shown);
    Fail(TRS274DPassed::BadNumber,
         QStringLiteral("Invalid number in word \"%1\".")
             .arg(QLatin1String(word.data(), static_cast<qsizetype>(word.size()))));
}

void TRS274DMachine::Fail(TRS274DPassed kind, const QString& message) {
    if (m_options.StopOnErrors) Refuse(message);
    m_report.Add(kind, m_place.Line);
}

void TRS274DMachine::Refuse(const QString& message, const QString& gap) const {
    const QString file =
        m_place.File
            ? QStringLiteral(" In \"%1\", line %2.").arg(*m_place.File).arg(m_place.FileLine)
            : QString();
    throw TUserError(message + file + gap + QStringLiteral("Line: %1").arg(m_place.Line),
                     message + file, {.Place = {.Line = m_place.Line}});
}

void TRS274DMachine::FailArc(TRS274DPassed kind) {
    Fail(kind, QStringLiteral("Cannot reach destination with specified radius."));
}

void TRS274DMachine::FailNoMotionMode() {
    // Hosts compare this text: no blank before "Line".
    if (m_options.StopOnErrors)
        Refuse(QStringLiteral("Cannot use axis commands with no motion mode set."), {});
    m_report.Add(TRS274DPassed::NoMotionMode, m_place.Line);
}

qint64 TRS274DMachine::GetRepeatCount(const TRS274DBlock& block, char letter) {
    if (!block.Has(letter)) return 0;
    const qint64 count = std::llrint(block.Value(letter));
    if (count <= MaxRS274DRepeatCount) return count;
    Fail(TRS274DPassed::Repetitions,
         QStringLiteral("Repeat count %1 is larger than %2.").arg(count).arg(MaxRS274DRepeatCount));
    return MaxRS274DRepeatCount;
}

void TRS274DMachine::SpendRepetitions(double count) {
    m_repetitions += std::fmin(count, MaxRS274DRepetitions + 1.0);
    if (m_repetitions <= MaxRS274DRepetitions) return;
    Refuse(QStringLiteral("The program repeats more than %1 motions.").arg(MaxRS274DRepetitions));
}

void TRS274DMachine::Rapid(const TRS274DPoint& to) {
    m_sink.Rapid(m_position, to, m_place.Line);
    m_position = to;
    ++m_motions;
}

void TRS274DMachine::Feed(const TRS274DPoint& to) {
    m_sink.Feed(m_position, to, m_place.Line);
    m_position = to;
    ++m_motions;
}

void TRS274DMachine::Draw(const TRS274DArc& arc) {
    m_sink.Arc(arc, m_place.Line);
    ++m_motions;
}

void TRS274DMachine::Draw(std::span<const TRS274DPoint> points, double length) {
    constexpr std::size_t pointsOfMotion = 10;
    m_sink.Curve(points, length, m_place.Line);
    m_motions += static_cast<qint64>(1 + points.size() / pointsOfMotion);
}

void TRS274DMachine::Trace(std::string_view text) {
    if (m_options.Trace && !text.empty()) m_sink.Dump(text);
}

void TRS274DMachine::TraceSkipped(const TRS274DWord& word) {
    if (!m_options.Trace) return;
    m_text.assign("skip word (").append(word.Text).append(")");
    m_sink.Dump(m_text);
}

void TRS274DMachine::AppendNumber(std::string_view name, double value) {
    char digits[512];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 6).ptr;
    if (!m_text.empty()) m_text.append(", ");
    m_text.append(name).append("=").append(digits, end);
}

void TRS274DMachine::TraceMotion(const TRS274DPoint& target, const std::array<double, 4>* center) {
    if (!m_options.Trace) return;
    const auto dump = [this](const char* names, const double* values, std::size_t count) {
        m_text.clear();
        for (std::size_t i = 0; i < count; ++i) AppendNumber({names + i, 1}, values[i]);
        m_sink.Dump(m_text);
    };
    dump("XYZ", target.data(), target.size());
    if (center) dump("IJKR", center->data(), center->size());
}

} // namespace ZEP
