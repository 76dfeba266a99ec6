#include "tests/batch/BatchFromAbove.h"

#include <zep/appearance/effects/Light.h>
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/objects/Box.h>
#include <zep/objects/Mesh.h>

#include <cmath>
#include <numbers>

namespace ZEP {
namespace {

/// Roofs under a light from the right and above, 45 degrees high.
class SmoothMesh : public TBatchFromAbove {
protected:
    SmoothMesh() {
        m_scene.SetSceneAmbientColor(clBlack);
        m_light->Position()->SetData(1, 0, 1);
        m_light->SetColor(clWhite);
        m_batch.SetSmoothShading(true);
    }

    /// Two slopes with their ridge above the y axis, from -3 to 3. \param joined  they share the
    /// vertexes of the ridge
    TZEPMesh* AddRoof(double degrees, bool joined) {
        auto* mesh = Add<TZEPMesh>(clWhite);
        mesh->Material()->FrontFace()->SetAmbient(clBlack);
        mesh->SetColorFaces(false);
        const double height = 3 * std::tan(degrees * std::numbers::pi / 180);
        const auto add = [&](double x, double y, double z) {
            mesh->Vertexes()->Add()->SetPoint({x, y, z});
        };
        add(-3, -3, 0);
        add(-3, 3, 0);
        for (int ridge = 0; ridge < (joined ? 1 : 2); ++ridge) {
            add(0, -3, height);
            add(0, 3, height);
        }
        add(3, -3, 0);
        add(3, 3, 0);
        const int second = joined ? 2 : 4;
        AddFace(*mesh, 0, 2, 1, 0);
        AddFace(*mesh, 1, 2, 3, 0);
        AddFace(*mesh, second, second + 2, second + 1, 1);
        AddFace(*mesh, second + 1, second + 2, second + 3, 1);
        return mesh;
    }

    static void AddFace(TZEPMesh& mesh, int a, int b, int c, int material) {
        TZEPFace3CI* face = mesh.Faces()->Add();
        face->SetData(0, a);
        face->SetData(1, b);
        face->SetData(2, c);
        face->SetMaterialIndex(material);
    }

    int GreyAt(double x) { return qRed(ColorAt(x, 0.5)); }

    TZEPLight* m_light = AddTo<TZEPLight>(&m_scene);

    /// How a slope looks whose light comes in at that angle.
    static double GreyOf(double degrees) {
        return 255 * std::cos(degrees * std::numbers::pi / 180);
    }
};

TEST_F(SmoothMesh, FacesRunIntoEachOtherWhereTheyMeetAtASmallAngle) {
    for (const bool joined : {true, false}) {
        const std::unique_ptr<TZEPMesh> roof(AddRoof(15, joined));
        EXPECT_NEAR(GreyAt(-2.8), GreyOf(60), 6) << joined;
        EXPECT_NEAR(GreyAt(-0.1), GreyOf(45), 6) << joined;
        EXPECT_NEAR(GreyAt(0.1), GreyOf(45), 6) << joined;
        EXPECT_NEAR(GreyAt(2.8), GreyOf(30), 6) << joined;
    }
}

TEST_F(SmoothMesh, EdgesStaySharp) {
    const std::unique_ptr<TZEPMesh> roof(AddRoof(30, true));
    EXPECT_NEAR(GreyAt(-0.1), GreyOf(75), 3);
    EXPECT_NEAR(GreyAt(0.1), GreyOf(15), 3);
}

TEST_F(SmoothMesh, AShadowTakesOffAllTheLightThatFellOnIt) {
    TZEPMesh* roof = AddRoof(15, true);
    roof->SetReceiveShadows(true);
    m_light->Position()->SetData(100, 0, 100);
    m_light->SetCastShadows(true);
    auto* board = Add<TZEPBox>(clWhite);
    board->SetCastShadows(true);
    board->XForm()->Translate()->SetData(3.6, 0, 4);
    board->XForm()->Scale()->SetData(2, 4, 0.01);
    m_scene.SetFShadows(true);
    for (const bool accumulated : {false, true})
        for (const bool flat : {false, true}) {
            SCOPED_TRACE(testing::Message() << accumulated << flat);
            m_scene.SetAccumShadows(accumulated);
            Show({.Shading = flat ? TZEPShading::Flat : TZEPShading::Own});
            for (const double x : {-0.5, -0.1, 0.1, 0.5, 0.9}) EXPECT_LE(GreyAt(x), 2) << x;
            EXPECT_NEAR(GreyAt(-2.8), GreyOf(60), 6);
            EXPECT_NEAR(GreyAt(2.4), flat ? GreyOf(30) : GreyOf(33), 6);
        }
}

TEST_F(SmoothMesh, ChangesAreSeen) {
    TZEPMesh* roof = AddRoof(15, true);
    EXPECT_NEAR(GreyAt(-0.1), GreyOf(45), 6);
    roof->SetVisible(false);
    EXPECT_EQ(GreyAt(-0.1), 0);
    roof->SetVisible(true);
    for (const int ridge : {2, 3}) {
        TGLArrayd3 place = (*roof->Vertexes())[ridge].Data();
        place[2] = 0;
        (*roof->Vertexes())[ridge].SetPoint(place);
    }
    EXPECT_NEAR(GreyAt(-0.1), GreyOf(45), 3);
    EXPECT_NEAR(GreyAt(-2.8), GreyOf(45), 3); // flat now
    roof->Faces()->Delete(0);
    roof->Faces()->Delete(0);
    EXPECT_EQ(GreyAt(-1.5), 0);
    EXPECT_NEAR(GreyAt(1.5), GreyOf(45), 3);
    delete roof;
    EXPECT_EQ(GreyAt(1.5), 0);
}

TEST_F(SmoothMesh, FacesHaveTheMaterialsOfTheLibrary) {
    TZEPMaterialLibrary library;
    for (const TColor color : {clRed, clBlue}) {
        TZEPFaceMaterial* face = library.Materials()->Add()->Material()->FrontFace();
        face->SetDiffuse(color);
        face->SetAmbient(clBlack);
    }
    m_scene.SetMaterialLibrary(&library);
    AddRoof(1, true)->SetColorFaces(true);
    EXPECT_GT(qRed(ColorAt(-1.5, 0.5)), 150);
    EXPECT_LT(qBlue(ColorAt(-1.5, 0.5)), 90);
    EXPECT_GT(qBlue(ColorAt(1.5, 0.5)), 150);
    (*library.Materials())[1].Material()->SetTransparency(0.5F);
    EXPECT_NEAR(qBlue(ColorAt(1.5, 0.5)), GreyOf(45) / 2, 3);
    m_scene.SetMaterialLibrary(nullptr);
}

TEST_F(SmoothMesh, FacesWithoutCornersAreNotDrawn) {
    TZEPMesh* roof = AddRoof(15, true);
    AddFace(*roof, 0, 1, 77, 0);
    AddFace(*roof, -1, 0, 2, 0);
    (*roof->Vertexes())[0].SetPoint({std::nan(""), 0, 0});
    EXPECT_GT(GreyAt(1.5), 150);
    const std::unique_ptr<TZEPMesh> empty(Add<TZEPMesh>(clWhite));
    EXPECT_GT(GreyAt(1.5), 150);
}

} // namespace
} // namespace ZEP
