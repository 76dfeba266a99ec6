#include "bench/Frames.h"
#include "tests/ResidentMemory.h"
#include <zep/appearance/materials/Material.h>
#include <zep/gl/Names.h>
#include <zep/objects/Box.h>
#include <zep/objects/Sphere.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

#include <GL/glu.h>

#include <malloc.h>

#include <array>
#include <chrono>
#include <functional>

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

// --- the bare calls ----------------------------------------------------------------------------

constexpr std::array<std::array<float, 3>, 6> Normals{
    {{0, 0, 1}, {0, 0, -1}, {1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}}};
constexpr std::array<std::array<int, 4>, 6> Faces{
    {{4, 5, 6, 7}, {1, 0, 3, 2}, {5, 1, 2, 6}, {0, 4, 7, 3}, {3, 7, 6, 2}, {4, 0, 1, 5}}};
constexpr float TextureCorners[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};

std::array<float, 3> Corner(int i) {
    return {i % 4 == 1 || i % 4 == 2 ? 0.5F : -0.5F, i % 4 >= 2 ? 0.5F : -0.5F,
            i >= 4 ? 0.5F : -0.5F};
}

void SendBox(bool textured) {
    glBegin(GL_QUADS);
    for (std::size_t face = 0; face < 6; ++face) {
        glNormal3fv(Normals[face].data());
        for (std::size_t i = 0; i < 4; ++i) {
            if (textured) glTexCoord2fv(TextureCorners[i]);
            glVertex3fv(Corner(Faces[face][i]).data());
        }
    }
    glEnd();
}

/// The same vertices as arrays.
struct TArrays {
    std::vector<std::array<float, 3>> Points, Normals;
    std::vector<std::array<float, 2>> TextureCoordinates;

    void Enable() const {
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_NORMAL_ARRAY);
        glVertexPointer(3, GL_FLOAT, 0, Points.data());
        glNormalPointer(GL_FLOAT, 0, Normals.data());
        if (TextureCoordinates.empty()) return;
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoordPointer(2, GL_FLOAT, 0, TextureCoordinates.data());
    }
    static void Disable() {
        for (const GLenum array : std::initializer_list<GLenum>{GL_VERTEX_ARRAY, GL_NORMAL_ARRAY,
                                                                GL_TEXTURE_COORD_ARRAY})
            glDisableClientState(array);
    }
};

TArrays BoxArrays(bool textured) {
    TArrays arrays;
    for (std::size_t face = 0; face < 6; ++face)
        for (std::size_t i = 0; i < 4; ++i) {
            arrays.Points.push_back(Corner(Faces[face][i]));
            arrays.Normals.push_back(Normals[face]);
            if (textured)
                arrays.TextureCoordinates.push_back({TextureCorners[i][0], TextureCorners[i][1]});
        }
    return arrays;
}

/// Places, colours, and one of three ways to send what stands there.
class SolidFrame : public TFrame {
public:
    enum Way { Immediate, Listed, Arrays };

    explicit SolidFrame(Way way, int count = Count) : m_way(way), m_places(Path(count - 1)) {}
    ~SolidFrame() override { ReleaseDisplayList(m_list); }

    void DrawRaw() override {
        Prepare();
        for (std::size_t i = 0; i < m_places.size(); ++i) {
            const auto& [x, y, z] = m_places[i];
            const std::array<double, 16> matrix{Edge, 0, 0,    0, 0, Edge, 0, 0,
                                                0,    0, Edge, 0, x, y,    z, 1};
            const TGLColor color = ToGLColor(ColorOf(i), 0);
            glPushMatrix();
            glMultMatrixd(matrix.data());
            glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, color.data());
            SendOne();
            glPopMatrix();
        }
        if (m_way == Arrays) TArrays::Disable();
    }

protected:
    /// What one of them sends, call by call.
    virtual void Send() = 0;
    /// The same, in the order of GL_QUADS.
    virtual TArrays MakeArrays() { return {}; }

    [[nodiscard]] const std::vector<TGLArrayd3>& Places() const { return m_places; }

private:
    void Prepare() {
        if (m_way == Listed && m_list == 0) {
            m_list = glGenLists(1);
            glNewList(m_list, GL_COMPILE);
            Send();
            glEndList();
        }
        if (m_way != Arrays) return;
        if (m_arrays.Points.empty()) m_arrays = MakeArrays();
        m_arrays.Enable();
    }
    void SendOne() {
        if (m_way == Listed) return glCallList(m_list);
        if (m_way == Immediate) return Send();
        glDrawArrays(GL_QUADS, 0, static_cast<GLsizei>(m_arrays.Points.size()));
    }

    Way m_way;
    std::vector<TGLArrayd3> m_places;
    TArrays m_arrays;
    GLuint m_list = 0;
};

class BoxFrame : public SolidFrame {
public:
    using SolidFrame::SolidFrame;
    void Fill(TZEPObject& root) override { FillWith<TZEPBox>(root, Places()); }

protected:
    void Send() override { SendBox(false); }
    TArrays MakeArrays() override { return BoxArrays(false); }
};

/// Spheres of 20 by 20 cells.
class SphereFrame : public SolidFrame {
public:
    using SolidFrame::SolidFrame;
    void Fill(TZEPObject& root) override { FillWith<TZEPSphere>(root, Places()); }

protected:
    void Send() override {
        GLUquadric* quadric = gluNewQuadric();
        gluQuadricTexture(quadric, GL_TRUE);
        gluQuadricNormals(quadric, GLU_FLAT);
        gluSphere(quadric, 0.5, 20, 20);
        gluDeleteQuadric(quadric);
    }
};

QImage Checkers() {
    QImage image(64, 64, QImage::Format_RGB32);
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) image.setPixel(x, y, (x / 8 + y / 8) % 2 ? 0xFF4060FF : ~0U);
    return image;
}

/// Boxes with a picture of 64 by 64 pixels, which the raw loop loads once.
class TexturedBoxFrame : public SolidFrame {
public:
    TexturedBoxFrame(Way way, bool resident) : SolidFrame(way, 1000), m_resident(resident) {}
    ~TexturedBoxFrame() override { ReleaseTexture(m_name); }

    void Fill(TZEPObject& root) override {
        FillWith<TZEPBox>(root, Places(), [this](TZEPBox& box) {
            box.Material()->Texture()->Image()->SetImage(Checkers());
            box.Material()->Texture()->SetResident(m_resident);
        });
    }
    void DrawRaw() override {
        if (m_name == 0) Load();
        glBindTexture(GL_TEXTURE_2D, m_name);
        glEnable(GL_TEXTURE_2D);
        SolidFrame::DrawRaw();
        glDisable(GL_TEXTURE_2D);
    }

protected:
    void Send() override { SendBox(true); }
    TArrays MakeArrays() override { return BoxArrays(true); }

private:
    void Load() {
        const QImage image = Checkers().convertToFormat(QImage::Format_RGBX8888);
        glGenTextures(1, &m_name);
        glBindTexture(GL_TEXTURE_2D, m_name);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexImage2D(GL_TEXTURE_2D, 0, 3, image.width(), image.height(), 0, GL_RGBA,
                     GL_UNSIGNED_BYTE, image.constBits());
    }

    bool m_resident;
    GLuint m_name = 0;
};

template <class T>
void Measure(benchmark::State& state) {
    T frame(static_cast<SolidFrame::Way>(state.range(0)));
    MeasureFrame(state, frame);
}

void Boxes(benchmark::State& state) {
    Measure<BoxFrame>(state);
}
void Spheres(benchmark::State& state) {
    Measure<SphereFrame>(state);
}
void TexturedBoxes(benchmark::State& state) {
    TexturedBoxFrame frame(static_cast<SolidFrame::Way>(state.range(0)), state.range(1) != 0);
    MeasureFrame(state, frame);
}

// The raw loop's way: 0 immediate mode, 1 display list, 2 vertex arrays.
BENCHMARK(Boxes)->ArgName("raw")->DenseRange(0, 2)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Spheres)->ArgName("raw")->DenseRange(0, 1)->UseManualTime()->Unit(
    benchmark::kMillisecond);
BENCHMARK(TexturedBoxes)
    ->ArgNames({"raw", "resident"})
    ->ArgsProduct({{0, 1, 2}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

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
