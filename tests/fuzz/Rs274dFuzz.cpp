#include <zep/converters/rs274d/DialectGuess.h>
#include <zep/converters/rs274d/Program.h>
#include <zep/converters/rs274d/ToolPathStatistics.h>
#include <zep/framework/Exception.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace ZEP {
namespace {

/// Loops without an end shall not take the time of other inputs.
constexpr int MaxRunAgain = 10'000;

/// Stops the process on a path that no scene could show.
class PathChecker : public TRS274DSink {
public:
    void Rapid(const TRS274DPoint& from, const TRS274DPoint& to, qint64) override {
        Check(from);
        Check(to);
    }
    void Feed(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) override {
        Rapid(from, to, line);
    }
    void Drill(const TRS274DPoint& at, qint64) override { Check(at); }
    void Arc(const TRS274DArc& arc, qint64) override {
        Check(arc.Center);
        Check({arc.Radius, arc.StartAngle, arc.EndAngle});
        Require(arc.StartAngle >= 0 && arc.StartAngle < 360);
        Require(arc.EndAngle >= 0 && arc.EndAngle < 360);
        Require(arc.Sweep > 0 && arc.Sweep <= 360);
    }
    void Curve(std::span<const TRS274DPoint> points, double length, qint64) override {
        Require(points.size() >= 2 && length >= 0 && std::isfinite(length));
        for (const TRS274DPoint& point : points) Check(point);
    }
    void NextTool() override {}
    void ToolChange(const TRS274DTool& tool, qint64) override {
        Require(tool.Number >= TRS274DTool::NoNumber && tool.Diameter >= 0);
    }
    void Settings(const TRS274DSettings& settings) override {
        Require(settings.Feed >= 0 && settings.SpindleSpeed >= 0);
        Require(settings != m_settings);
        m_settings = settings;
    }
    void Dwell(double seconds, qint64) override { Require(seconds > 0); }
    void Dump(std::string_view text) override { Require(!text.empty()); }

private:
    TRS274DSettings m_settings;

    static void Require(bool condition) {
        if (!condition) std::abort();
    }
    static void Check(const TRS274DPoint& point) {
        for (const double value : point) Require(std::isfinite(value));
    }
};

TRS274DOptions Asked(bool extended, bool strict, TRS274DDialect dialect) {
    return {.Extended = extended,
            .StopOnErrors = strict,
            .Trace = strict,
            .MaxBlocks = MaxRunAgain,
            .MaxMotions = MaxRunAgain,
            .Dialect = dialect};
}

void ReadInto(TRS274DSink& sink, std::string_view text, const TRS274DOptions& options) {
    TRS274DReport report;
    try {
        ReadRS274D(text, options, sink, report);
    } catch (const Exception&) { // errors are told, never crashes
    }
}

/// Each move is within its bounds, and they follow each other in time.
void CheckPath(const TToolPath& path) {
    double before = 0;
    for (int i = 0; i < path.Count(); ++i) {
        const TToolMove move = path.Move(i);
        PathChecker().Rapid(path.PointOf(i, 0.5), {move.Length, move.Feed, move.End}, move.Line);
        if (move.Begin != before || move.End < move.Begin || move.Tool >= path.Tools().size())
            std::abort();
        before = move.End;
    }
    PathChecker().Rapid({StatisticsOf(path).All.CutLength}, {}, 0);
}

/// Reads any bytes as a program, in every way there is.
void ReadInEveryWay(std::string_view text) {
    constexpr auto ngc = TRS274DDialect::NGC, fanuc = TRS274DDialect::Fanuc;
    for (const bool strict : {false, true})
        for (const auto& [extended, dialect] :
             {std::pair(false, ngc), std::pair(true, ngc), std::pair(true, fanuc)}) {
            PathChecker checker;
            ReadInto(checker, text, Asked(extended, strict, dialect));
        }
    TToolPath path;
    ReadInto(path, text, Asked(true, false, GuessRS274DDialect(text)));
    CheckPath(path);
}

} // namespace
} // namespace ZEP

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ZEP::ReadInEveryWay({reinterpret_cast<const char*>(data), size});
    return 0;
}
