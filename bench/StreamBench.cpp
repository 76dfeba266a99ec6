#include <zep/framework/stream/StreamFile.h>
#include <zep/objects/Line.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vertex3.h>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <ctime>
#include <fstream>

namespace ZEP {
namespace {

constexpr int LineCount = 100'000;
constexpr int VertexCount = 1'000'000;

TGLArrayd3 PointAt(int i) {
    const double angle = i * 0.01;
    return {(10 + angle) * std::cos(angle), (10 + angle) * std::sin(angle), -1 - i * 1e-6};
}

void AddLines(TZEPScene& scene) {
    for (int i = 0; i < LineCount; ++i) {
        auto* line = new TZEPLine(&scene);
        const TGLArrayd3 from = PointAt(i);
        const TGLArrayd3 to = PointAt(i + 1);
        line->P1()->SetData(from[0], from[1], from[2]);
        line->P2()->SetData(to[0], to[1], to[2]);
        line->SetColor(clYellow);
        line->SetParentComponent(&scene);
    }
}

void AddPolyline(TZEPScene& scene) {
    auto* polyline = new TZEPPolyline(&scene);
    for (int i = 0; i < VertexCount; ++i) polyline->Vertexes()->Add()->SetPoint(PointAt(i));
    polyline->SetParentComponent(&scene);
}

enum TTree { Lines, Polyline };

void Fill(TZEPScene& scene, TTree tree) {
    scene.BeginUpdate();
    tree == Lines ? AddLines(scene) : AddPolyline(scene);
    scene.EndUpdate();
}

/// Of the processor: waiting for the disk is the same for everybody.
template <class Action>
double SecondsOf(Action action) {
    const std::clock_t start = std::clock();
    action();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

constexpr double Mega = 1e6;

double SizeOf(const QString& fileName) {
    return static_cast<double>(QFile(fileName).size()) / Mega;
}

// --- the yardstick -------------------------------------------------------------------------------

/// The numbers that a stream of the tree holds, one after the other.
std::vector<double> NumbersOf(const QString& fileName) {
    TStreamFile file(fileName);
    std::vector<double> numbers;
    for (const TToken* token = &file.Source().Next(); token->Kind != TTokenKind::End;
         token = &file.Source().Next())
        if (token->Kind == TTokenKind::Float) numbers.push_back(token->Float);
    return numbers;
}

void WritePlainly(const std::string& fileName, const std::vector<double>& numbers, bool asText) {
    std::ofstream file(fileName, std::ios::binary);
    for (const double number : numbers) {
        char text[32];
        if (!asText) {
            file.write(reinterpret_cast<const char*>(&number), sizeof number);
            continue;
        }
        char* end = std::to_chars(text, text + sizeof text, number).ptr;
        *end++ = '\n';
        file.write(text, end - text);
    }
}

void ReadPlainly(const std::string& fileName, std::vector<double>& numbers, bool asText) {
    std::ifstream file(fileName, std::ios::binary);
    double number = 0;
    if (!asText) {
        while (file.read(reinterpret_cast<char*>(&number), sizeof number))
            numbers.push_back(number);
        return;
    }
    for (std::string line; std::getline(file, line);) {
        std::from_chars(line.data(), line.data() + line.size(), number);
        numbers.push_back(number);
    }
}

struct TSpeeds {
    double Write = 0, Read = 0; ///< MB a second
};

TSpeeds PlainSpeeds(const QString& streamName, const QString& plainName, bool asText) {
    const std::vector<double> numbers = NumbersOf(streamName);
    const std::string name = plainName.toStdString();
    TSpeeds best;
    for (int i = 0; i < 3; ++i) {
        const double write = SecondsOf([&] { WritePlainly(name, numbers, asText); });
        std::vector<double> read;
        const double seconds = SecondsOf([&] { ReadPlainly(name, read, asText); });
        best.Write = std::max(best.Write, SizeOf(plainName) / write);
        best.Read = std::max(best.Read, SizeOf(plainName) / seconds);
    }
    return best;
}

// --- saving and loading --------------------------------------------------------------------------

void Stream(benchmark::State& state, TTree tree, TStreamForm form) {
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("scene"));
    const bool asText = form == TStreamForm::Text;
    TZEPScene scene;
    Fill(scene, tree);
    double save = 0, load = 0;
    for (auto _ : state) {
        save += SecondsOf([&] { asText ? scene.SaveToTextFile(name) : scene.SaveToFile(name); });
        TZEPScene loaded;
        load +=
            SecondsOf([&] { asText ? loaded.LoadFromTextFile(name) : loaded.LoadFromFile(name); });
        state.PauseTiming();
        loaded.Clear();
        state.ResumeTiming();
    }
    const double size = SizeOf(name) * static_cast<double>(state.iterations());
    const TSpeeds plain = PlainSpeeds(name, folder.filePath(QStringLiteral("plain")), asText);
    state.counters["MB"] = SizeOf(name);
    state.counters["save_MB_s"] = size / save;
    state.counters["load_MB_s"] = size / load;
    state.counters["plain_write_MB_s"] = plain.Write;
    state.counters["plain_read_MB_s"] = plain.Read;
    state.counters["save_times_plain"] = plain.Write / (size / save);
    state.counters["load_times_plain"] = plain.Read / (size / load);
}

// --- memory --------------------------------------------------------------------------------------

double MemoryMegabytes(const char* key) {
    std::ifstream file("/proc/self/status");
    for (std::string line; std::getline(file, line);)
        if (line.starts_with(key)) return std::stod(line.substr(line.find(':') + 1)) / 1000;
    return 0;
}

/// The file is in memory while it is loaded, which the peak tells.
void Memory(benchmark::State& state, TTree tree, TStreamForm form) {
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("scene"));
    const bool asText = form == TStreamForm::Text;
    malloc_trim(0);
    const double before = MemoryMegabytes("RssAnon");
    double own = 0;
    {
        TZEPScene scene;
        Fill(scene, tree);
        own = MemoryMegabytes("RssAnon") - before;
        asText ? scene.SaveToTextFile(name) : scene.SaveToFile(name);
    }
    malloc_trim(0);
    for (auto _ : state) {
        const double start = MemoryMegabytes("RssAnon");
        std::ofstream("/proc/self/clear_refs") << "5";
        const double all = MemoryMegabytes("VmRSS");
        TZEPScene loaded;
        asText ? loaded.LoadFromTextFile(name) : loaded.LoadFromFile(name);
        state.counters["tree_MB"] = own;
        state.counters["loaded_MB"] = MemoryMegabytes("RssAnon") - start;
        state.counters["peak_MB"] = MemoryMegabytes("VmHWM") - all;
        state.counters["file_MB"] = SizeOf(name);
    }
}

BENCHMARK_CAPTURE(Stream, lines_binary, Lines, TStreamForm::Binary)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Stream, lines_text, Lines, TStreamForm::Text)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Stream, polyline_binary, Polyline, TStreamForm::Binary)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Stream, polyline_text, Polyline, TStreamForm::Text)
    ->Unit(benchmark::kMillisecond);

// One measurement each: memory that was used before would hide what is used now.
BENCHMARK_CAPTURE(Memory, lines_binary, Lines, TStreamForm::Binary)->Iterations(1);
BENCHMARK_CAPTURE(Memory, lines_text, Lines, TStreamForm::Text)->Iterations(1);
BENCHMARK_CAPTURE(Memory, polyline_binary, Polyline, TStreamForm::Binary)->Iterations(1);
BENCHMARK_CAPTURE(Memory, polyline_text, Polyline, TStreamForm::Text)->Iterations(1);

} // namespace
} // namespace ZEP
