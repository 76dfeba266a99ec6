#define GL_GLEXT_PROTOTYPES
#include "bench/Frames.h"
#include <zep/batch/Batch.h>
#include <zep/objects/Line.h>
#include <zep/scene/Vectors.h>

#include <GL/gl.h>
#include <GL/glext.h>

#include <array>
#include <optional>

namespace ZEP {
namespace {

constexpr int Count = 100'000;

TColor ColorOf(int i) {
    return TColor{static_cast<std::uint32_t>(i) * 1677 % 0xFFFFFF};
}

/// Lines with a colour each as any program would hold and send them: call by call, in a display
/// list, from arrays or from buffers. What OpenGL holds of it goes with the context.
class TRawLines {
public:
    explicit TRawLines(const std::vector<TGLArrayd3>& path) : m_list(glGenLists(1)) {
        for (int i = 0; i < Count; ++i)
            for (const int end : {i, i + 1})
                m_vertexes.push_back(
                    {ToGLColor(ColorOf(i), 0), ToFloats(path[static_cast<std::size_t>(end)])});
        glNewList(m_list, GL_COMPILE);
        SendCalls();
        glEndList();
        glGenBuffers(1, &m_buffer);
        glBindBuffer(GL_ARRAY_BUFFER, m_buffer);
        glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(m_vertexes.size() * sizeof(TVertex)),
                     m_vertexes.data(), GL_STATIC_DRAW);
        glBindBuffer(GL_ARRAY_BUFFER, 0);
    }
    void Draw(int way) const {
        glEnable(GL_COLOR_MATERIAL);
        Send(way % 4);
        glDisable(GL_COLOR_MATERIAL);
    }

private:
    struct TVertex {
        TGLColor Color;
        TGLArrayf3 Point;
    };

    void Send(int way) const {
        if (way == 0) return SendCalls();
        if (way == 1) return glCallList(m_list);
        if (way == 3) glBindBuffer(GL_ARRAY_BUFFER, m_buffer);
        const char* first = way == 3 ? nullptr : reinterpret_cast<const char*>(m_vertexes.data());
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_COLOR_ARRAY);
        glColorPointer(4, GL_FLOAT, sizeof(TVertex), first);
        glVertexPointer(3, GL_FLOAT, sizeof(TVertex), first + offsetof(TVertex, Point));
        glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(m_vertexes.size()));
        glDisableClientState(GL_COLOR_ARRAY);
        glDisableClientState(GL_VERTEX_ARRAY);
        glBindBuffer(GL_ARRAY_BUFFER, 0);
    }
    void SendCalls() const {
        glBegin(GL_LINES);
        for (const TVertex& vertex : m_vertexes) {
            glColor4fv(vertex.Color.data());
            glVertex3fv(vertex.Point.data());
        }
        glEnd();
    }

    std::vector<TVertex> m_vertexes;
    GLuint m_list;
    GLuint m_buffer = 0;
};

class LineFrame : public TFrame {
public:
    explicit LineFrame(bool batched, bool moves) : m_batched(batched), m_moves(moves) {}

    void Fill(TZEPObject& root) override {
        TZEPObject* parent = &root;
        if (m_batched) {
            auto* batch = new TZEPBatch(&root);
            if (m_moves) batch->SetShown(TZEPShown{.Share = 0.999});
            batch->SetParentComponent(&root);
            parent = batch;
        }
        for (int i = 0; i < Count; ++i) {
            auto* line = new TZEPLine(parent);
            line->P1()->SetDataQuietly(m_path[static_cast<std::size_t>(i)]);
            line->P2()->SetDataQuietly(m_path[static_cast<std::size_t>(i + 1)]);
            line->SetSmooth(false);
            line->SetColor(ColorOf(i));
            line->SetParentComponent(parent);
        }
    }
    /// In each way by turns: the quickest counts.
    void DrawRaw() override {
        if (!m_raw) m_raw.emplace(m_path);
        m_raw->Draw(m_turn++);
    }

private:
    bool m_batched;
    bool m_moves;
    std::vector<TGLArrayd3> m_path = Path(Count);
    std::optional<TRawLines> m_raw;
    int m_turn = 0;
};

void LinesOfOwnColors(benchmark::State& state) {
    LineFrame frame(state.range(0) != 0, state.range(1) != 0);
    MeasureFrame(state, frame);
}
BENCHMARK(LinesOfOwnColors)
    ->ArgNames({"batched", "moves"})
    ->Args({0, 0})
    ->Args({1, 0})
    ->Args({1, 1})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
