#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/gl/Scopes.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

using namespace ZEP;

namespace {

/// Large objects leave out what is not seen of them: they are drawn and hit as others are that show
/// the same piece by piece.
class BlocksPixel : public OffscreenTest {
protected:
    BlocksPixel() : OffscreenTest(64, 64) {}

    void SetUp() override {
        OffscreenTest::SetUp();
        for (TZEPScene* scene : {&Whole, &Parts}) scene->SetSceneAmbientColor(clWhite);
        glEnable(GL_LIGHTING);
    }

    QImage Drawn(TZEPScene& scene) {
        glClear(GL_COLOR_BUFFER_BIT);
        scene.Draw(scene, dsAllObjects, dkFull);
        return Context().ReadFrame();
    }
    /// The nearest and the farthest depth that is hit.
    static std::pair<GLuint, GLuint> Hit(TZEPScene& scene) {
        std::vector<GLuint> records(4096);
        glSelectBuffer(static_cast<GLsizei>(records.size()), records.data());
        glRenderMode(GL_SELECT);
        glInitNames();
        scene.Draw(scene, dsAllObjects, dkSelect);
        const GLint count = glRenderMode(GL_RENDER);
        std::pair<GLuint, GLuint> depths{~0U, 0};
        for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
            depths.first = std::min(depths.first, records[4 * i + 1]);
            depths.second = std::max(depths.second, records[4 * i + 2]);
        }
        return depths;
    }
    /// From far away and from near by. \return how often something was hit, of so many views
    int Compare(int views) {
        int hits = 0;
        for (int view = 0; view < views; ++view) {
            SCOPED_TRACE(view);
            const TZEPMatrixScope kept;
            // Nothing reaches the far plane: there Mesa writes depths of 2^32, which is 0.
            glScaled(1, 1, 0.001);
            glRotated(Number(180), 1, Number(1), 0.2);
            const double near = view == 0 ? 0.5 : std::ldexp(1.0, static_cast<int>(m_dice() % 9));
            glScaled(near, near, near);
            glTranslated(Number(1), Number(1), 0);
            EXPECT_EQ(Drawn(Whole), Drawn(Parts));
            EXPECT_EQ(Hit(Whole), Hit(Parts));
            hits += Hit(Whole).second > 0 ? 1 : 0;
        }
        return hits;
    }
    double Number(double size) { return (static_cast<int>(m_dice() % 2001) * 0.001 - 1) * size; }

    TZEPScene Whole, Parts;

private:
    std::mt19937 m_dice{5}; // NOLINT(*-msc51-cpp): the same each time
};

void AddPoint(TZEPPolyline& line, const TGLArrayd3& point) {
    TZEPVertex3CI* vertex = line.Vertexes()->Add();
    vertex->SetPoint(point);
    vertex->SetColor(point[0] > 0 ? clRed : clLime);
}

TZEPPolyline* AddPolyline(TZEPScene& scene) {
    auto* line = Add<TZEPPolyline>(&scene);
    line->SetSmooth(false);
    line->SetWidth(3);
    line->SetColorVertexes(true);
    return line;
}

void AddField(TZEPScene& scene, double minX, double minY, double size, int slices) {
    auto* field = Add<TZEPHeightField>(&scene);
    field->SetMinX(minX);
    field->SetMaxX(minX + size);
    field->SetMinY(minY);
    field->SetMaxY(minY + size);
    field->SetSlicesX(slices);
    field->SetSlicesY(slices);
    field->SetOnHeight([](double x, double y) {
        const bool hole = std::hypot(x - 0.25, y) < 0.3;
        return hole ? std::numeric_limits<double>::quiet_NaN() : 0.3 * std::sin(9 * x) * y;
    });
}

} // namespace

TEST_F(BlocksPixel, ALongPolylineIsSeenAndHitWhereItsPiecesAre) {
    constexpr int Edges = 1000;
    TZEPPolyline* whole = AddPolyline(Whole);
    TZEPPolyline* part = nullptr;
    TGLArrayd3 point{}, first{};
    for (int i = 0; i <= Edges; ++i) {
        if (i == 0) first = point;
        AddPoint(*whole, point);
        if (part) AddPoint(*part, point);
        if (i % 100 == 0) AddPoint(*(part = AddPolyline(Parts)), point);
        for (double& coordinate : point) coordinate = std::clamp(coordinate + Number(0.1), -1., 1.);
    }
    EXPECT_GT(Compare(100), 20);
    whole->SetClosed(true);
    AddPoint(*part, first);
    EXPECT_GT(Compare(20), 2);
}

TEST_F(BlocksPixel, AHeightFieldIsHitWhereItsPiecesAre) {
    AddField(Whole, -1, -1, 2, 64);
    for (const double x : {-1., -0.5, 0., 0.5})
        for (const double y : {-1., -0.5, 0., 0.5}) AddField(Parts, x, y, 0.5, 16);
    EXPECT_GT(Compare(100), 20);
}
