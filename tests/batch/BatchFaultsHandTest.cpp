#include "tests/batch/BatchFromAbove.h"

#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Box.h>
#include <zep/objects/Circle.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Node.h>
#include <zep/view/Headlight.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace ZEP {
namespace {

/// What a batch draws is what its objects draw elsewhere, whatever stands beside them.
class BatchFaults : public TBatchFromAbove {
protected:
    TZEPObject* Holder(bool batched, TZEPNode& node) {
        return batched ? static_cast<TZEPObject*>(&m_batch) : &node;
    }
    /// A unit is ten pixels times the zoom.
    void LookAt(double x, double y, double zoom = 1) {
        m_camera.SetNearClipPlane(-100);
        m_camera.Target()->SetData(x, y, 0);
        m_camera.Position()->SetData(x, y - 0.005 / zoom, 5 / zoom);
    }
    /// Pixels that are marked.
    int Marked() {
        const QImage frame = m_panel.GrabFrame();
        int count = 0;
        for (int y = 0; y < frame.height(); ++y)
            for (int x = 0; x < frame.width(); ++x) count += Rounded(frame.pixel(x, y)) == Mark;
        return count;
    }
};

TEST_F(BatchFaults, ArcsAreRoundHoweverTheirLayerIsScaledAndNearOneLooks) {
    for (const bool round : {true, false})
        for (const double scale : {1e-3, 1.0, 1e3}) {
            SCOPED_TRACE(testing::Message() << round << ' ' << scale);
            m_batch.SetRoundArcs(round);
            const std::unique_ptr<TZEPNode> layer(AddTo<TZEPNode>(&m_batch));
            layer->XForm()->Scale()->SetData(scale, scale, scale);
            auto* circle = Add<TZEPCircle>(clRed, layer.get());
            circle->SetSegments(round ? 12 : 72);
            circle->XForm()->Scale()->SetData(8 / scale, 8 / scale, 8 / scale);
            for (int i = 0; i < 24; ++i) {
                const double angle = (i + 0.5) * std::numbers::pi / 12;
                EXPECT_GT(qRed(ColorAt(4 * std::cos(angle), 4 * std::sin(angle))), 150) << i;
            }
            for (const double zoom : {100.0, 1e4}) {
                if (!round) break;
                const double angle = 1;
                LookAt(4 * std::cos(angle), 4 * std::sin(angle), zoom);
                EXPECT_GT(qRed(ColorAt(0, 0)), 150) << zoom;
            }
            LookAt(0, 0);
        }
}

TEST_F(BatchFaults, ArcsTurnAsTheyDoElsewhere) {
    for (const double end : {90.0, -20.0, -400.0, -800.0, 720.0}) {
        QImage frames[2];
        for (const bool batched : {false, true}) {
            const std::unique_ptr<TZEPNode> node(AddTo<TZEPNode>(&m_scene));
            auto* arc = Add<TZEPArc>(clRed, Holder(batched, *node));
            arc->XForm()->Scale()->SetData(8, 8, 8);
            arc->SetEndAngle(end);
            frames[batched] = m_panel.GrabFrame();
            delete arc;
        }
        int differ = 0;
        for (int y = 0; y < frames[0].height(); ++y)
            for (int x = 0; x < frames[0].width(); ++x)
                differ += std::abs(qRed(frames[0].pixel(x, y)) - qRed(frames[1].pixel(x, y))) > 150;
        EXPECT_LE(differ, 4) << end;
    }
}

TEST_F(BatchFaults, WhatLiesNowhereOrFarOffDistortsNothing) {
    using TLimits = std::numeric_limits<double>;
    for (const double bad : {TLimits::quiet_NaN(), TLimits::infinity(), 1e8, 1e200})
        for (const bool first : {true, false}) {
            SCOPED_TRACE(testing::Message() << bad << first);
            const std::unique_ptr<TZEPNode> layer(AddTo<TZEPNode>(&m_batch));
            TZEPLine* lines[2] = {AddLine(0, clRed, layer.get()), AddLine(0, clRed, layer.get())};
            TZEPLine* stray = lines[first ? 0 : 1];
            stray->P1()->SetData(bad, 0, 0);
            stray->P2()->SetData(bad + 4, 0, 0);
            EXPECT_EQ(At(1, 0), Red);
            EXPECT_EQ(At(-3, 0), Red);
            EXPECT_EQ(At(-4.5, 0), Nothing);
            if (bad == 1e8) {
                LookAt(bad, 0);
                EXPECT_EQ(At(1, 0), Red);
                EXPECT_EQ(At(-1, 0), Nothing);
                LookAt(0, 0);
            }
            layer->SetSelected(true);
            EXPECT_EQ(At(1, 0), Mark);
        }
}

TEST_F(BatchFaults, WhateverIsSelectedIsMarkedWhereItStands) {
    TZEPMaterialLibrary library;
    library.Materials()->Add();
    m_scene.SetMaterialLibrary(&library);
    m_scene.SetBackgroundColor(clWhite);
    struct TRow {
        const char* Name;
        TZEPObject *Selected, *Moved;
    };
    auto* layer = AddTo<TZEPNode>(&m_batch);
    auto* box = AddTo<TZEPBox>(layer);
    auto* mesh = AddTo<TZEPMesh>(layer);
    for (const TGLArrayd3& corner :
         {TGLArrayd3{-1, 0, 0}, TGLArrayd3{1, 0, 0}, TGLArrayd3{0, 1, 0}})
        mesh->Vertexes()->Add()->SetPoint(corner);
    mesh->Faces()->Add()->SetMaterialIndex(0);
    auto* solid = AddTo<TZEPBox>(&m_batch);
    solid->XForm()->Scale()->SetData(0.5, 0.5, 0.5);
    auto* inner = AddTo<TZEPBatch>(layer);
    auto* group = AddTo<TZEPNode>(&m_batch);
    auto* grouped = AddTo<TZEPBatch>(AddTo<TZEPNode>(group));
    TZEPLine* lines[] = {AddLine(-1, clRed, solid), AddLine(3, clRed, inner),
                         AddLine(-3, clRed, grouped)};
    auto* owner = AddTo<TZEPLine>(layer);
    owner->P2()->SetData(2, 0, 0);
    owner->Material()->FrontFace()->SetDiffuse(clRed);
    for (const TRow& row :
         {TRow{"a solid", box, box}, TRow{"a mesh of the library", mesh, mesh},
          TRow{"a line with a material", owner, owner}, TRow{"below a solid", lines[0], lines[0]},
          TRow{"in an inner batch", lines[1], lines[1]}, TRow{"an inner batch", inner, lines[1]},
          TRow{"a group of batches", group, lines[2]}, TRow{"the batch", &m_batch, lines[1]}})
        for (const bool byHand : {false, true})
            for (const bool bracket : {false, true}) {
                SCOPED_TRACE(testing::Message() << row.Name << byHand << bracket);
                EXPECT_EQ(Marked(), 0);
                m_scene.SetManualUpdate(byHand);
                if (bracket) row.Moved->BeginUpdate();
                row.Selected->SetSelected(true);
                const int marked = Marked();
                EXPECT_GT(marked, 20);
                row.Moved->XForm()->Translate()->SetData(100, 0, 0);
                EXPECT_LT(Marked(), marked - 10) << "it was moved away";
                row.Moved->XForm()->Translate()->SetData(0, 0, 0);
                EXPECT_EQ(Marked(), marked);
                row.Selected->SetSelected(false);
                EXPECT_EQ(Marked(), 0);
                if (bracket) row.Moved->EndUpdate();
                m_scene.SetManualUpdate(false);
            }
    m_scene.SetMaterialLibrary(nullptr);
}

TEST_F(BatchFaults, AFaceWhoseColourWasNeverSetLooksAsElsewhere) {
    m_scene.SetSceneAmbientColor(TColor{0x808080});
    AddTo<TZEPHeadlight>(&m_scene);
    for (const bool set : {false, true}) {
        QRgb seen[2];
        for (const bool batched : {false, true}) {
            const std::unique_ptr<TZEPNode> node(AddTo<TZEPNode>(&m_scene));
            auto* face = AddTo<TZEPPolygon>(Holder(batched, *node));
            if (set) face->SetColor(clRed);
            face->SetColor(clSilver);
            face->SetColorVertexes(false);
            face->SetConcave(false);
            for (const TGLArrayd3& corner :
                 {TGLArrayd3{-3, -3, 0}, TGLArrayd3{3, -3, 0}, TGLArrayd3{0, 3, 0}})
                face->Vertexes()->Add()->SetPoint(corner);
            seen[batched] = ColorAt(0, 0);
            delete face;
        }
        EXPECT_NEAR(qRed(seen[0]), qRed(seen[1]), 2) << set;
    }
}

TEST_F(BatchFaults, ViewsOfTwoBackgroundsMayTakeTurns) {
    auto* layer = AddTo<TZEPNode>(&m_batch);
    auto* hidden = AddTo<TZEPNode>(&m_batch);
    TZEPLine* line = AddLine(2, clWhite, layer);
    AddLine(-2, clWhite, hidden);
    const auto expect = [&](QRgb dark, QRgb light, const char* when) {
        for (int turn = 0; turn < 2; ++turn)
            for (const bool onWhite : {false, true}) {
                m_panel.SetShown(TZEPShown{.Background = onWhite ? clWhite : clBlack});
                m_scene.SetBackgroundColor(clGreen);
                EXPECT_EQ(At(1, 2), onWhite ? light : dark) << when << turn;
                if (hidden->Visible()) {
                    EXPECT_EQ(At(1, -2), onWhite ? Nothing : qRgb(255, 255, 255)) << when << turn;
                }
            }
    };
    hidden->SetVisible(false);
    expect(qRgb(255, 255, 255), Nothing, "white");
    line->SetColor(clRed);
    expect(Red, Red, "red");
    hidden->SetVisible(true);
    expect(Red, Red, "shown");
    Show({}); // has the last word
    EXPECT_EQ(At(1, -2), qRgb(255, 255, 255));
}

} // namespace
} // namespace ZEP
