#include "tests/gl/FourColours.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/gl/Scopes.h>

#include <cmath>
#include <functional>
#include <random>

using namespace ZEP;

namespace {

using TMeshes = std::vector<std::unique_ptr<TZEPMesh>>;

class MeshPixel : public OffscreenTest {
protected:
    MeshPixel() : OffscreenTest(128, 128) {
        glEnable(GL_LIGHTING);
        glEnable(GL_LIGHT0);
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_NORMALIZE);
        glOrtho(-1, 1, -1, 1, -4, 4);
    }

    QImage Drawn(const TMeshes& meshes) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        for (const auto& mesh : meshes) mesh->DrawMain(false);
        return Context().ReadFrame();
    }
    /// The nearest and the farthest depth of what stands in view; none without a hit.
    static std::vector<GLuint> Hit(const TMeshes& meshes) {
        std::vector<GLuint> records(4);
        glSelectBuffer(static_cast<GLsizei>(records.size()), records.data());
        glRenderMode(GL_SELECT);
        glInitNames();
        glPushName(1);
        for (const auto& mesh : meshes) mesh->DrawMain(false);
        if (glRenderMode(GL_RENDER) == 0) records.clear();
        return records;
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
TMeshes Surface(int facesEach, bool smooth, bool textured) {
    TMeshes meshes;
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

TEST_F(MeshPixel, WhatIsKeptFollowsEachChangeInEachView) {
    struct TChange {
        const char* Name;
        std::function<void(TZEPMesh&)> Make;
    };
    const TChange changes[]{
        {"nothing", [](TZEPMesh&) {}},
        {"a vertex", [](TZEPMesh& mesh) { mesh.Vertexes()->Item(Side / 2 * Side)->SetZ(2); }},
        {"a normal",
         [](TZEPMesh& mesh) {
             mesh.Vertexes()->Item(Side / 2 * Side + 9)->SetNormal({1, 0, 0});
         }},
        {"faces", [](TZEPMesh& mesh) { mesh.Faces()->Delete(7); }},
        {"flat", [](TZEPMesh& mesh) { mesh.SetSmooth(false); }},
        {"one normal", [](TZEPMesh& mesh) { mesh.SetAutoNormal(false); }},
        {"another", [](TZEPMesh& mesh) { mesh.Normal()->SetData(0.6, 0, 0.8); }},
        {"smooth", [](TZEPMesh& mesh) { mesh.SetSmooth(true); }},
        {"a picture",
         [](TZEPMesh& mesh) { mesh.Material()->Texture()->Image()->SetImage(FourColours()); }},
    };
    TMeshes whole = Surface(10'000, true, false);
    TMeshes parts = Surface(50, true, false);
    std::mt19937 dice(7); // NOLINT(*-msc51-cpp): the same scenes each time
    int hits = 0;
    for (const auto& [name, make] : changes) {
        for (const auto& mesh : whole) make(*mesh);
        if (std::string_view(name) == "faces")
            make(*parts.front());
        else
            for (const auto& mesh : parts) make(*mesh);
        for (int view = 0; view < 12; ++view) {
            SCOPED_TRACE(testing::Message() << name << ", view " << view);
            const TZEPMatrixScope kept;
            const double near = view == 0 ? 1 : std::ldexp(1.0, static_cast<int>(dice() % 6));
            const auto shift = [&] { return (static_cast<double>(dice() % 1800) / 1000 - 0.9); };
            glRotated(static_cast<double>(dice() % 360), 1, 1, 0.2);
            glScaled(near, near, near);
            glTranslated(shift(), shift(), 0);
            EXPECT_EQ(Drawn(whole), Drawn(parts));
            EXPECT_EQ(Hit(whole), Hit(parts));
            hits += Hit(whole).empty() ? 0 : 1;
        }
    }
    EXPECT_GT(hits, 20);
}

TEST_F(MeshPixel, WhatIsKeptStaysWhereOnlyTheLookChanges) {
    const TMeshes meshes = Surface(10'000, true, false);
    TZEPMesh& mesh = *meshes.front();
    const QImage before = Drawn(meshes);
    mesh.Vertexes()->Item(0)->SetPointQuietly({0, 0, 0}); // a corner is missing
    mesh.SetVisible(false);
    mesh.SetVisible(true);
    mesh.SetSelected(true);
    mesh.SetSelected(false);
    mesh.SetMaterialIndex(3);
    EXPECT_EQ(Drawn(meshes), before);
    mesh.Invalidate(&mesh);
    EXPECT_NE(Drawn(meshes), before);
}

TEST_F(MeshPixel, ManyFacesLeaveTheArraysAsTheyWere) {
    Drawn(Surface(2 * Side * Side, true, true));
    for (const GLenum array :
         std::initializer_list<GLenum>{GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_TEXTURE_COORD_ARRAY})
        EXPECT_FALSE(glIsEnabled(array));
}
