#define GL_GLEXT_PROTOTYPES
#include "bench/Frames.h"
#include "tests/ResidentMemory.h"
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/objects/Mesh.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>

#include <GL/gl.h>
#include <GL/glext.h>

#include <malloc.h>

#include <cmath>
#include <memory>

namespace ZEP {
namespace {

TGLArrayd3 Place(int column, int row, int side) {
    const double x = 2.0 * column / side - 1;
    const double y = 2.0 * row / side - 1;
    return {x, y, 0.5 + 0.5 * std::sin(9 * x) * std::cos(7 * y)};
}

/// A waving surface as any program would hold it.
struct TSurface {
    std::vector<TGLArrayd3> Points;
    std::vector<std::array<int, 3>> Faces;
    std::vector<TGLArrayf3> Normals; // of the faces

    explicit TSurface(int triangles) {
        const int side = static_cast<int>(std::sqrt(triangles / 2)); // cells of two
        for (int row = 0; row <= side; ++row)
            for (int column = 0; column <= side; ++column)
                Points.push_back(Place(column, row, side));
        for (int row = 0; row < side; ++row)
            for (int column = 0; column < side; ++column) {
                const int a = row * (side + 1) + column;
                AddFace({a, a + 1, a + side + 2});
                AddFace({a, a + side + 2, a + side + 1});
            }
    }

    [[nodiscard]] const TGLArrayd3& PointOf(int corner) const {
        return Points[static_cast<std::size_t>(corner)];
    }

private:
    void AddFace(const std::array<int, 3>& face) {
        Faces.push_back(face);
        TGLArrayd3 n;
        CalcNormald(PointOf(face[0]), PointOf(face[1]), PointOf(face[2]), n);
        Normals.push_back(ToFloats(n));
    }
};

/// The surface as a program would send it that knows nothing else: call by call, in a display list,
/// from arrays or from buffers. What OpenGL holds of it goes with the context.
class TRawSurface {
public:
    TRawSurface(const TSurface& surface, bool smooth) : m_smooth(smooth), m_list(glGenLists(1)) {
        smooth ? FillShared(surface) : Fill(surface);
        glGenBuffers(2, m_buffers.data());
        glBindBuffer(GL_ARRAY_BUFFER, m_buffers[0]);
        glBufferData(GL_ARRAY_BUFFER, Size(m_vertexes), m_vertexes.data(), GL_STATIC_DRAW);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_buffers[1]);
        glBufferData(GL_ELEMENT_ARRAY_BUFFER, Size(m_corners), m_corners.data(), GL_STATIC_DRAW);
        Unbind();
        glNewList(m_list, GL_COMPILE);
        SendCalls();
        glEndList();
    }
    void Draw(int way) const {
        switch (way % 4) {
        case 0:
            return SendCalls();
        case 1:
            return glCallList(m_list);
        case 2:
            return SendArrays(m_vertexes.data(), m_corners.data());
        default:
            glBindBuffer(GL_ARRAY_BUFFER, m_buffers[0]);
            glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_buffers[1]);
            SendArrays(nullptr, nullptr);
            Unbind();
        }
    }

private:
    struct TVertex {
        TGLArrayf3 Normal, Point;
    };

    template <class T>
    static GLsizeiptr Size(const std::vector<T>& items) {
        return static_cast<GLsizeiptr>(items.size() * sizeof(T));
    }
    static void Unbind() {
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    }
    void Fill(const TSurface& surface) {
        for (std::size_t i = 0; i < surface.Faces.size(); ++i)
            for (const int corner : surface.Faces[i])
                m_vertexes.push_back({surface.Normals[i], ToFloats(surface.PointOf(corner))});
    }
    /// Of the normals only that there are some counts.
    void FillShared(const TSurface& surface) {
        for (const TGLArrayd3& point : surface.Points)
            m_vertexes.push_back({surface.Normals.front(), ToFloats(point)});
        for (const std::array<int, 3>& face : surface.Faces)
            for (const int corner : face) m_corners.push_back(static_cast<GLuint>(corner));
    }
    void SendCalls() const {
        const std::size_t count = m_smooth ? m_corners.size() : m_vertexes.size();
        glBegin(GL_TRIANGLES);
        for (std::size_t i = 0; i < count; ++i) {
            const TVertex& vertex = m_vertexes[m_smooth ? m_corners[i] : i];
            if (m_smooth || i % 3 == 0) glNormal3fv(vertex.Normal.data());
            glVertex3fv(vertex.Point.data());
        }
        glEnd();
    }
    void SendArrays(const TVertex* vertexes, const GLuint* corners) const {
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_NORMAL_ARRAY);
        glNormalPointer(GL_FLOAT, sizeof(TVertex), vertexes);
        const char* points = reinterpret_cast<const char*>(vertexes) + sizeof(TGLArrayf3);
        glVertexPointer(3, GL_FLOAT, sizeof(TVertex), points);
        if (m_smooth)
            glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(m_corners.size()), GL_UNSIGNED_INT,
                           corners);
        else
            glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(m_vertexes.size()));
        glDisableClientState(GL_VERTEX_ARRAY);
        glDisableClientState(GL_NORMAL_ARRAY);
    }

    bool m_smooth;
    GLuint m_list;
    std::array<GLuint, 2> m_buffers{};
    std::vector<TVertex> m_vertexes;
    std::vector<GLuint> m_corners;
};

void FillMesh(TZEPMesh& mesh, const TSurface& surface) {
    mesh.Vertexes()->BeginUpdate();
    mesh.Faces()->BeginUpdate();
    for (const TGLArrayd3& point : surface.Points) mesh.Vertexes()->Add()->SetPoint(point);
    for (const std::array<int, 3>& corners : surface.Faces) {
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
    MeshFrame(int triangles, int kind) : m_kind(kind), m_surface(triangles) {}

    void Fill(TZEPObject& root) override {
        auto* mesh = new TZEPMesh(&root);
        FillMesh(*mesh, m_surface);
        mesh->SetSmooth((m_kind & SmoothMesh) != 0);
        mesh->SetColorFaces((m_kind & LibraryMesh) != 0);
        if (mesh->ColorFaces()) {
            auto* library = new TZEPMaterialLibrary(&root);
            library->Materials()->Add();
            dynamic_cast<TZEPScene&>(root).SetMaterialLibrary(library);
        }
        mesh->SetParentComponent(&root);
    }
    /// In each way by turns: the quickest counts.
    void DrawRaw() override { Raw().Draw(m_turn++); }

private:
    TRawSurface& Raw() {
        if (!m_raw) m_raw = std::make_unique<TRawSurface>(m_surface, (m_kind & SmoothMesh) != 0);
        return *m_raw;
    }

    int m_kind;
    TSurface m_surface;
    int m_turn = 0;
    std::unique_ptr<TRawSurface> m_raw;
};

void MeshFrames(benchmark::State& state) {
    MeshFrame frame(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    MeasureFrame(state, frame);
}
BENCHMARK(MeshFrames)
    ->ArgNames({"triangles", "smooth1_library2"})
    ->ArgsProduct({{100'000, 1'000'000}, {0, 1, 2, 3}})
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
