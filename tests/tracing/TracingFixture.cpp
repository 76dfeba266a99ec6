#include "tests/tracing/TracingFixture.h"

#include <QDir>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace ZEP::Tracing {

namespace {

constexpr int Margin = 2;
/// Steps of 255: what is lit at the corners of fine cells, and rounded with each light.
constexpr int Tolerance = 10;
static_assert(TTracer::GoodDeal * 255 > 2 * Tolerance);
constexpr int Enough = 100; // samples
/// Sides of a shadow that OpenGL clips may miss a pixel between each other.
constexpr int OneIn = 20000;

std::array<int, 3> Bytes(const TVector& color) {
    const auto byte = [](double part) {
        return static_cast<int>(std::lround(std::clamp(part, 0.0, 1.0) * 255));
    };
    return {byte(color.X), byte(color.Y), byte(color.Z)};
}

std::size_t At(int x, int y) {
    return static_cast<std::size_t>(y) * TStage::Size + static_cast<std::size_t>(x);
}

bool IsInside(const std::vector<TSample>& traced, int x, int y) {
    for (int v = y - Margin; v <= y + Margin; ++v)
        for (int u = x - Margin; u <= x + Margin; ++u)
            if (!traced[At(u, v)].IsLike(traced[At(x, y)])) return false;
    return true;
}

bool IsAlike(QRgb drawn, const TVector& traced) {
    const auto [red, green, blue] = Bytes(traced);
    return std::max({std::abs(qRed(drawn) - red), std::abs(qGreen(drawn) - green),
                     std::abs(qBlue(drawn) - blue)}) <= Tolerance;
}

QImage Picture(const std::vector<TSample>& traced) {
    QImage picture(TStage::Size, TStage::Size, QImage::Format_RGB32);
    for (int y = 0; y < TStage::Size; ++y)
        for (int x = 0; x < TStage::Size; ++x) {
            const auto [red, green, blue] = Bytes(traced[At(x, y)].Color);
            picture.setPixel(x, y, qRgb(red, green, blue));
        }
    return picture;
}

void Count(const TSample& sample, TComparison& comparison) {
    ++comparison.Compared;
    ++comparison.Pieces[sample.First.Piece];
    ++comparison.InMirrors[sample.Mirrored.Piece];
    for (unsigned lamp = 0; lamp < 8; ++lamp)
        if ((sample.Missing & 1U << lamp) != 0) ++comparison.Shadows[lamp];
}

/// Mesa accumulates the light that is behind the numbers of a colour, other drivers the numbers.
bool AddsLight(const OffscreenContext& context) {
    glClearColor(0.5F, 0.5F, 0.5F, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glAccum(GL_LOAD, 0.5F);
    glAccum(GL_RETURN, 1);
    return context.ReadPixel(0, 0).red() > 75;
}

void Write(const QImage& picture, const std::string& name) {
    const QString folder = QStringLiteral(ZEP_TEST_OUTPUT "/tracing");
    QDir().mkpath(folder);
    EXPECT_TRUE(picture.save(folder + QLatin1Char('/') + QString::fromStdString(name) +
                             QStringLiteral(".png")));
}

template <class TKey>
int CountOf(const std::map<TKey, int>& counts, TKey key) {
    const auto found = counts.find(key);
    return found == counts.end() ? 0 : found->second;
}

void ExpectEnough(const TComparison& comparison, const TTracer& tracer) {
    EXPECT_GT(comparison.Compared, TStage::Size * TStage::Size / 4);
    bool mirrors = false;
    for (int i = 0; i < static_cast<int>(tracer.Pieces.size()); ++i) {
        const TPiece& piece = tracer.Pieces[static_cast<std::size_t>(i)];
        mirrors = mirrors || piece.Look.Mirror > 0;
        EXPECT_TRUE(!piece.Shape || CountOf(comparison.Pieces, i) > Enough) << "piece " << i;
    }
    const int mirrored = comparison.Compared - CountOf(comparison.InMirrors, NoPiece);
    EXPECT_TRUE(!mirrors || mirrored > Enough);
    if (tracer.Method == TMethod::NoShadows) return;
    for (unsigned i = 0; i < tracer.Lamps.size(); ++i)
        EXPECT_TRUE(!tracer.Lamps[i].Casts || CountOf(comparison.Shadows, i) > Enough)
            << "lamp " << i;
}

} // namespace

TComparison Compare(const QImage& drawn, const std::vector<TSample>& traced) {
    TComparison comparison;
    QImage map = QImage(drawn.size(), QImage::Format_RGB32);
    map.fill(Qt::black);
    for (int y = Margin; y < TStage::Size - Margin; ++y)
        for (int x = Margin; x < TStage::Size - Margin; ++x) {
            if (!IsInside(traced, x, y)) continue;
            const TSample& sample = traced[At(x, y)];
            Count(sample, comparison);
            const bool isAlike = IsAlike(drawn.pixel(x, y), sample.Color);
            if (!isAlike) ++comparison.Different;
            map.setPixelColor(x, y, isAlike ? Qt::darkGray : Qt::red);
        }
    comparison.Map = QImage(3 * TStage::Size, TStage::Size, QImage::Format_RGB32);
    QPainter painter(&comparison.Map);
    painter.drawImage(0, 0, drawn);
    painter.drawImage(TStage::Size, 0, Picture(traced));
    painter.drawImage(2 * TStage::Size, 0, map);
    return comparison;
}

void TracingTest::SetUp() {
    OffscreenTest::SetUp();
    if (IsSkipped()) return;
    m_addsLight = AddsLight(Context());
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1);
    glEnable(GL_LIGHTING);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
}

TComparison TracingTest::DrawAndCompare(TStage& stage, const std::string& name) {
    stage.SetAddsLight(m_addsLight);
    stage.Draw();
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    const TComparison comparison = Compare(Context().ReadFrame(), stage.Trace());
    if (comparison.Different > 0 || qEnvironmentVariableIsSet("ZEP_KEEP_TRACED"))
        Write(comparison.Map, name);
    return comparison;
}

void TracingTest::ExpectAsTraced(TStage& stage, const std::string& name) {
    for (const TMethod method : stage.Methods()) {
        const std::string drawn = name + (method == TMethod::Accumulated ? ".accumulated" : "");
        SCOPED_TRACE(drawn);
        stage.SetMethod(method);
        const TComparison comparison = DrawAndCompare(stage, drawn);
        ExpectEnough(comparison, stage.Tracer());
        EXPECT_LE(comparison.Different, comparison.Compared / OneIn);
    }
}

} // namespace ZEP::Tracing
