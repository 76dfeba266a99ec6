#include <zep/converters/rs274d/Run.h>
#include <zep/framework/Exception.h>

namespace ZEP {

namespace {

class TNoPath final : public TRS274DSink {
    void Rapid(const TRS274DPoint&, const TRS274DPoint&, qint64) override {}
    void Feed(const TRS274DPoint&, const TRS274DPoint&, qint64) override {}
    void Drill(const TRS274DPoint&, qint64) override {}
    void Arc(const TRS274DArc&, qint64) override {}
    void Curve(std::span<const TRS274DPoint>, double, qint64) override {}
    void NextTool() override {}
    void Dump(std::string_view) override {}
};

} // namespace

/// An arc that fits as machines have it settles it: only a program that begins otherwise runs
/// twice.
TRS274DCenters TRS274DRun::Judge(TRS274DCenters told) {
    return told == TRS274DCenters::Incremental ? told : CentersOfAll();
}

TRS274DCenters TRS274DRun::CentersOfAll() {
    TNoPath path;
    TRS274DReport report;
    TRS274DOptions options = m_options;
    options.StopOnErrors = options.Trace = false;
    TRS274DRun all(m_text, options, path, report);
    bool isAbsolute = false, isIncremental = false;
    all.m_machine.SetCenterJudge([&](TRS274DCenters told) {
        isAbsolute |= told == TRS274DCenters::Absolute;
        isIncremental |= told == TRS274DCenters::Incremental;
        if (isIncremental) all.m_machine.End();
        return TRS274DCenters::Unknown;
    });
    const auto done = static_cast<qint64>(m_flow.Position());
    try {
        m_isCancelled =
            !all.Go([&](qint64, qint64) { return !m_progress || m_progress(done, m_size); });
    } catch (const Exception&) { // what is beyond a limit is told when it is drawn
    }
    if (m_isCancelled) m_machine.End();
    return isAbsolute && !isIncremental ? TRS274DCenters::Absolute : TRS274DCenters::Incremental;
}

} // namespace ZEP
