#include "bench/ReaderBench.h"
#include <zep/converters/dxf/Converter.h>
#include <zep/scene/Scene.h>

#include <string>

namespace ZEP {
namespace {

constexpr int InsertCount = 10'000;
constexpr int LineCount = 20;

std::string Line(int i) {
    const std::string x = std::to_string(i * 1.25);
    return "  0\nLINE\n  5\n4F2A\n100\nAcDbEntity\n  8\n0\n 62\n   256\n 10\n" + x +
           "\n 20\n0.5\n 30\n0.0\n 11\n" + x + "\n 21\n9.5\n 31\n0.0\n";
}

std::string Insert(int i) {
    return "  0\nINSERT\n  8\nWALLS\n  2\nDOOR\n 10\n" + std::to_string(i % 100 * 12.5) +
           "\n 20\n" + std::to_string(i / 100 * 25.0) + "\n 30\n0.0\n 50\n" +
           std::to_string(i % 4 * 90) + "\n";
}

const std::string& Drawing() {
    static const std::string drawing = [] {
        std::string text = "  0\nSECTION\n  2\nBLOCKS\n  0\nBLOCK\n  2\nDOOR\n 10\n1.0\n";
        for (int i = 0; i < LineCount; ++i) text += Line(i);
        text += "  0\nENDBLK\n  0\nENDSEC\n  0\nSECTION\n  2\nENTITIES\n";
        for (int i = 0; i < InsertCount; ++i) text += Insert(i);
        return text + "  0\nENDSEC\n  0\nEOF\n";
    }();
    return drawing;
}

/// One small block, inserted again and again: 200,000 lines of a file of 0.7 megabytes.
void DxfInsertedBlocks(benchmark::State& state) {
    for (auto _ : state) {
        TZEPScene scene;
        TDXFConverter converter;
        converter.SetRoot(&scene);
        converter.SetExtended(true);
        Timed(state, [&] { converter.ReadDXF(Drawing()); });
        if (scene.GetItem(0)->GetItemsCount() != InsertCount)
            state.SkipWithError("not all blocks were inserted");
    }
    state.SetItemsProcessed(state.iterations() * InsertCount * LineCount);
}

BENCHMARK(DxfInsertedBlocks)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
