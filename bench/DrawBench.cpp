#include "bench/Frames.h"
#include <zep/objects/Arc.h>
#include <zep/objects/Line.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>
#include <zep/view/Camera.h>

#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <random>

namespace ZEP {
namespace {

/// Blending around lines, as a scene's transparent pass has it.
class Blending {
public:
    Blending() {
        glEnable(GL_BLEND);
        glDepthMask(GL_FALSE);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glEnable(GL_LINE_SMOOTH);
    }
    ~Blending() {
        glDisable(GL_LINE_SMOOTH);
        glDepthMask(GL_TRUE);
        glDisable(GL_BLEND);
    }
    Blending(const Blending&) = delete;
    Blending& operator=(const Blending&) = delete;
};

/// Lines as a tool path has them: one object each, all in one colour or in turn in two.
class LineFrame : public TFrame {
public:
    explicit LineFrame(std::size_t colors, bool smooth = false)
        : m_colors(colors), m_smooth(smooth) {}

    void Fill(TZEPObject& root) override {
        for (std::size_t i = 0; i + 1 < m_path.size(); ++i) {
            auto* line = new TZEPLine(&root);
            line->P1()->SetDataQuietly(m_path[i]);
            line->P2()->SetDataQuietly(m_path[i + 1]);
            line->SetSmooth(m_smooth);
            line->SetColor(i % m_colors == 0 ? clYellow : clRed);
            line->SetParentComponent(&root);
        }
    }
    void DrawRaw() override {
        if (!m_smooth) return SendLines();
        const Blending blending;
        SendLines();
    }

private:
    static void SetColor(TColor color) {
        const TGLColor rgba = ToGLColor(color, 1);
        glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, rgba.data());
    }
    void SendLines() const {
        for (std::size_t i = 0; i + 1 < m_path.size(); ++i) {
            if (i == 0 || m_colors > 1) SetColor(i % m_colors == 0 ? clYellow : clRed);
            glBegin(GL_LINES);
            glVertex3dv(m_path[i].data());
            glVertex3dv(m_path[i + 1].data());
            glEnd();
        }
    }

    std::size_t m_colors;
    bool m_smooth;

protected:
    std::vector<TGLArrayd3> m_path = Path(100'000);
};

/// A view into the middle of the same lines; few are seen. Or of lines that run all over the place,
/// so that every box must be looked at and hardly one is out of view: the worst case.
class LinesInsideFrame : public LineFrame {
public:
    explicit LinesInsideFrame(bool tangled) : LineFrame(1) {
        if (tangled) std::shuffle(m_path.begin(), m_path.end(), std::mt19937());
    }
    void Aim(TZEPCamera& camera) override {
        LineFrame::Aim(camera);
        camera.SetFOVY(1);
    }
};

/// Points as drilling makes them.
class PointFrame : public TFrame {
public:
    void Fill(TZEPObject& root) override {
        for (const TGLArrayd3& place : m_path) {
            auto* point = new TZEPPoint(&root);
            point->P()->SetDataQuietly(place);
            point->SetWidth(Width);
            point->SetColor(clYellow);
            point->SetParentComponent(&root);
        }
    }
    void DrawRaw() override {
        glPointSize(Width);
        for (const TGLArrayd3& place : m_path) {
            glBegin(GL_POINTS);
            glVertex3dv(place.data());
            glEnd();
        }
        glPointSize(1);
    }

private:
    static constexpr float Width = 5;
    std::vector<TGLArrayd3> m_path = Path(99'999);
};

/// Quarter circles, each placed and sized by a transform of its own.
class ArcFrame : public TFrame {
public:
    void Fill(TZEPObject& root) override {
        for (const TGLArrayd3& place : m_path) {
            auto* arc = new TZEPArc(&root);
            arc->XForm()->Translate()->SetDataQuietly(place);
            arc->XForm()->Scale()->SetData(Diameter, Diameter, Diameter);
            arc->SetEndAngle(90);
            arc->SetSmooth(false);
            arc->SetColor(clYellow);
            arc->SetParentComponent(&root);
        }
    }
    void DrawRaw() override {
        for (const auto& [x, y, z] : m_path) {
            const std::array<double, 16> matrix{Diameter, 0, 0,        0, 0, Diameter, 0, 0,
                                                0,        0, Diameter, 0, x, y,        z, 1};
            glPushMatrix();
            glMultMatrixd(matrix.data());
            glBegin(GL_LINE_STRIP);
            for (const auto& [u, v] : m_quarter) glVertex3f(u, v, 0);
            glEnd();
            glPopMatrix();
        }
    }

private:
    static constexpr double Diameter = 0.1;

    static std::array<std::array<float, 2>, 31> Quarter() {
        std::array<std::array<float, 2>, 31> points{};
        for (std::size_t i = 0; i < points.size(); ++i) {
            const double angle = static_cast<double>(i) * std::numbers::pi / 60;
            points[i] = {static_cast<float>(std::cos(angle) / 2),
                         static_cast<float>(std::sin(angle) / 2)};
        }
        return points;
    }

    std::vector<TGLArrayd3> m_path = Path(19'999);
    std::array<std::array<float, 2>, 31> m_quarter = Quarter();
};

/// Chains of ten vertexes, each in a display list.
class PolylineFrame : public TFrame {
public:
    explicit PolylineFrame(bool listed) : m_listed(listed) {}

    void Fill(TZEPObject& root) override {
        for (std::size_t first = 0; first + Length < m_path.size(); first += Length) {
            auto* polyline = new TZEPPolyline(&root);
            for (std::size_t i = 0; i < Length; ++i)
                polyline->Vertexes()->Add()->SetPoint(m_path[first + i]);
            polyline->SetSmooth(false);
            polyline->SetUseDisplayList(m_listed);
            polyline->SetOrigColor(clYellow);
            polyline->SetParentComponent(&root);
        }
    }
    void DrawRaw() override {
        if (m_listed && m_lists == 0) Compile();
        for (std::size_t i = 0; i < Count; ++i) {
            if (m_listed)
                glCallList(m_lists + static_cast<GLuint>(i));
            else
                Send(i);
        }
    }

private:
    static constexpr std::size_t Count = 20'000;
    static constexpr std::size_t Length = 10;

    void Compile() {
        m_lists = glGenLists(Count);
        for (std::size_t i = 0; i < Count; ++i) {
            glNewList(m_lists + static_cast<GLuint>(i), GL_COMPILE);
            Send(i);
            glEndList();
        }
    }
    void Send(std::size_t index) const {
        glBegin(GL_LINE_STRIP);
        for (std::size_t i = 0; i < Length; ++i) glVertex3dv(m_path[index * Length + i].data());
        glEnd();
    }

    std::vector<TGLArrayd3> m_path = Path(Count * Length);
    GLuint m_lists = 0;
    bool m_listed;
};

template <class Frame, auto... Arguments>
void Draw(benchmark::State& state) {
    Frame frame(Arguments...);
    MeasureFrame(state, frame);
}

void Frames(benchmark::internal::Benchmark* benchmark) {
    benchmark->UseManualTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK(Draw<LineFrame, 1>)->Name("Draw/lines:100000")->Apply(Frames);
BENCHMARK(Draw<LineFrame, 2>)->Name("Draw/lines_of_two_colors:100000")->Apply(Frames);
BENCHMARK(Draw<LinesInsideFrame, false>)->Name("Draw/view_inside_lines:100000")->Apply(Frames);
BENCHMARK(Draw<LinesInsideFrame, true>)->Name("Draw/view_inside_tangle:100000")->Apply(Frames);
BENCHMARK(Draw<LineFrame, 1, true>)->Name("Draw/smooth_lines:100000")->Apply(Frames);
BENCHMARK(Draw<PointFrame>)->Name("Draw/points:100000")->Apply(Frames);
BENCHMARK(Draw<ArcFrame>)->Name("Draw/arcs:20000")->Apply(Frames);
BENCHMARK(Draw<PolylineFrame, false>)->Name("Draw/polylines:20000")->Apply(Frames);
BENCHMARK(Draw<PolylineFrame, true>)->Name("Draw/listed_polylines:20000")->Apply(Frames);

} // namespace
} // namespace ZEP
