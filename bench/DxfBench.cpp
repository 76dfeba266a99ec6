#include "bench/ReaderBench.h"
#include "tests/ResidentMemory.h"
#include <zep/converters/dxf/Converter.h>
#include <zep/converters/dxf/Entity.h>
#include <zep/scene/Scene.h>

#include <malloc.h>

#include <charconv>
#include <cmath>
#include <cstring>
#include <string>

namespace ZEP {
namespace {

constexpr int EntityCount = 500'000;

/// Pairs as drawing programs write them: the code right-aligned, numbers of up to 16 digits.
class TText {
public:
    void Add(int code, std::string_view value) {
        m_text.append(code < 10 ? "  " : code < 100 ? " " : "").append(std::to_string(code));
        m_text.append(1, '\n').append(value).append(1, '\n');
    }
    void Add(int code, double value) {
        char digits[64];
        const auto end = std::to_chars(digits, digits + sizeof digits, value);
        Add(code, std::string_view(digits, end.ptr));
    }
    void AddPoint(int first, double x, double y) {
        Add(first, x);
        Add(first + 10, y);
        Add(first + 20, 0.0);
    }
    std::string Take() { return std::move(m_text); }

private:
    std::string m_text;
};

constexpr const char* Layers[] = {"0", "WALLS", "DIMENSIONS", "HATCH"};

void AddHead(TText& text) {
    text.Add(0, "SECTION");
    text.Add(2, "TABLES");
    text.Add(0, "TABLE");
    text.Add(2, "LAYER");
    for (const char* layer : Layers) {
        text.Add(0, "LAYER");
        text.Add(2, layer);
        text.Add(62, "7");
    }
    text.Add(0, "ENDTAB");
    text.Add(0, "ENDSEC");
    text.Add(0, "SECTION");
    text.Add(2, "ENTITIES");
}

/// By turns a line, an arc and a circle, on a layer for a hundred at a time.
void AddEntity(TText& text, int i) {
    constexpr const char* kinds[] = {"LINE", "ARC", "CIRCLE"};
    const int kind = i % 3;
    const double angle = i * 0.01;
    text.Add(0, kinds[kind]);
    text.Add(5, "4F2A");
    text.Add(100, "AcDbEntity");
    text.Add(8, Layers[i / 100 % 4]);
    text.Add(62, i % 2 == 0 ? "     3" : "   256");
    text.AddPoint(10, 1000 * std::cos(angle), 1000 * std::sin(angle));
    if (kind == 0) return text.AddPoint(11, angle, 1000 * std::cos(angle));
    text.Add(40, 1 + std::fabs(std::sin(angle)));
    if (kind == 2) return;
    text.Add(50, angle);
    text.Add(51, angle + 90);
}

const std::string& Drawing() {
    static const std::string drawing = [] {
        TText text;
        AddHead(text);
        for (int i = 0; i < EntityCount; ++i) AddEntity(text, i);
        text.Add(0, "ENDSEC");
        text.Add(0, "EOF");
        return text.Take();
    }();
    return drawing;
}

/// What no reader can do without: find the lines, convert the codes and the numbers.
double SplitAndConvert(const std::string& text) {
    double sum = 0;
    bool isCode = true;
    int code = 0;
    for (const char *line = text.data(), *end = line + text.size(); line < end;) {
        const auto* lineEnd =
            static_cast<const char*>(std::memchr(line, '\n', static_cast<std::size_t>(end - line)));
        const char* digits = line;
        while (digits < lineEnd && *digits == ' ') ++digits;
        double value = 0;
        if (isCode)
            std::from_chars(digits, lineEnd, code);
        else if (code >= 10 && code < 80)
            std::from_chars(digits, lineEnd, value);
        sum += value;
        isCode = !isCode;
        line = lineEnd + 1;
    }
    return sum;
}

double Yardstick() {
    static const double seconds =
        BestSecondsOf([] { benchmark::DoNotOptimize(SplitAndConvert(Drawing())); });
    return seconds;
}

void DxfYardstick(benchmark::State& state) {
    double seconds = 0;
    for (auto _ : state)
        seconds += Timed(state, [] { benchmark::DoNotOptimize(SplitAndConvert(Drawing())); });
    ReportReading(state, seconds, Yardstick(), EntityCount);
    state.counters["megabytes"] = static_cast<double>(Drawing().size()) / 1e6;
}

/// Entities without objects: the pairs, their numbers, and the search for the section.
void DxfEntities(benchmark::State& state) {
    Yardstick();
    double seconds = 0;
    for (auto _ : state) {
        int count = 0;
        seconds += Timed(state, [&count] {
            TDXFTags tags(Drawing());
            tags.move_to_entity_section();
            tags.NextGroupCode();
            for (TEntity entity; read_entity_data(tags, entity); ++count) tags.NextGroupCode();
        });
        if (count < EntityCount) state.SkipWithError("not all entities were read");
    }
    ReportReading(state, seconds, Yardstick(), EntityCount);
}

/// With fresh memory, as in a program that opens its first file, the system hands out and clears
/// every page; else the memory of the objects before is used again.
void DxfObjects(benchmark::State& state) {
    Yardstick();
    double seconds = 0;
    for (auto _ : state) {
        const bool isFresh = state.range(1) != 0;
        if (isFresh) malloc_trim(0);
        const double before = ResidentBytes();
        TZEPScene scene;
        TDXFConverter converter;
        converter.SetRoot(&scene);
        converter.SetExtended(state.range(0) != 0);
        seconds += Timed(state, [&] { converter.ReadDXF(Drawing()); });
        if (isFresh) state.counters["bytes_each"] = (ResidentBytes() - before) / EntityCount;
        int count = 0;
        for (int i = 0; i < scene.GetItemsCount(); ++i) count += scene.GetItem(i)->GetItemsCount();
        if (count != EntityCount) state.SkipWithError("not all objects were made");
    }
    ReportReading(state, seconds, Yardstick(), EntityCount);
}

BENCHMARK(DxfYardstick)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(DxfEntities)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(DxfObjects)
    ->ArgNames({"extended", "fresh"})
    ->ArgsProduct({{0, 1}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
