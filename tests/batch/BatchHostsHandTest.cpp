#include "tests/batch/BatchFromAbove.h"

#include <zep/appearance/effects/LogicalObject.h>
#include <zep/appearance/effects/Proxy.h>
#include <zep/appearance/materials/Material.h>
#include <zep/batch/GatheredClass.h>
#include <zep/objects/Box.h>
#include <zep/objects/Label.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Node.h>
#include <zep/objects/User.h>
#include <zep/view/Actor.h>

#include <utility>

namespace ZEP {
namespace {

/// Draws two above where it stands, in green.
class TRaisedLine : public TZEPLine {
public:
    using TZEPLine::TZEPLine;
    void DrawSpecific(GLenum face, bool draft) override {
        glPushMatrix();
        glTranslated(0, 2, 0);
        TZEPLine::DrawSpecific(face, draft);
        glPopMatrix();
    }
};

/// Knows more, and draws what it inherits.
class TNamedLine : public TZEPLine {
public:
    using TZEPLine::TZEPLine;
};
const TZEPGatheredClass Gathered{typeid(TNamedLine), TZEPGathered::Shape};

/// What hosts do to a batch, in its events and anywhere.
class BatchHosts : public TBatchFromAbove {
protected:
    void Draw() { ASSERT_FALSE(m_panel.GrabFrame().isNull()); }
};

TEST_F(BatchHosts, MayFreeWhatIsDrawnWhileItIsDrawn) {
    struct TTree {
        TZEPScene* Scene;
        TZEPBatch* Batch;
        TZEPActor *First, *Second;
        TZEPObject *Sibling, *Text;
    };
    using TStep = void (*)(TTree&);
    const TStep steps[] = {
        [](TTree& tree) { delete tree.Sibling; },
        [](TTree& tree) { delete tree.Text; },
        [](TTree& tree) { delete tree.First; },
        [](TTree& tree) { delete tree.Second; },
        [](TTree& tree) { tree.Batch->Clear(); },
        [](TTree& tree) { delete tree.Batch; },
        [](TTree& tree) { tree.Second->SetParentComponent(tree.First); },
        [](TTree& tree) { tree.Scene->Draw(*tree.Scene, dsAllObjects, dkFull); }};
    for (const TStep step : steps)
        for (const bool even : {false, true}) {
            SCOPED_TRACE(testing::Message() << &step - steps << even);
            auto* batch = AddTo<TZEPBatch>(&m_scene);
            const QPointer<TZEPBatch> alive(batch);
            batch->SetEvenLight(even);
            batch->SetShown(TZEPShown{.Widths = 2, .Shading = TZEPShading::Smooth});
            auto* caller = AddTo<TZEPUser>(AddTo<TZEPActor>(batch));
            auto* second = AddTo<TZEPActor>(batch);
            auto* text = AddTo<TZEPLabel>(second);
            text->SetCaption(QStringLiteral("I"));
            TTree tree{
                &m_scene, batch, AddTo<TZEPActor>(batch), second, AddTo<TZEPBox>(caller->Parent()),
                text};
            AddTo<TZEPBox>(tree.First);
            AddTo<TZEPMesh>(tree.Second)->SetSelected(true);
            AddTo<TZEPLine>(tree.Second)->SetSelected(true);
            bool armed = false;
            caller->SetOnDraw([&](TZEPUser&, GLenum, bool) {
                if (std::exchange(armed, false)) step(tree);
            });
            Draw();
            armed = true;
            caller->Invalidate(caller);
            Draw();
            EXPECT_FALSE(armed);
            Draw();
            delete alive.data();
        }
}

TEST_F(BatchHosts, MayFreeAnObjectAsItIsSelected) {
    for (const bool layer : {false, true}) {
        auto* parent = AddTo<TZEPActor>(&m_batch);
        TZEPLine* line = AddLine(2, clRed, parent);
        EXPECT_EQ(At(1, 2), Red);
        QObject context;
        QObject::connect(&m_scene, &TZEPScene::BeforeSelect, &context,
                         [&] { delete (layer ? static_cast<TZEPObject*>(parent) : line); });
        line->SetSelected(true);
        EXPECT_EQ(At(1, 2), Nothing) << layer;
    }
}

TEST_F(BatchHosts, MayDrawWhileSomethingGoes) {
    AddTo<TZEPBox>(AddTo<TZEPActor>(&m_batch));
    auto* layer = AddTo<TZEPActor>(&m_batch);
    AddTo<TZEPBox>(layer);
    AddLine(2, clRed, layer)->SetSelected(true);
    Draw();
    const TZEPObjectNotify draws{[](void* panel, TZEPObject*, TZEPObjectAction, const void*) {
                                     EXPECT_FALSE(
                                         static_cast<TZEPPanel*>(panel)->GrabFrame().isNull());
                                 },
                                 &m_panel};
    m_scene.RegisterNotify(draws);
    delete layer;
    m_batch.Clear();
    m_scene.UnregisterNotify(draws);
    EXPECT_EQ(At(1, 2), Nothing);
}

TEST_F(BatchHosts, NeedNotTellOfChanges) {
    for (const bool byHand : {false, true})
        for (const bool bracket : {false, true}) {
            SCOPED_TRACE(testing::Message() << byHand << bracket);
            m_scene.SetManualUpdate(byHand);
            auto* layer = AddTo<TZEPNode>(&m_batch);
            TZEPLine* line = AddLine(0, clRed, layer);
            EXPECT_EQ(At(1, 0), Red);
            if (bracket) layer->BeginUpdate();
            line->SetColor(clLime);
            EXPECT_EQ(At(1, 0), Green);
            line->P1()->SetData(-4, 3, 0);
            line->P2()->SetData(4, 3, 0);
            EXPECT_EQ(At(1, 3), Green);
            line->SetSelected(true);
            EXPECT_EQ(At(1, 3), Mark);
            line->SetSelected(false);
            EXPECT_EQ(At(1, 3), Green);
            line->Material()->FrontFace()->SetAmbient(clRed); // draws itself from now on
            line->Material()->FrontFace()->SetDiffuse(clRed);
            EXPECT_EQ(At(1, 3), Red);
            line->SetVisible(false);
            EXPECT_EQ(At(1, 3), Nothing);
            if (bracket) layer->EndUpdate();
            delete layer;
        }
}

TEST_F(BatchHosts, ClassesOfTheirOwnDrawThemselvesUntilTheySayOtherwise) {
    auto* raised = Add<TRaisedLine>(clLime);
    auto* named = Add<TNamedLine>(clRed);
    for (TZEPLine* line : std::initializer_list<TZEPLine*>{raised, named}) {
        line->P1()->SetData(-4, 0, 0);
        line->P2()->SetData(4, 0, 0);
    }
    EXPECT_EQ(At(1, 2), Green);
    EXPECT_EQ(At(1, 0), Red);
    EXPECT_EQ(TZEPGatheredClass::Of(*raised), TZEPGathered::No);
    {
        const TZEPGatheredClass now{typeid(*raised), TZEPGathered::Shape};
        EXPECT_EQ(TZEPGatheredClass::Of(*raised), TZEPGathered::Shape) << "though asked before";
    }
    EXPECT_EQ(TZEPGatheredClass::Of(*raised), TZEPGathered::No);
    EXPECT_EQ(TZEPGatheredClass::Of(*named), TZEPGathered::Shape);
}

TEST_F(BatchHosts, MayShowABatchElsewhere) {
    AddLine(0, clRed, AddTo<TZEPActor>(&m_batch));
    m_batch.XForm()->Translate()->SetData(0, 1, 0);
    auto* proxy = AddTo<TZEPProxy>(&m_scene);
    proxy->SetProxy(&m_batch);
    proxy->XForm()->Translate()->SetData(0, 2, 0);
    EXPECT_EQ(At(1, 1), Red);
    EXPECT_EQ(At(1, 3), Red);
    m_batch.SetVisible(false);
    EXPECT_EQ(At(1, 1), Nothing);
    EXPECT_EQ(At(1, 3), Red);
    auto* carving = AddTo<TZEPLogicalObject>(&m_scene);
    carving->SetOperation(loSUB);
    TZEPBatch* solids[] = {AddTo<TZEPBatch>(carving), AddTo<TZEPBatch>(carving)};
    auto* cut = AddTo<TZEPBox>(solids[0]);
    auto* body = AddTo<TZEPBox>(solids[1]);
    body->SetColor(clLime);
    cut->XForm()->Scale()->SetData(2, 2, 9);
    body->XForm()->Scale()->SetData(6, 1.2, 1);
    EXPECT_EQ(At(2, 0), Green);
    EXPECT_EQ(At(0, 0), Nothing);
}

TEST_F(BatchHosts, MayTurnWhatABatchStandsIn) {
    constexpr double Far = 4e6 + 0.3;
    auto* turned = AddTo<TZEPNode>(&m_scene);
    turned->XForm()->Translate()->SetData(Far, 0, 0);
    turned->XForm()->Rotate()->SetData(0, 0, 90);
    m_batch.SetParentComponent(turned);
    TZEPLine* line = AddLine(0, clRed, AddTo<TZEPActor>(&m_batch)); // upright, 7.3 to the right
    line->P1()->SetData(-4, -7.3 - Far, 0);
    line->P2()->SetData(4, -7.3 - Far, 0);
    line->SetWidth(1);
    m_camera.Target()->SetData(2 * Far + 7, 0, 0);
    m_camera.Position()->SetData(2 * Far + 7, -0.005, 5);
    m_panel.resize(10 * Side, Side);
    const QImage frame = m_panel.GrabFrame();
    double seen = 0;
    for (int x = 0; x < frame.width(); ++x)
        if (frame.pixelColor(x, frame.height() / 2).value() > 100) seen = x;
    EXPECT_NEAR(seen / frame.width() * 10 - 5, 0.3, 0.02);
    m_batch.SetParentComponent(&m_scene);
}

TEST_F(BatchHosts, RulesReachBatchesBelow) {
    auto* inner = AddTo<TZEPBatch>(AddTo<TZEPActor>(&m_batch));
    AddLine(2, clWhite, inner)->SetWidth(2);
    auto* box = AddTo<TZEPBox>(inner);
    box->XForm()->Scale()->SetData(3, 3, 3);
    box->Material()->FrontFace()->SetDiffuse(clRed); // under a dark ambient colour
    AddFace(std::array<TGLArrayd3, 4>{{{2, -4, 0}, {4, -4, 0}, {4, -2, 0}, {2, -2, 0}}}, clLime,
            inner);
    EXPECT_EQ(At(1, 2.4), Nothing);
    EXPECT_NE(At(0, 0), Red);
    Show({.Background = clWhite, .Widths = 5, .EvenLight = true});
    EXPECT_EQ(ColorAt(1, 2.4), qRgb(0, 0, 0)); // black on white, over a black background: nothing
    Show({.Widths = 5, .EvenLight = true});
    EXPECT_EQ(At(1, 2.4), qRgb(255, 255, 255));
    EXPECT_EQ(At(0, 0), Red);
    EXPECT_EQ(At(2.7, -3), Green);
    Show({.EvenLight = true, .Wire = true});
    EXPECT_EQ(At(0, 0), Nothing);
    EXPECT_EQ(At(2.7, -3), Nothing); // nor a diagonal
    EXPECT_EQ(At(3, -3), Nothing);
    EXPECT_EQ(At(3, -2), Green);
    Show({.Background = clWhite});
    EXPECT_EQ(At(1, 2), Nothing);
    inner->SetShown(TZEPShown{}); // rules of its own
    EXPECT_EQ(At(1, 2), qRgb(255, 255, 255));
}

} // namespace
} // namespace ZEP
