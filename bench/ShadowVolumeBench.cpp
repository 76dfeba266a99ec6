#include "bench/Frames.h"
#include <zep/appearance/effects/Light.h>
#include <zep/appearance/effects/ShadowVolume.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Sphere.h>
#include <zep/scene/Vertex3.h>

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <span>

namespace ZEP {
namespace {

/// Two triangles for each cell of a torus, which is closed and covers itself.
class TTorusMesh {
public:
    TTorusMesh(int rings, int sides) : m_rings(rings), m_sides(sides) {}

    void Fill(TZEPMesh& mesh) const {
        mesh.Vertexes()->BeginUpdate();
        mesh.Faces()->BeginUpdate();
        for (int ring = 0; ring < m_rings; ++ring)
            for (int side = 0; side < m_sides; ++side) {
                mesh.Vertexes()->Add()->SetPoint(Place(ring, side));
                AddFace(mesh, Index(ring, side), Index(ring + 1, side), Index(ring + 1, side + 1));
                AddFace(mesh, Index(ring, side), Index(ring + 1, side + 1), Index(ring, side + 1));
            }
        mesh.Faces()->EndUpdate();
        mesh.Vertexes()->EndUpdate();
        mesh.SetColorFaces(false);
    }

private:
    [[nodiscard]] TGLArrayd3 Place(int ring, int side) const {
        const double a = 2 * std::numbers::pi * ring / m_rings;
        const double b = 2 * std::numbers::pi * side / m_sides;
        const double r = 0.6 + 0.3 * std::cos(b);
        return {r * std::cos(a), r * std::sin(a), 0.3 * std::sin(b)};
    }
    [[nodiscard]] int Index(int ring, int side) const {
        return ring % m_rings * m_sides + side % m_sides;
    }
    static void AddFace(TZEPMesh& mesh, int a, int b, int c) {
        TZEPFace3CI* face = mesh.Faces()->Add();
        face->SetA(a);
        face->SetB(b);
        face->SetC(c);
    }

    int m_rings;
    int m_sides;
};

/// Seconds of both parts of making a volume, the quickest of each.
struct TParts {
    double Look = 1e9;    ///< feedback mode
    double Compile = 1e9; ///< the outline and its display list

    void Measure(const TZEPShadowVolume& volume, const std::function<void()>& draw) {
        std::span<const GLfloat> tokens;
        TDisplayList list;
        Look = std::min(Look, SecondsOf([&] { tokens = volume.Look(draw); }));
        Compile = std::min(Compile, SecondsOf([&] { list = volume.Compile(tokens); }));
    }
};

/// The volume of one caster under a light that looks at it at an angle, made again and again,
/// against a plain draw of the caster. `first_ms` is what the first one takes, buffers and all.
void MeasureVolume(benchmark::State& state, TStage& stage, TZEPShadowedObject& caster) {
    TZEPLight light(&stage.Scene);
    light.SetDirectional(true);
    light.SetCastShadows(true);
    light.Position()->SetData(2, 3, 4);
    light.SetParentComponent(&stage.Scene);
    caster.SetCastShadows(true);
    caster.SetParentComponent(&stage.Scene);
    stage.Camera.Position()->SetData(0, -6, 4);
    stage.Render();
    const auto draw = [&] { caster.DrawSpecific(GL_FRONT_AND_BACK, false); };
    const auto make = [&] {
        light.Position()->SetX(light.Position()->X() + 1e-4);
        light.DrawPre();
        caster.DoBuildShadowVolumes(light);
    };
    state.counters["first_ms"] = SecondsOf(make) * 1000;
    MeasureByTurns(state, make, draw);
    const auto volume = TZEPShadowVolume::Of({.Radius = 1, .Eye = light.Eye(), .IsAimed = true});
    TParts parts;
    for (int i = 0; i < 20; ++i) parts.Measure(*volume, draw);
    state.counters["look_ms"] = parts.Look * 1000;
    state.counters["compile_ms"] = parts.Compile * 1000;
}

void VolumeOfSphere(benchmark::State& state) {
    TStage stage;
    auto* sphere = new TZEPSphere(&stage.Scene);
    MeasureVolume(state, stage, *sphere);
}
BENCHMARK(VolumeOfSphere)->UseManualTime()->Unit(benchmark::kMillisecond);

void VolumeOfMesh(benchmark::State& state) {
    TStage stage;
    auto* mesh = new TZEPMesh(&stage.Scene);
    const int sides = static_cast<int>(std::sqrt(static_cast<double>(state.range(0)) / 4));
    TTorusMesh(2 * sides, sides).Fill(*mesh);
    MeasureVolume(state, stage, *mesh);
}
BENCHMARK(VolumeOfMesh)
    ->ArgName("triangles")
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
