#include "tests/batch/BatchFromAbove.h"

#include <zep/appearance/effects/Light.h>
#include <zep/appearance/materials/Material.h>
#include <zep/objects/Box.h>
#include <zep/objects/Mesh.h>
#include <zep/view/Actor.h>

#include <functional>
#include <set>
#include <vector>

namespace ZEP {
namespace {

constexpr int Dark = 20;
constexpr int Bright = 150;

using TCorners = std::array<TGLArrayd3, 4>;
using TAdd = std::function<TZEPObject*(const TCorners&)>;

TCorners Square(double x, double half, double z) {
    return {{{x - half, -half, z}, {x + half, -half, z}, {x + half, half, z}, {x - half, half, z}}};
}

/// A box that is believed what it tells of itself, and notes in which passes it is drawn.
class TNotingBox : public TZEPBox {
public:
    using TZEPBox::TZEPBox;
    void Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override {
        Drawn.insert(state);
        TZEPBox::Draw(scene, state, kind);
    }
    std::set<TZEPDrawState> Drawn;
};
const TZEPKnownClass Known{typeid(TNotingBox)};

/// A layer with a floor, and light from the left that falls at 45 degrees: what stands at the
/// height 2 casts its shadow 2 to the right.
class BatchPasses : public TBatchFromAbove {
protected:
    BatchPasses() {
        m_scene.SetSceneAmbientColor(clBlack);
        m_scene.SetFShadows(true);
        m_layer = AddTo<TZEPActor>(&m_batch);
        auto* light = AddTo<TZEPLight>(&m_scene);
        light->SetColor(clWhite);
        light->SetCastShadows(true);
        light->Position()->SetData(-100, 0, 100);
        QObject::connect(&m_scene, &TZEPScene::AfterCamera, [](TZEPScene* scene) {
            scene->Draw(*scene, dsPre, dkFull);
            scene->Draw(*scene, dsReflections, dkFull);
        });
        // Accumulated, a light without any shadow reaches nothing that receives.
        AddBox(Square(4.6, 0.1, 0.2))->SetCastShadows(true);
    }

    TZEPPolygon* AddPolygon(const TCorners& corners) { return AddFace(corners, clWhite, m_layer); }

    TZEPMesh* AddMesh(const TCorners& corners) {
        auto* mesh = Add<TZEPMesh>(clWhite, m_layer);
        mesh->SetColorFaces(false);
        for (const TGLArrayd3& corner : corners) mesh->Vertexes()->Add()->SetPoint(corner);
        for (const int second : {1, 2}) {
            TZEPFace3CI* face = mesh->Faces()->Add();
            face->SetData(1, second);
            face->SetData(2, second + 1);
        }
        return mesh;
    }

    TZEPBox* AddBox(const TCorners& corners) {
        auto* box = Add<TZEPBox>(clWhite, m_layer);
        box->XForm()->Translate()->SetData((corners[0][0] + corners[1][0]) / 2, 0, corners[0][2]);
        box->XForm()->Scale()->SetData(corners[1][0] - corners[0][0], 2, 0.1);
        return box;
    }

    /// Each kind in both shadings of the batch, by both ways to draw shadows.
    void ForEachShadowDrawing(const std::vector<TAdd>& kinds,
                              const std::function<void(const TAdd&)>& check) {
        for (const bool smooth : {false, true})
            for (const bool accumulated : {false, true})
                for (const TAdd& add : kinds) {
                    SCOPED_TRACE(testing::Message() << smooth << accumulated << &add - &kinds[0]);
                    m_batch.SetSmoothShading(smooth);
                    m_scene.SetAccumShadows(accumulated);
                    check(add);
                }
    }

    const TAdd Polygon = [this](const TCorners& corners) { return AddPolygon(corners); };
    const TAdd Mesh = [this](const TCorners& corners) { return AddMesh(corners); };
    const TAdd Box = [this](const TCorners& corners) { return AddBox(corners); };

    int GreyAt(double x, double y) { return qRed(ColorAt(x, y)); }

    TZEPActor* m_layer;
};

TEST_F(BatchPasses, WhatCastsShadowsStandsInTheLightAndIsSeen) {
    const std::unique_ptr<TZEPPolygon> floor(AddPolygon(Square(0, 4.5, 0)));
    floor->SetReceiveShadows(true);
    ForEachShadowDrawing({Polygon, Mesh, Box}, [this](const TAdd& add) {
        const std::unique_ptr<TZEPObject> caster(add(Square(-3, 1, 2)));
        EXPECT_GT(GreyAt(-1, 0), Bright);
        caster->SetShadows(0, true);
        EXPECT_GT(GreyAt(-3, 0), Bright); // the caster itself
        EXPECT_LT(GreyAt(-1, 0), Dark);
        EXPECT_GT(GreyAt(1, 0), Bright);
        EXPECT_GT(GreyAt(-1, 3), Bright);
        caster->SetShadows(0, false);
        EXPECT_GT(GreyAt(-1, 0), Bright);
    });
}

TEST_F(BatchPasses, ShadowsFallOnWhatReceivesThemAlone) {
    const std::unique_ptr<TZEPBox> caster(AddBox(Square(-3, 1, 2)));
    caster->SetCastShadows(true);
    ForEachShadowDrawing({Polygon, Mesh}, [this](const TAdd& add) {
        const std::unique_ptr<TZEPObject> floor(add(Square(0, 4.5, 0)));
        EXPECT_GT(GreyAt(-1, 0), Bright);
        floor->SetShadows(1, true);
        EXPECT_LT(GreyAt(-1, 0), Dark);
        EXPECT_GT(GreyAt(1, 0), Bright);
        m_batch.SetEvenLight(true); // a drawing keeps its colours
        EXPECT_GT(GreyAt(-1, 0), Bright);
        EXPECT_GT(GreyAt(1, 0), Bright);
        m_batch.SetEvenLight(false);
        floor->SetVisible(false); // comes back in its place
        EXPECT_LT(GreyAt(1, 0), Dark);
        floor->SetVisible(true);
        EXPECT_LT(GreyAt(-1, 0), Dark);
        EXPECT_GT(GreyAt(1, 0), Bright);
    });
}

TEST_F(BatchPasses, AMirrorShowsTheScene) {
    m_scene.SetSceneAmbientColor(clWhite);
    auto* mirror = AddPolygon({{{1, -1, 1}, {1, 1, 1}, {-1, 1, -1}, {-1, -1, -1}}}); // to the left
    auto* box = AddBox(Square(-4, 0.8, 0));
    box->XForm()->Scale()->SetZ(1);
    box->SetColor(clBlue);
    EXPECT_EQ(At(0, 0), qRgb(255, 255, 255));
    mirror->SetConcave(false); // the tessellator's front is its back
    mirror->SetReflection(1);
    m_scene.SetReflections(true);
    EXPECT_EQ(At(0, 0), qRgb(0, 0, 255));
    EXPECT_EQ(At(0.7, 0), qRgb(0, 0, 0));
    mirror->SetReflection(0);
    EXPECT_EQ(At(0, 0), qRgb(255, 255, 255));
}

TEST_F(BatchPasses, WhatTakesNoPartInAPassIsNotWalkedThere) {
    auto* box = Add<TNotingBox>(clWhite, m_layer);
    auto* other = Add<TNotingBox>(clWhite, m_layer);
    const auto drawn = [&] {
        box->Drawn.clear();
        ASSERT_FALSE(m_panel.GrabFrame().isNull());
    };
    const std::set<TZEPDrawState> shown{dsAllObjects, dsTransparent};
    drawn();
    EXPECT_EQ(box->Drawn, shown);
    other->SetCastShadows(true); // stands beside it
    drawn();
    EXPECT_EQ(box->Drawn, shown);
    EXPECT_TRUE(other->Drawn.contains(dsBuildShadowVolumes));
    box->SetReceiveShadows(true);
    drawn();
    EXPECT_TRUE(box->Drawn.contains(dsShadows));
    EXPECT_FALSE(box->Drawn.contains(dsBuildShadowVolumes));
}

} // namespace
} // namespace ZEP
