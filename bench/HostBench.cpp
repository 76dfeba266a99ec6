#include "bench/Frames.h"
#include "viewer/files/Document.h"
#include <zep/batch/Batch.h>
#include <zep/converters/dxf/Converter.h>
#include <zep/converters/rs274d/Converter.h>
#include <zep/scene/Add.h>
#include <zep/view/Directions.h>
#include <zep/view/Fitting.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <cmath>
#include <stdexcept>

namespace ZEP {
namespace {

constexpr int Entities = 500'000;
constexpr int Moves = 1'000'000;
constexpr int Layers = 20;
constexpr int Across = 707;
constexpr int Width = 960;
constexpr int Height = 600;

/// Of ten entities seven are lines, one each an arc, a circle and a polyline; by turns on twenty
/// layers.
void WriteEntity(QTextStream& out, int i) {
    const int kind = i % 10;
    const double x = i % Across;
    const double y = i / Across;
    const char* name = kind < 7 ? "LINE" : kind == 7 ? "ARC" : kind == 8 ? "CIRCLE" : "LWPOLYLINE";
    out << "0\n" << name << "\n8\nL" << i / 10 % Layers << '\n';
    if (kind < 9) out << "10\n" << x << "\n20\n" << y << "\n30\n0\n";
    if (kind < 7) out << "11\n" << x + 0.5 << "\n21\n" << y + 0.3 << "\n31\n0\n";
    if (kind == 7 || kind == 8) out << "40\n0.25\n";
    if (kind == 7) out << "50\n0\n51\n180\n";
    if (kind < 9) return;
    out << "90\n5\n70\n0\n";
    for (int k = 0; k < 5; ++k) out << "10\n" << x + k / 6.0 << "\n20\n" << y + k % 2 / 3.0 << '\n';
}

void WriteDrawing(QTextStream& out) {
    out << "0\nSECTION\n2\nENTITIES\n";
    for (int i = 0; i < Entities; ++i) WriteEntity(out, i);
    out << "0\nENDSEC\n0\nEOF\n";
}

/// A path that winds outwards in short lines.
void WriteProgram(QTextStream& out) {
    out << "G21 G90 G17\n";
    for (int i = 1; i <= Moves; ++i) {
        const double angle = i * 0.01;
        out << (i % 50 == 0 ? "G0 X" : "G1 X") << (10 + angle) * std::cos(angle) << " Y"
            << (10 + angle) * std::sin(angle) << " Z" << -1 - i * 1e-6 << '\n';
    }
}

void Write(const QString& name, void (*write)(QTextStream&)) {
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("cannot write");
    QTextStream out(&file);
    write(out);
}

/// What a host does that reads a file into a batch.
struct THost {
    explicit THost(const QString& name) {
        auto* batch = Add<TZEPBatch>(&Scene);
        if (name.endsWith(QLatin1String(".dxf"))) {
            TDXFConverter converter;
            Read(converter, *batch, name);
        } else {
            TRS274DConverter converter;
            Read(converter, *batch, name);
        }
        LookFrom(*Camera, TDirection::Iso);
        FitCamera(*Camera, *batch, 1.0 * Width / Height);
    }

    template <class Converter>
    static void Read(Converter& converter, TZEPBatch& batch, const QString& name) {
        converter.SetRoot(&batch);
        converter.SetFileName(name);
        converter.SetExtended(true);
        converter.LoadFromFile();
    }

    TZEPScene Scene;
    TZEPCamera* Camera = Add<TZEPCamera>(&Scene);
};

void Compare(benchmark::State& state, const QString& suffix, void (*write)(QTextStream&)) {
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("large") + suffix);
    Write(name, write);
    const OffscreenContext context(Width, Height);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_LIGHTING);
    THost host(name);
    TDocument document;
    document.Open({name}, false);
    document.LookFrom(TDirection::Iso, 1.0 * Width / Height);
    MeasureByTurns(
        state, [&] { host.Scene.Render(host.Camera, Width, Height, false); },
        [&] { document.Scene()->Render(document.Camera(), Width, Height, false); });
}

/// The frame of a host beside that of zepview, which is the yardstick: the same file, from the same
/// place.
void HostDrawing(benchmark::State& state) {
    Compare(state, QStringLiteral(".dxf"), WriteDrawing);
}
void HostProgram(benchmark::State& state) {
    Compare(state, QStringLiteral(".nc"), WriteProgram);
}
BENCHMARK(HostDrawing)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(HostProgram)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
