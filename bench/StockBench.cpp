#include "bench/Frames.h"
#include <zep/scene/Add.h>
#include <zep/scene/Vertex3.h>
#include <zep/stock/Run.h>
#include <zep/stock/Workpiece.h>

#include <algorithm>
#include <cmath>

namespace ZEP {
namespace {

constexpr TStockBlock Block{{0, 0, -30}, {100, 100, 0}, 0.2}; // 500 by 500 cells

/// Half a millimetre apart over a wavy surface.
TToolPath Raster(int moves) {
    TToolPath path;
    const int perRow = moves / 200;
    TRS274DPoint at{0, 0, 0};
    for (int i = 0; i < moves; ++i) {
        const int row = i / perRow, place = i % perRow;
        const double x = (row % 2 ? perRow - place : place) * 100.0 / perRow, y = row * 0.5;
        const TRS274DPoint to{x, y, -8 + 5 * std::sin(x / 10) * std::cos(y / 10)};
        path.Feed(at, to, i + 1);
        at = to;
    }
    return path;
}

void StockCut(benchmark::State& state) {
    const TToolPath path = Raster(100'000);
    const TStockTool tool{.Shape = static_cast<TStockShape>(state.range(0)),
                          .Diameter = static_cast<double>(state.range(1))};
    for (auto _ : state) {
        TStock stock(Block);
        TStockRun run(stock, path, {tool});
        state.SetIterationTime(SecondsOf([&] { run.GoTo(path.Count()); }));
        state.counters["MB"] = static_cast<double>(run.Bytes()) / 1e6;
    }
}

/// To any move of a path that was cut as a whole.
void StockSeek(benchmark::State& state) {
    const TToolPath path = Raster(100'000);
    TStock stock(Block);
    TStockRun run(stock, path,
                  {{.Shape = static_cast<TStockShape>(state.range(0)),
                    .Diameter = static_cast<double>(state.range(1))}});
    run.GoTo(path.Count());
    int move = 0;
    double longest = 0;
    for (auto _ : state) {
        move = static_cast<int>((move + 61'803LL) % path.Count());
        const double seconds = SecondsOf([&] { run.GoTo(move, 0.5); });
        longest = std::max(longest, seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["longest ms"] = longest * 1000;
}

/// Each frame shows 50 moves more.
void StockPlay(benchmark::State& state) {
    const TToolPath path = Raster(20'000);
    TStage stage(800, 600);
    const auto stock = std::make_shared<TStock>(Block);
    TStockRun run(*stock, path, {{.Shape = TStockShape::Ball, .Diameter = 6}});
    auto* workpiece = Add<TZEPWorkpiece>(&stage.Scene);
    workpiece->SetStock(stock);
    stage.Camera.Position()->SetData(80, -100, 120);
    stage.Camera.FitTo(stock->Min(), stock->Max(), 4.0 / 3);
    stage.Render();
    for (auto _ : state)
        state.SetIterationTime(SecondsOf([&] {
            run.GoTo((run.Done() + 50) % path.Count());
            workpiece->Refresh();
            stage.Render();
        }));
}

BENCHMARK(StockCut)
    ->ArgNames({"shape", "diameter"})
    ->ArgsProduct({{0, 1, 2, 3}, {6, 20}})
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(StockSeek)
    ->ArgNames({"shape", "diameter"})
    ->ArgsProduct({{0, 1, 2, 3}, {6, 20}})
    ->Iterations(50)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(StockPlay)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
