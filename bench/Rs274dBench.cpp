#include "bench/ReaderBench.h"
#include <zep/converters/rs274d/Converter.h>
#include <zep/converters/rs274d/Program.h>
#include <zep/converters/rs274d/ToolPathStatistics.h>
#include <zep/scene/Scene.h>

#include <malloc.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

namespace ZEP {
namespace {

constexpr int LineCount = 1'000'000;

void AppendWord(std::string& text, char letter, double value) {
    char digits[64];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 4);
    text.append(1, ' ').append(1, letter).append(digits, end.ptr);
}

/// A path that winds outwards in short lines; every fifth is an arc.
const std::string& Program() {
    static const std::string program = [] {
        std::string text = "G21 G90 G17\n";
        for (int i = 1; i < LineCount; ++i) {
            const double angle = i * 0.01;
            const bool isArc = i % 5 == 0;
            text += isArc ? "G3" : "G1";
            AppendWord(text, 'X', (10 + angle) * std::cos(angle));
            AppendWord(text, 'Y', (10 + angle) * std::sin(angle));
            if (isArc)
                AppendWord(text, 'R', 10 + angle);
            else
                AppendWord(text, 'Z', -1 - i * 1e-6);
            text += '\n';
        }
        return text;
    }();
    return program;
}

/// What no reader can do without: find the lines, find the words, convert their numbers.
double SplitAndConvert(const std::string& text) {
    double sum = 0;
    for (const char *line = text.data(), *end = line + text.size(); line < end;) {
        const auto* lineEnd =
            static_cast<const char*>(std::memchr(line, '\n', static_cast<std::size_t>(end - line)));
        while (line < lineEnd) {
            double value = 0;
            const auto result = std::from_chars(line + 1, lineEnd, value);
            line = result.ec == std::errc() ? result.ptr : line + 1;
            sum += value;
        }
        ++line;
    }
    return sum;
}

/// The same as most programs write it, with a string for each line.
double GetlineAndStrtod(const std::string& text) {
    std::istringstream stream(text);
    double sum = 0;
    for (std::string line; std::getline(stream, line);)
        for (char* place = line.data(); *place;) {
            char* end = nullptr;
            sum += std::strtod(place + 1, &end);
            place = std::max(place + 1, end);
        }
    return sum;
}

double Yardstick() {
    static const double seconds =
        BestSecondsOf([] { benchmark::DoNotOptimize(SplitAndConvert(Program())); });
    return seconds;
}

/// "lines" a second, and how many times the yardstick a reading takes.
void Report(benchmark::State& state, double seconds) {
    ReportReading(state, seconds, Yardstick(), LineCount);
}

void Rs274dYardstick(benchmark::State& state) {
    double seconds = 0;
    for (auto _ : state)
        seconds += Timed(state, [] { benchmark::DoNotOptimize(SplitAndConvert(Program())); });
    Report(state, seconds);
}

void Rs274dGetline(benchmark::State& state) {
    Yardstick();
    double seconds = 0;
    for (auto _ : state)
        seconds += Timed(state, [] { benchmark::DoNotOptimize(GetlineAndStrtod(Program())); });
    Report(state, seconds);
}

class NoPath : public TRS274DSink {
public:
    qint64 Moves = 0;
    void Rapid(const TRS274DPoint&, const TRS274DPoint&, qint64) override { ++Moves; }
    void Feed(const TRS274DPoint&, const TRS274DPoint&, qint64) override { ++Moves; }
    void Drill(const TRS274DPoint&, qint64) override { ++Moves; }
    void Arc(const TRS274DArc&, qint64) override { ++Moves; }
    void Curve(std::span<const TRS274DPoint>, double, qint64) override { ++Moves; }
    void NextTool() override {}
    void Dump(std::string_view) override {}
};

void Rs274dPath(benchmark::State& state) {
    Yardstick();
    double seconds = 0;
    for (auto _ : state) {
        NoPath path;
        TRS274DReport report;
        seconds += Timed(
            state, [&] { ReadRS274D(Program(), {.Extended = state.range(0) != 0}, path, report); });
        if (path.Moves != LineCount - 1) state.SkipWithError("not all moves were read");
    }
    Report(state, seconds);
}

/// What is asked of a path: 0 keeping it beside its reading, 1 its statistics, 2 all times anew.
void Rs274dToolPath(benchmark::State& state) {
    Yardstick();
    TToolPath kept;
    TRS274DReport report;
    ReadRS274D(Program(), {.Extended = true}, kept, report);
    double seconds = 0;
    for (auto _ : state)
        seconds += Timed(state, [&] {
            if (state.range(0) == 0) {
                TToolPath path;
                ReadRS274D(Program(), {.Extended = true}, path, report);
                benchmark::DoNotOptimize(path.Seconds());
            } else if (state.range(0) == 1) {
                benchmark::DoNotOptimize(StatisticsOf(kept).All.CutLength);
            } else {
                kept.SetRapidRate(kept.RapidRate() + 1);
            }
        });
    if (kept.Count() != LineCount - 1) state.SkipWithError("not all moves were kept");
    Report(state, seconds);
}

std::string WithExpressions() {
    std::string text = Program();
    for (std::size_t y = text.find('Y'); y != std::string::npos; y = text.find('Y', y + 1)) {
        text.insert(text.find(' ', y), "+#1*2]");
        text.insert(y + 1, 1, '[');
    }
    return "#1=0\n" + text;
}

/// A move for each line: with an expression in it, or by loops.
void Rs274dRun(benchmark::State& state) {
    Yardstick();
    const std::string programs[] = {
        WithExpressions(), "G1\nO1 REPEAT [999999]\nG91 X0.5 Y-0.25\nO1 ENDREPEAT",
        "G1\n#1=0\nO1 WHILE [#1 LT 999999]\nX[#1*0.001] Y[10*SIN[#1]] Z-1\n#1=[#1+1]\nO1 ENDWHILE"};
    const std::string& program = programs[state.range(0)];
    double seconds = 0;
    for (auto _ : state) {
        NoPath path;
        TRS274DReport report;
        seconds += Timed(state, [&] { ReadRS274D(program, {.Extended = true}, path, report); });
        if (path.Moves != LineCount - 1) state.SkipWithError("not all moves were made");
    }
    Report(state, seconds);
}

/// With fresh memory, as in a program that opens its first file, the system hands out and clears
/// every page; else the memory of the objects before is used again.
void Rs274dObjects(benchmark::State& state) {
    Yardstick();
    double seconds = 0;
    for (auto _ : state) {
        if (state.range(1) != 0) malloc_trim(0);
        TZEPScene scene;
        TRS274DConverter converter;
        converter.SetRoot(&scene);
        converter.SetExtended(state.range(0) != 0);
        seconds += Timed(state, [&] { converter.ReadNC(Program()); });
        if (scene.GetItemsCount() != LineCount - 1)
            state.SkipWithError("not all objects were made");
    }
    Report(state, seconds);
}

BENCHMARK(Rs274dYardstick)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Rs274dGetline)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Rs274dPath)
    ->ArgName("extended")
    ->Arg(0)
    ->Arg(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(Rs274dRun)->ArgName("program")->DenseRange(0, 2)->UseManualTime()->Unit(
    benchmark::kMillisecond);
BENCHMARK(Rs274dToolPath)
    ->ArgName("asked")
    ->DenseRange(0, 2)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(Rs274dObjects)
    ->ArgNames({"extended", "fresh"})
    ->ArgsProduct({{0, 1}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
