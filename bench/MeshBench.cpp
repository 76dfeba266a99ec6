#include "bench/Frames.h"
#include "tests/ResidentMemory.h"
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/objects/Mesh.h>
#include <zep/scene/Scene.h>

#include <malloc.h>

#include <cmath>

namespace ZEP {
namespace {

constexpr int Side = 707; // cells; twice as many triangles as cells make a million

TGLArrayd3 Place(int column, int row) {
    const double x = 2.0 * column / Side - 1;
    const double y = 2.0 * row / Side - 1;
    return {x, y, 0.5 + 0.5 * std::sin(9 * x) * std::cos(7 * y)};
}

/// A waving surface as any program would hold it.
struct TSurface {
    std::vector<TGLArrayd3> Points;
    std::vector<std::array<int, 3>> Faces;
    std::vector<TGLArrayf3> Normals; // of the faces

    TSurface() {
        for (int row = 0; row <= Side; ++row)
            for (int column = 0; column <= Side; ++column) Points.push_back(Place(column, row));
        for (int row = 0; row < Side; ++row)
            for (int column = 0; column < Side; ++column) {
                const int a = row * (Side + 1) + column;
                AddFace({a, a + 1, a + Side + 2});
                AddFace({a, a + Side + 2, a + Side + 1});
            }
    }

private:
    [[nodiscard]] const TGLArrayd3& Corner(const std::array<int, 3>& face, std::size_t i) const {
        return Points[static_cast<std::size_t>(face[i])];
    }
    void AddFace(const std::array<int, 3>& face) {
        Faces.push_back(face);
        TGLArrayd3 n;
        CalcNormald(Corner(face, 0), Corner(face, 1), Corner(face, 2), n);
        Normals.push_back(
            {static_cast<float>(n[0]), static_cast<float>(n[1]), static_cast<float>(n[2])});
    }
};

const TSurface& Surface() {
    static const TSurface surface;
    return surface;
}

void FillMesh(TZEPMesh& mesh) {
    mesh.Vertexes()->BeginUpdate();
    mesh.Faces()->BeginUpdate();
    for (const TGLArrayd3& point : Surface().Points) mesh.Vertexes()->Add()->SetPoint(point);
    for (const std::array<int, 3>& corners : Surface().Faces) {
        TZEPFace3CI* face = mesh.Faces()->Add();
        for (int i = 0; i < 3; ++i) face->SetData(i, corners[static_cast<std::size_t>(i)]);
        face->SetMaterialIndex(0);
    }
    mesh.Faces()->EndUpdate();
    mesh.Vertexes()->EndUpdate();
}

/// \name What is measured: bits of the argument
/// @{
constexpr int SmoothMesh = 1;
constexpr int LibraryMesh = 2;
/// @}

class MeshFrame : public TFrame {
public:
    explicit MeshFrame(int kind) : m_kind(kind) {}

    void Fill(TZEPObject& root) override {
        auto* mesh = new TZEPMesh(&root);
        FillMesh(*mesh);
        mesh->SetSmooth((m_kind & SmoothMesh) != 0);
        mesh->SetColorFaces((m_kind & LibraryMesh) != 0);
        if (mesh->ColorFaces()) {
            auto* library = new TZEPMaterialLibrary(&root);
            library->Materials()->Add();
            dynamic_cast<TZEPScene&>(root).SetMaterialLibrary(library);
        }
        mesh->SetParentComponent(&root);
    }
    void DrawRaw() override {
        const TSurface& surface = Surface();
        const bool smooth = (m_kind & SmoothMesh) != 0;
        glBegin(GL_TRIANGLES);
        for (std::size_t i = 0; i < surface.Faces.size(); ++i) {
            if (!smooth) glNormal3fv(surface.Normals[i].data());
            for (const int corner : surface.Faces[i]) {
                // As many calls as a vertex with a normal of its own takes.
                if (smooth) glNormal3fv(surface.Normals[i].data());
                glVertex3dv(surface.Points[static_cast<std::size_t>(corner)].data());
            }
        }
        glEnd();
    }

private:
    int m_kind;
};

void MeshOfAMillion(benchmark::State& state) {
    MeshFrame frame(static_cast<int>(state.range(0)));
    MeasureFrame(state, frame);
}
BENCHMARK(MeshOfAMillion)
    ->ArgName("smooth1_library2")
    ->DenseRange(0, 3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

/// A million vertexes or faces, all in.
void MeshMemory(benchmark::State& state, bool faces) {
    constexpr int Count = 1'000'000;
    for (auto _ : state) {
        malloc_trim(0);
        const double before = ResidentBytes();
        TZEPMesh mesh;
        for (int i = 0; i < Count; ++i) {
            if (faces)
                mesh.Faces()->Add()->SetA(i);
            else
                mesh.Vertexes()->Add()->SetX(i);
        }
        state.counters["bytes_each"] = (ResidentBytes() - before) / Count;
    }
}
// One measurement each: memory that was used before and given back would hide what is used now.
BENCHMARK_CAPTURE(MeshMemory, vertexes, false)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(MeshMemory, faces, true)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
