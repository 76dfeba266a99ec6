#include "bench/Frames.h"
#include "bench/RawSolid.h"
#include "tests/ResidentMemory.h"
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/objects/Box.h>
#include <zep/objects/Sphere.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

#include <malloc.h>

#include <array>
#include <functional>
#include <optional>

namespace ZEP {
namespace {

constexpr int Count = 10'000;
constexpr double Edge = 0.015;

/// A colour of its own for each of ten thousand.
TColor ColorOf(std::size_t i) {
    return TColor{static_cast<std::uint32_t>(i * 1677 % 0xFFFFFF)};
}

/// Solids on a grid of places, each with a transform and a colour of its own.
template <class T>
void FillWith(TZEPObject& root, const std::vector<TGLArrayd3>& places,
              const std::function<void(T&)>& set = {}) {
    for (std::size_t i = 0; i < places.size(); ++i) {
        auto* solid = new T(&root);
        solid->XForm()->Translate()->SetDataQuietly(places[i]);
        solid->XForm()->Scale()->SetData(Edge, Edge, Edge);
        solid->SetColor(ColorOf(i));
        if (set) set(*solid);
        solid->SetParentComponent(&root);
    }
}

// --- frames ------------------------------------------------------------------------------------

/// Solids with places and colours of their own.
class SolidFrame : public TFrame {
public:
    explicit SolidFrame(int count = Count) : m_places(Path(count - 1)) {}

    /// In each way by turns: the quickest counts.
    void DrawRaw() override {
        DrawRaw(static_cast<TRawSolid::Way>(m_turn++ % TRawSolid::WayCount));
    }

protected:
    /// What one of them sends.
    [[nodiscard]] virtual TRawSolid MakeRaw() const = 0;
    /// What is set before one of them.
    virtual void Prepare(std::size_t i) {
        const TGLColor color = ToGLColor(ColorOf(i), 0);
        glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, color.data());
    }
    [[nodiscard]] const std::vector<TGLArrayd3>& Places() const { return m_places; }

private:
    void DrawRaw(TRawSolid::Way way) {
        if (!m_raw) m_raw = MakeRaw();
        m_raw->Begin(way);
        for (std::size_t i = 0; i < m_places.size(); ++i) {
            const auto& [x, y, z] = m_places[i];
            const std::array<double, 16> matrix{Edge, 0, 0,    0, 0, Edge, 0, 0,
                                                0,    0, Edge, 0, x, y,    z, 1};
            glPushMatrix();
            glMultMatrixd(matrix.data());
            Prepare(i);
            m_raw->Send(way);
            glPopMatrix();
        }
        TRawSolid::End();
    }

    std::vector<TGLArrayd3> m_places;
    std::optional<TRawSolid> m_raw;
    int m_turn = 0;
};

class BoxFrame : public SolidFrame {
public:
    void Fill(TZEPObject& root) override { FillWith<TZEPBox>(root, Places()); }

protected:
    [[nodiscard]] TRawSolid MakeRaw() const override { return {TRawSolid::Box(), false}; }
};

/// Spheres of 20 by 20 cells.
class SphereFrame : public SolidFrame {
public:
    using SolidFrame::SolidFrame;
    void Fill(TZEPObject& root) override { FillWith<TZEPSphere>(root, Places()); }

protected:
    [[nodiscard]] TRawSolid MakeRaw() const override { return {TRawSolid::Sphere(), false}; }
};

constexpr std::size_t Pictures = 8;

/// Of 64 by 64 pixels.
QImage Checkers(std::size_t number) {
    const int width = 4 + static_cast<int>(number);
    QImage image(64, 64, QImage::Format_RGB32);
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x)
            image.setPixel(x, y, (x / width + y / width) % 2 ? 0xFF4060FF : ~0U);
    return image;
}

/// A thousand boxes with pictures of a library, which the raw loop loads once.
class TexturedBoxFrame : public SolidFrame {
public:
    /// \param byTurns  no two neighbours have the same picture
    TexturedBoxFrame(bool resident, bool byTurns)
        : SolidFrame(1000), m_resident(resident), m_byTurns(byTurns) {}

    void Fill(TZEPObject& root) override {
        for (std::size_t i = 0; i < Pictures; ++i) {
            TZEPTexture& texture = *m_library.Materials()->Add()->Material()->Texture();
            texture.Image()->SetImage(Checkers(i));
            texture.SetResident(m_resident);
        }
        static_cast<TZEPScene&>(root).SetMaterialLibrary(&m_library);
        std::size_t next = 0;
        FillWith<TZEPBox>(root, Places(), [&](TZEPBox& box) {
            box.SetMaterialIndex(static_cast<int>(PictureOf(next++)));
        });
    }
    void DrawRaw() override {
        if (m_names.front() == 0) Load();
        glEnable(GL_TEXTURE_2D);
        SolidFrame::DrawRaw();
        glDisable(GL_TEXTURE_2D);
    }

protected:
    [[nodiscard]] TRawSolid MakeRaw() const override { return {TRawSolid::Box(), true}; }
    void Prepare(std::size_t i) override {
        if (i == 0 || PictureOf(i) != PictureOf(i - 1))
            glBindTexture(GL_TEXTURE_2D, m_names[PictureOf(i)]);
    }

private:
    [[nodiscard]] std::size_t PictureOf(std::size_t i) const {
        return m_byTurns ? i % Pictures : i * Pictures / Places().size();
    }
    void Load() {
        glGenTextures(Pictures, m_names.data());
        for (std::size_t i = 0; i < Pictures; ++i) {
            const QImage image = Checkers(i).convertToFormat(QImage::Format_RGBX8888);
            glBindTexture(GL_TEXTURE_2D, m_names[i]);
            glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
            glTexImage2D(GL_TEXTURE_2D, 0, 3, image.width(), image.height(), 0, GL_RGBA,
                         GL_UNSIGNED_BYTE, image.constBits());
        }
    }

    bool m_resident;
    bool m_byTurns;
    TZEPMaterialLibrary m_library;
    std::array<GLuint, Pictures> m_names{};
};

void Boxes(benchmark::State& state) {
    BoxFrame frame;
    MeasureFrame(state, frame);
}
void Spheres(benchmark::State& state) {
    SphereFrame frame;
    MeasureFrame(state, frame);
}
void TexturedBoxes(benchmark::State& state) {
    TexturedBoxFrame frame(state.range(0) != 0, state.range(1) != 0);
    MeasureFrame(state, frame);
}

BENCHMARK(Boxes)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Spheres)->UseManualTime()->MinTime(4)->Unit(benchmark::kMillisecond);
BENCHMARK(TexturedBoxes)
    ->ArgNames({"resident", "by_turns"})
    ->ArgsProduct({{0, 1}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

/// What a sphere takes once it was drawn, all in. Others come before: the driver holds 40 to 80 MB
/// of a frame, of however many spheres.
void MemoryOfSpheres(benchmark::State& state) {
    TStage stage;
    SphereFrame first, others(4 * Count);
    first.Aim(stage.Camera);
    const auto show = [&](SphereFrame& frame) {
        stage.Scene.BeginUpdate();
        frame.Fill(stage.Scene);
        stage.Scene.EndUpdate();
        for (int i = 0; i < 5; ++i) stage.Render();
        glFinish();
    };
    show(first);
    for (auto _ : state) {
        malloc_trim(0);
        const double before = ResidentBytes();
        show(others);
        state.counters["bytes_each"] = (ResidentBytes() - before) / (4 * Count);
    }
}
BENCHMARK(MemoryOfSpheres)->Iterations(1)->Unit(benchmark::kMillisecond);

// --- building ----------------------------------------------------------------------------------

/// Ten thousand boxes under one root: how long it takes and what each costs, all in.
void BuildBoxes(benchmark::State& state, bool ownMaterial) {
    const std::vector<TGLArrayd3> places = Path(Count - 1);
    for (auto _ : state) {
        state.PauseTiming();
        malloc_trim(0);
        const double before = ResidentBytes();
        auto scene = std::make_unique<TZEPScene>();
        state.ResumeTiming();
        FillWith<TZEPBox>(*scene, places, [ownMaterial](TZEPBox& box) {
            if (ownMaterial) box.Material()->FrontFace()->SetSpecular(clWhite);
        });
        state.PauseTiming();
        state.counters["bytes_per_box"] = (ResidentBytes() - before) / Count;
        scene.reset();
        state.ResumeTiming();
    }
}

// One measurement each: memory that was used before and given back would hide what is used now.
BENCHMARK_CAPTURE(BuildBoxes, plain, false)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BuildBoxes, own_material, true)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
