#include "tests/converters/threeds/ThreeDSBytes.h"
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/converters/threeds/Converter.h>
#include <zep/objects/Mesh.h>
#include <zep/scene/Scene.h>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <ctime>
#include <vector>

namespace ZEP {
namespace {

constexpr int MeshCount = 16;
constexpr int Columns = 250; // of squares in a mesh
constexpr int Rows = 125;
constexpr int FacesOfMesh = 2 * Columns * Rows;
constexpr int TriangleCount = MeshCount * FacesOfMesh;

/// A count of 16 bits, and numbers.
template <class T>
std::string Array(int count, const std::vector<T>& numbers) {
    std::string bytes = F3DS::Words({static_cast<std::uint16_t>(count)});
    for (const T number : numbers) bytes += F3DS::Numbers<T>({number});
    return bytes;
}

std::string Points(int mesh) {
    std::vector<float> numbers;
    for (int y = 0; y <= Rows; ++y)
        for (int x = 0; x <= Columns; ++x)
            for (const int value : {x, y, (x * x + y * y) % 97 + mesh})
                numbers.push_back(static_cast<float>(value));
    return F3DS::Chunk(0x4110, Array(static_cast<int>(numbers.size() / 3), numbers));
}

std::string TexCoords() {
    std::vector<float> numbers;
    for (int y = 0; y <= Rows; ++y)
        for (int x = 0; x <= Columns; ++x) {
            numbers.push_back(static_cast<float>(x) / Columns);
            numbers.push_back(static_cast<float>(y) / Rows);
        }
    return F3DS::Chunk(0x4140, Array(static_cast<int>(numbers.size() / 2), numbers));
}

std::string Faces() {
    std::vector<std::uint16_t> corners;
    std::vector<std::uint16_t> all;
    const auto add = [&](int a, int b, int c) {
        for (const int word : {a, b, c, 7}) corners.push_back(static_cast<std::uint16_t>(word));
        all.push_back(static_cast<std::uint16_t>(all.size()));
    };
    for (int y = 0; y < Rows; ++y)
        for (int x = 0; x < Columns; ++x) {
            const int a = y * (Columns + 1) + x;
            add(a, a + 1, a + Columns + 2);
            add(a, a + Columns + 2, a + Columns + 1);
        }
    const std::string group = F3DS::Chunk(0x4130, F3DS::Name("Paint") + Array(FacesOfMesh, all));
    const std::string smoothing = F3DS::Chunk(0x4150, std::string(4 * FacesOfMesh, '\1'));
    return F3DS::Chunk(0x4120, Array(FacesOfMesh, corners) + group + smoothing);
}

/// Sixteen sheets of waves, each in one material, with texture coordinates.
const std::string& Model() {
    static const std::string model = [] {
        std::string editor = F3DS::Material("Paint", F3DS::Color24(0xA020, {200, 100, 50}));
        for (int i = 0; i < MeshCount; ++i)
            editor += F3DS::Mesh("Sheet", Points(i) + TexCoords() + Faces());
        return F3DS::File(editor);
    }();
    return model;
}

/// The arrays of a model as they are in the file.
using TArrays = std::vector<std::vector<char>>;

/// What no reader can do without: walk the chunks, copy the arrays.
void WalkAndCopy(std::string_view bytes, TArrays& arrays) {
    while (bytes.size() >= 6) {
        std::uint16_t id = 0;
        std::uint32_t length = 0;
        std::memcpy(&id, bytes.data(), 2);
        std::memcpy(&length, bytes.data() + 2, 4);
        const std::string_view inside = bytes.substr(6, length - 6);
        std::uint16_t count = 0;
        if (inside.size() >= 2) std::memcpy(&count, inside.data(), 2);
        const auto copy = [&](std::size_t from, std::size_t size) {
            arrays.emplace_back(inside.begin() + static_cast<std::ptrdiff_t>(from),
                                inside.begin() + static_cast<std::ptrdiff_t>(from + size));
        };
        if (id == 0x4D4D || id == 0x3D3D || id == 0x4100) WalkAndCopy(inside, arrays);
        if (id == 0x4000) WalkAndCopy(inside.substr(inside.find('\0') + 1), arrays);
        if (id == 0x4110 || id == 0x4140) copy(2, inside.size() - 2);
        if (id == 0x4130) copy(inside.find('\0') + 3, inside.size() - inside.find('\0') - 3);
        if (id == 0x4120) {
            copy(2, 8U * count);
            WalkAndCopy(inside.substr(2 + 8U * count), arrays);
        }
        bytes.remove_prefix(length);
    }
}

/// Seconds that the processor spends on a call, in the system too; what else runs beside it on a
/// busy machine does not count.
template <class Run>
double SecondsOf(Run run) {
    const std::clock_t start = std::clock();
    run();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

double Copied(bool fresh) {
    if (fresh) malloc_trim(0);
    TArrays arrays;
    const double seconds = SecondsOf([&] { WalkAndCopy(Model(), arrays); });
    benchmark::DoNotOptimize(arrays.data());
    return seconds;
}

/// The best of a few runs of this very process.
double Yardstick(bool fresh) {
    double best = 1e9;
    for (int i = 0; i < 10; ++i) best = std::min(best, Copied(fresh));
    return best;
}

void Report(benchmark::State& state, double seconds, double yardstick) {
    state.SetItemsProcessed(state.iterations() * TriangleCount);
    state.counters["yardsticks"] = seconds / static_cast<double>(state.iterations()) / yardstick;
}

void ThreeDSYardstick(benchmark::State& state) {
    const bool fresh = state.range(0) != 0;
    const double yardstick = Yardstick(fresh);
    double seconds = 0;
    for (auto _ : state) {
        const double copied = Copied(fresh);
        state.SetIterationTime(copied);
        seconds += copied;
    }
    Report(state, seconds, yardstick);
}

/// With fresh memory, as in a program that opens its first file, the system hands out and clears
/// every page; else the memory of the meshes before is used again.
void ThreeDSMeshes(benchmark::State& state) {
    const bool fresh = state.range(0) != 0;
    const double yardstick = Yardstick(fresh);
    double seconds = 0;
    for (auto _ : state) {
        if (fresh) malloc_trim(0);
        TZEPScene scene;
        TZEPMaterialLibrary library;
        TF3DSConverter converter;
        converter.SetRoot(&scene);
        converter.SetMaterials(&library);
        const double read = SecondsOf([&] { converter.Read3DS(Model()); });
        state.SetIterationTime(read);
        seconds += read;
        if (scene.GetItemsCount() != MeshCount || !converter.Report().Entries().empty())
            state.SkipWithError("not all was read");
    }
    Report(state, seconds, yardstick);
}

BENCHMARK(ThreeDSYardstick)
    ->ArgName("fresh")
    ->Arg(0)
    ->Arg(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ThreeDSMeshes)
    ->ArgName("fresh")
    ->Arg(0)
    ->Arg(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
