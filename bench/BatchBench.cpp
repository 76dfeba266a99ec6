#include "bench/Frames.h"
#include <zep/batch/Batch.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Circle.h>
#include <zep/objects/Line.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>
#include <zep/view/Actor.h>
#include <zep/view/Camera.h>

#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numbers>

namespace ZEP {
namespace {

constexpr int Entities = 500'000;
constexpr int Layers = 20;
constexpr int Across = 707; // cells of the drawing, each with one entity
constexpr double Cell = 2.0 / Across;
constexpr int Segments = 45;

TGLArrayd3 PlaceOf(int i) {
    return {-1 + i % Across * Cell, -1 + i / Across * Cell, 0};
}

TGLArrayd3 OnCircle(const TGLArrayd3& middle, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    return {middle[0] + Cell / 4 * std::cos(angle), middle[1] + Cell / 4 * std::sin(angle), 0};
}

TColor ColorOf(int layer) {
    return TColor{static_cast<std::uint32_t>(0x404040 + layer * 0x090705)};
}

/// A drawing as CAD programs write it: of ten entities seven are lines, one each an arc, a circle
/// and a polyline of five corners; by turns on twenty layers.
class TDrawing {
public:
    static void Fill(TZEPObject& root, int count = Layers) {
        std::vector<TZEPObject*> layers;
        for (int i = 0; i < count; ++i) {
            layers.push_back(new TZEPActor(&root));
            layers.back()->SetParentComponent(&root);
        }
        for (int i = 0; i < Entities; ++i)
            Add(i, *layers[static_cast<std::size_t>(i / 10 % count)], ColorOf(i / 10 % Layers));
    }

    /// What the entities show, as lines: two points for each.
    template <class Send>
    static void ForEachPoint(Send&& send) {
        for (int i = 0; i < Entities; ++i) {
            const TGLArrayd3 place = PlaceOf(i);
            const TColor color = ColorOf(i / 10 % Layers);
            const auto chain = [&](int count, auto&& at) {
                for (int k = 0; k < count; ++k) {
                    send(at(k), color);
                    send(at(k + 1), color);
                }
            };
            if (i % 10 < 7)
                chain(1, [&](int k) { return k == 0 ? place : End(place); });
            else if (i % 10 == 7)
                chain(Segments, [&](int k) { return OnCircle(place, 180.0 * k / Segments); });
            else if (i % 10 == 8)
                chain(Segments, [&](int k) { return OnCircle(place, 360.0 * k / Segments); });
            else
                chain(4, [&](int k) { return Corner(place, k); });
        }
    }

    static void Add(int i, TZEPObject& layer, TColor color) {
        const TGLArrayd3 place = PlaceOf(i);
        if (i % 10 < 7) {
            auto& line = New<TZEPLine>(layer, color);
            line.P1()->SetDataQuietly(place);
            line.P2()->SetDataQuietly(End(place));
        } else if (i % 10 == 7) {
            NewRound<TZEPArc>(layer, color, place).SetEndAngle(180);
        } else if (i % 10 == 8) {
            NewRound<TZEPCircle>(layer, color, place);
        } else {
            auto& chain = New<TZEPPolyline>(layer, color);
            chain.SetOrigColor(color);
            chain.SetSmooth(false);
            for (int k = 0; k < 5; ++k) chain.Vertexes()->Add()->SetPoint(Corner(place, k));
        }
    }

private:
    static TGLArrayd3 End(const TGLArrayd3& place) {
        return {place[0] + Cell / 2, place[1] + Cell / 3, 0};
    }
    static TGLArrayd3 Corner(const TGLArrayd3& place, int i) {
        return {place[0] + i * Cell / 6, place[1] + i % 2 * Cell / 3, 0};
    }

    template <class T>
    static T& New(TZEPObject& layer, TColor color) {
        auto* object = new T(&layer);
        object->SetColor(color);
        object->SetParentComponent(&layer);
        return *object;
    }

    template <class T>
    static T& NewRound(TZEPObject& layer, TColor color, const TGLArrayd3& place) {
        T& round = New<T>(layer, color);
        round.SetSegments(Segments);
        round.XForm()->Translate()->SetDataQuietly(place);
        round.XForm()->Scale()->SetData(Cell / 2, Cell / 2, 0);
        return round;
    }
};

void AimFromAbove(TZEPCamera& camera, double height) {
    camera.SetOrthographic(true);
    camera.SetFOVY(90);
    camera.Position()->SetData(0, -1e-3, height);
}

/// \name What is measured: bits of the argument
/// @{
constexpr int Batched = 1; // else each entity draws itself
constexpr int Near = 2;    // a hundredth of the drawing is in view
constexpr int Moving = 4;  // a tenth of the lines, as while the view moves
/// @}

class DrawingFrame : public TFrame {
public:
    explicit DrawingFrame(int kind) : m_kind(kind) {}

    void Fill(TZEPObject& root) override {
        auto* parent = m_kind & Batched ? new TZEPBatch(&root) : new TZEPObject(&root);
        parent->BeginUpdate();
        TDrawing::Fill(*parent);
        parent->EndUpdate();
        parent->SetParentComponent(&root);
        if (auto* batch = qobject_cast<TZEPBatch*>(parent)) {
            batch->Prepare();
            if (m_kind & Moving) batch->SetShown(TZEPShown{.Share = 0.1});
        }
        TDrawing::ForEachPoint([&](const TGLArrayd3& point, TColor color) {
            m_points.push_back({static_cast<float>(point[0]), static_cast<float>(point[1]), 0});
            const QColor rgb = ToQColor(color);
            m_colors.push_back({static_cast<GLubyte>(rgb.red()), static_cast<GLubyte>(rgb.green()),
                                static_cast<GLubyte>(rgb.blue())});
        });
    }

    void Aim(TZEPCamera& camera) override { AimFromAbove(camera, m_kind & Near ? 0.1 : 1); }

    void DrawRaw() override {
        glDisable(GL_LIGHTING);
        glBegin(GL_LINES);
        for (std::size_t i = 0; i < m_points.size(); ++i) {
            glColor3ubv(m_colors[i].data());
            glVertex3fv(m_points[i].data());
        }
        glEnd();
        glEnable(GL_LIGHTING);
    }

private:
    int m_kind;
    std::vector<std::array<float, 3>> m_points;
    std::vector<std::array<GLubyte, 3>> m_colors;
};

void Drawing(benchmark::State& state) {
    DrawingFrame frame(static_cast<int>(state.range(0)));
    MeasureFrame(state, frame);
}
BENCHMARK(Drawing)
    ->ArgName("kind")
    ->Arg(0)
    ->Arg(Batched)
    ->Arg(Batched | Moving)
    ->Arg(Near)
    ->Arg(Batched | Near)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

using TChange = void (*)(TZEPObject& layer, TZEPObject& entity);

/// One of all entities in one layer changes: until the batch is ready for the next frame. The
/// counters are the quickest frames, that one and one without a change.
void OneChange(benchmark::State& state, TChange change) {
    TStage stage;
    stage.Scene.BeginUpdate();
    TZEPBatch batch;
    TDrawing::Fill(batch, 1);
    batch.SetParentComponent(&stage.Scene);
    AimFromAbove(stage.Camera, 1);
    stage.Scene.EndUpdate();
    stage.Render();
    TZEPObject& layer = *batch.GetItem(0);
    const std::function<void()> render = [&] { stage.Render(); };
    double changed = 1e9;
    double unchanged = 1e9;
    int turn = 0;
    for (auto _ : state) {
        TZEPObject& entity = *layer.GetItem(++turn * 7919 % layer.GetItemsCount());
        state.SetIterationTime(SecondsOf([&] {
            change(layer, entity);
            batch.Prepare();
        }));
        changed = std::min(changed, SecondsOf(render));
        unchanged = std::min(unchanged, SecondsOf(render));
    }
    state.counters["frame_ms"] = changed * 1000;
    state.counters["unchanged_ms"] = unchanged * 1000;
}

void Hide(TZEPObject&, TZEPObject& entity) {
    entity.SetVisible(!entity.Visible());
}
void Recolor(TZEPObject&, TZEPObject& entity) {
    entity.SetColor(entity.GetColor() == clRed ? clBlue : clRed);
}
void Select(TZEPObject&, TZEPObject& entity) {
    entity.SetSelected(!entity.Selected());
}
void AddOne(TZEPObject& layer, TZEPObject&) {
    TDrawing::Add(1, layer, clRed);
}
void FreeOne(TZEPObject&, TZEPObject& entity) {
    delete &entity;
}
void BringToFront(TZEPObject& layer, TZEPObject& entity) {
    entity.SetItemIndex(layer.GetItemsCount() - 1);
}
BENCHMARK_CAPTURE(OneChange, hide, Hide)
    ->Iterations(20)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OneChange, recolor, Recolor)
    ->Iterations(20)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OneChange, select, Select)
    ->Iterations(20)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OneChange, add, AddOne)
    ->Iterations(20)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OneChange, free, FreeOne)
    ->Iterations(20)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OneChange, to_front, BringToFront)
    ->Iterations(20)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
