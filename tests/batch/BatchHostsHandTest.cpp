#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/batch/GatheredClass.h>

#include <gtest/gtest.h>

#include <set>

namespace ZEP {
namespace {

/// Draws two above where it stands.
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

constexpr QRgb Nothing = qRgb(0, 0, 0);
constexpr QRgb RedLine = qRgb(255, 0, 0);

/// What hosts do to a batch, in its events and anywhere. It is seen from above: a unit is ten
/// pixels, the origin in the middle.
class BatchHosts : public testing::Test {
protected:
    BatchHosts() {
        m_scene.SetSceneAmbientColor(clWhite);
        auto* camera = Add<TZEPCamera>(&m_scene);
        camera->SetOrthographic(true);
        camera->SetFOVY(90);
        camera->Position()->SetData(0, -0.005, 5);
        m_panel.resize(100, 100);
        m_panel.SetCamera(camera);
    }

    void Draw() { ASSERT_FALSE(m_panel.GrabFrame().isNull()); }
    /// A red one five pixels wide.
    template <class T = TZEPLine>
    T* AddLine(double y, TZEPObject* parent) {
        auto* line = Add<T>(parent);
        line->SetColor(clRed);
        line->SetWidth(5);
        line->P1()->SetData(-4, y, 0);
        line->P2()->SetData(4, y, 0);
        return line;
    }
    QRgb At(double x, double y) {
        const QImage frame = m_panel.GrabFrame();
        const double ratio = frame.width() / 10.0;
        return frame.pixel(static_cast<int>((5 + x) * ratio), static_cast<int>((5 - y) * ratio));
    }

    TZEPScene m_scene;
    TZEPBatch& m_batch = *Add<TZEPBatch>(&m_scene);
    TZEPPanel m_panel;
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
            auto* batch = Add<TZEPBatch>(&m_scene);
            const QPointer<TZEPBatch> alive(batch);
            batch->SetEvenLight(even);
            batch->SetShown(TZEPShown{.Widths = 2, .Shading = TZEPShading::Smooth});
            auto* caller = Add<TZEPUser>(Add<TZEPActor>(batch));
            auto* second = Add<TZEPActor>(batch);
            auto* text = Add<TZEPLabel>(second);
            text->SetCaption(QStringLiteral("I"));
            TTree tree{
                &m_scene, batch, Add<TZEPActor>(batch), second, Add<TZEPBox>(caller->Parent()),
                text};
            Add<TZEPBox>(tree.First);
            Add<TZEPMesh>(tree.Second)->SetSelected(true);
            Add<TZEPLine>(tree.Second)->SetSelected(true);
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
        auto* parent = Add<TZEPActor>(&m_batch);
        TZEPLine* line = AddLine(2, parent);
        EXPECT_EQ(At(1, 2), RedLine);
        QObject context;
        QObject::connect(&m_scene, &TZEPScene::BeforeSelect, &context,
                         [&] { delete (layer ? static_cast<TZEPObject*>(parent) : line); });
        line->SetSelected(true);
        EXPECT_EQ(At(1, 2), Nothing) << layer;
    }
}

TEST_F(BatchHosts, MayDrawWhileSomethingGoes) {
    Add<TZEPBox>(Add<TZEPActor>(&m_batch));
    auto* layer = Add<TZEPActor>(&m_batch);
    Add<TZEPBox>(layer);
    AddLine(2, layer)->SetSelected(true);
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

TEST_F(BatchHosts, ClassesOfTheirOwnDrawThemselvesUntilTheySayOtherwise) {
    auto* raised = AddLine<TRaisedLine>(0, &m_batch);
    auto* named = AddLine<TNamedLine>(-2, &m_batch);
    EXPECT_EQ(At(1, 2), RedLine);
    EXPECT_EQ(At(1, -2), RedLine);
    EXPECT_EQ(At(1, 0), Nothing);
    EXPECT_EQ(TZEPGatheredClass::Of(*raised), TZEPGathered::No);
    {
        const TZEPGatheredClass now{typeid(*raised), TZEPGathered::Shape};
        EXPECT_EQ(TZEPGatheredClass::Of(*raised), TZEPGathered::Shape) << "though asked before";
    }
    EXPECT_EQ(TZEPGatheredClass::Of(*raised), TZEPGathered::No);
    EXPECT_EQ(TZEPGatheredClass::Of(*named), TZEPGathered::Shape);
}

TEST_F(BatchHosts, AreNotAskedForPassesInWhichTheyTakeNoPart) {
    m_scene.SetFShadows(true);
    m_scene.SetFirstPasses(true);
    auto* light = Add<TZEPLight>(&m_scene);
    light->SetCastShadows(true);
    light->Position()->SetData(-100, 0, 100);
    auto* layer = Add<TZEPActor>(&m_batch);
    auto* box = Add<TNotingBox>(layer);
    auto* other = Add<TNotingBox>(layer);
    const auto drawn = [&] {
        box->Drawn.clear();
        Draw();
    };
    const std::set<TZEPDrawState> shown{dsAllObjects};
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

TEST_F(BatchHosts, SeeTheFormInAPartOfLargeLayers) {
    auto* layer = Add<TZEPActor>(&m_batch);
    for (int i = 0; i < 20'000; ++i) {
        const double x = -4 + i * 4e-4;
        auto* face = Add<TZEPPolygon>(layer);
        face->SetColor(clRed);
        face->SetColorVertexes(false);
        for (const TGLArrayd3& corner : {TGLArrayd3{x, 2, 0}, {x + 0.1, 2, 0}, {x, 3, 0}})
            face->Vertexes()->Add()->SetPoint(corner);
        AddLine(-2 - i * 1e-4, layer);
    }
    EXPECT_NE(At(0, 2.3), Nothing);
    EXPECT_TRUE(m_batch.IsLarge());
    for (const double share : {0.9, 0.5, 0.1}) {
        m_batch.SetShown(TZEPShown{.Share = share});
        EXPECT_EQ(At(0, 2.3), RedLine) << share;
        EXPECT_EQ(At(0, -3), RedLine) << share;
    }
    layer->SetVisible(false);
    EXPECT_FALSE(m_batch.IsLarge());
}

TEST_F(BatchHosts, MayDoMuchToLargeGroups) {
    auto* group = Add<TZEPNode>(Add<TZEPNode>(&m_batch));
    std::vector<TZEPLine*> lines;
    for (int i = 0; i < 4000; ++i) lines.push_back(AddLine(i == 0 ? 3 : 2, group));
    const auto forEach = [&](const auto& change) { // so many that none is told by itself
        for (const std::size_t odd : {0, 1})
            for (std::size_t i = odd; i < lines.size(); i += 2) change(*lines[i]);
    };
    const auto expect = [&](const char* when, double y, QRgb first, QRgb others) {
        EXPECT_EQ(At(1, y + 1), first) << when;
        EXPECT_EQ(At(1, y), others) << when;
    };
    expect("new", 2, RedLine, RedLine);
    group->SetVisible(false);
    expect("hidden", 2, Nothing, Nothing);
    group->SetVisible(true);
    expect("shown", 2, RedLine, RedLine);
    group->XForm()->Translate()->SetData(0, -4, 0);
    expect("moved away", 2, Nothing, Nothing);
    expect("moved", -2, RedLine, RedLine);
    forEach([](TZEPLine& line) { line.SetColor(clBlue); });
    expect("recoloured", -2, qRgb(0, 0, 255), qRgb(0, 0, 255));
    forEach([](TZEPLine& line) { line.SetSelected(true); });
    expect("selected", -2, qRgb(255, 230, 0), qRgb(255, 230, 0));
    forEach([](TZEPLine& line) { line.SetSelected(false); });
    for (; lines.size() > 1; lines.pop_back()) delete lines.back();
    expect("freed", -2, qRgb(0, 0, 255), Nothing);
}

} // namespace
} // namespace ZEP
