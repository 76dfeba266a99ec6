#include "tests/gl/FourColours.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

#include <cmath>

using namespace ZEP;

namespace {

class MeshPixel : public OffscreenTest {
protected:
    MeshPixel() : OffscreenTest(128, 128) {
        glEnable(GL_LIGHTING);
        glEnable(GL_LIGHT0);
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_NORMALIZE);
        glOrtho(-1, 1, -1, 1, -4, 4);
    }

    QImage Drawn(const std::vector<std::unique_ptr<TZEPMesh>>& meshes) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        for (const auto& mesh : meshes) mesh->DrawMain(false);
        return Context().ReadFrame();
    }
};

constexpr int Side = 50; // cells

void AddVertex(TZEPMesh& mesh, int column, int row) {
    const double u = static_cast<double>(column) / Side;
    const double v = static_cast<double>(row) / Side;
    TZEPVertex3TexCI* vertex = mesh.Vertexes()->Add();
    vertex->SetPoint({1.8 * u - 0.9, 1.8 * v - 0.9, std::sin(7 * u) * std::cos(5 * v)});
    vertex->SetTexX(u);
    vertex->SetTexY(v);
    vertex->SetNormal({static_cast<float>(u - 0.5), static_cast<float>(v - 0.5), 1});
}

/// A waving surface as meshes of that many faces each, the last one of the rest.
std::vector<std::unique_ptr<TZEPMesh>> Surface(int facesEach, bool smooth, bool textured) {
    std::vector<std::unique_ptr<TZEPMesh>> meshes;
    const auto mesh = [&]() -> TZEPMesh& {
        if (!meshes.empty() && meshes.back()->Faces()->Count() < facesEach) return *meshes.back();
        auto& added = *meshes.emplace_back(std::make_unique<TZEPMesh>());
        added.SetSmooth(smooth);
        if (textured) added.Material()->Texture()->Image()->SetImage(FourColours());
        for (int row = 0; row <= Side; ++row)
            for (int column = 0; column <= Side; ++column) AddVertex(added, column, row);
        return added;
    };
    const auto addFace = [&](int a, int b, int c) {
        TZEPFace3CI* face = mesh().Faces()->Add();
        face->SetA(a);
        face->SetB(b);
        face->SetC(c);
    };
    for (int row = 0; row < Side; ++row)
        for (int column = 0; column < Side; ++column) {
            const int a = row * (Side + 1) + column;
            addFace(a, a + 1, a + Side + 2);
            addFace(a, a + Side + 2, a + Side + 1);
        }
    return meshes;
}

} // namespace

TEST_F(MeshPixel, ManyFacesLookAsFewAtATimeDo) {
    for (const bool smooth : {false, true})
        for (const bool textured : {false, true}) {
            const QImage whole = Drawn(Surface(2 * Side * Side, smooth, textured));
            EXPECT_EQ(whole, Drawn(Surface(50, smooth, textured))) << smooth << textured;
            EXPECT_GT(qGray(whole.pixel(64, 64)), 0);
            EXPECT_EQ(qGray(whole.pixel(2, 2)), 0);
            EXPECT_EQ(qRed(whole.pixel(100, 20)) == qGreen(whole.pixel(100, 20)), !textured);
        }
}

TEST_F(MeshPixel, ManyFacesLeaveTheArraysAsTheyWere) {
    Drawn(Surface(2 * Side * Side, true, true));
    for (const GLenum array :
         std::initializer_list<GLenum>{GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_TEXTURE_COORD_ARRAY})
        EXPECT_FALSE(glIsEnabled(array));
}
