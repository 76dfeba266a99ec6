#include "tests/objects/RandomScene.h"

#include <zep/view/Panel.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

/// A batch under edits as a host may make them. The same seed makes the same edits.
class TEditedBatch {
public:
    /// \param fresh  a new batch takes over before each picture
    TEditedBatch(unsigned seed, bool fresh) : m_dice(seed), m_fresh(fresh) {
        m_scene.SetSceneAmbientColor(TColor{0x808080});
        Add<TZEPHeadlight>(&m_scene);
        auto* camera = Add<TZEPCamera>(&m_scene);
        camera->SetOrthographic(true);
        camera->SetFOVY(90);
        camera->Position()->SetData(0.3, -0.5, 5);
        m_panel.resize(120, 120);
        m_panel.SetCamera(camera);
    }

    /// Short lines across each other: in layers near and far, in groups large and small, and in
    /// none.
    void Crowd() {
        constexpr int Lines = 1200;
        auto* layer = AddTo<TZEPNode>(m_batch);
        auto* far = AddTo<TZEPNode>(m_batch);
        far->XForm()->Translate()->SetData(3e6, 0, 0);
        for (TZEPObject* parent :
             std::initializer_list<TZEPObject*>{layer, AddTo<TZEPNode>(layer), layer,
                                                AddTo<TZEPNode>(layer), layer, layer, m_batch, far})
            for (int i = 0; i < Lines; ++i) {
                MakeLine(*parent, parent == far ? -3e6 : 0);
                if (i % 100 == 0) MakeLine(*AddTo<TZEPNode>(parent), 0);
                if (i % 20 == 0) MakePlaced(*parent);
            }
    }

    QImage Picture() {
        if (m_fresh) Renew();
        return m_panel.GrabFrame();
    }

    void Step() {
        TZEPObject& object = *Any();
        const bool isBatch = &object == m_batch;
        switch (m_dice.Below(14)) {
        case 0:
            return isBatch ? void() : delete &object;
        case 1:
            return isBatch ? void() : object.SetParentComponentExt(Any(), m_dice.OneIn(2));
        case 2:
            return object.SetItemIndex(m_dice.Below(4));
        case 3:
            return object.SetVisible(isBatch || m_dice.OneIn(2));
        case 4:
            return isBatch ? void() : object.SetSelected(m_dice.OneIn(2));
        case 5:
            return object.SetColor(Color());
        case 6:
            return m_dice.Set(object.XForm()->Translate(), 3);
        case 7:
            return object.SetDrawType(m_dice.OneIn(2) ? dtLine : dtFill);
        case 8:
            return object.UpdateLevel() ? object.EndUpdate() : object.BeginUpdate();
        case 9:
            return m_scene.SetManualUpdate(m_dice.OneIn(2));
        case 10:
            return ChangeMany();
        case 11:
            return m_batch->SetFrontier(m_dice.OneIn(4) ? std::nullopt : std::optional(Frontier()));
        default:
            return Make(*Any());
        }
    }

private:
    TColor Color() {
        constexpr TColor Colors[] = {clRed, clLime, clBlue, clWhite, clYellow};
        return Colors[m_dice.Below(5)];
    }
    int Frontier() { return m_dice.Below(m_batch->GetItemsCount() + 2); }
    /// The scene owns it, so that it outlives its batch.
    template <class T>
    T* AddTo(TZEPObject* parent) {
        auto* object = new T(&m_scene);
        object->SetParentComponent(parent);
        return object;
    }
    TZEPObject* Any() {
        std::vector<TZEPObject*> all{m_batch};
        m_batch->ListChildren(all);
        const int few = m_dice.Below(8);
        std::erase_if(all, [&](TZEPObject* object) { // of thousands of lines
            if (object == m_batch || few > 3) return false;
            return few == 0 ? object->GetItemsCount() < 100
                            : qobject_cast<TZEPLine*>(object) != nullptr;
        });
        return all[static_cast<std::size_t>(m_dice.Below(static_cast<int>(all.size())))];
    }

    void MakeLine(TZEPObject& parent, double x) {
        auto* line = AddTo<TZEPLine>(&parent);
        line->SetColor(Color());
        line->SetWidth(m_dice.OneIn(3) ? 3 : 1);
        const TGLArrayd3 place = m_dice.Place(4);
        line->P1()->SetData(x + place[0], place[1], 0);
        line->P2()->SetData(x + place[0] + m_dice.Between(-0.3, 0.3), place[1] + 0.2, 0);
    }

    void MakePlaced(TZEPObject& parent) {
        Make(parent);
        TZEPXForm& place = *parent.GetItem(parent.GetItemsCount() - 1)->XForm();
        m_dice.Set(place.Translate(), 4);
        place.Scale()->SetData(0.4, 0.4, 0.4);
    }

    void Make(TZEPObject& parent) {
        switch (m_dice.Below(8)) {
        case 0: {
            auto* line = AddTo<TZEPLine>(&parent);
            m_dice.Set(line->P1(), 3);
            return line->SetWidth(3);
        }
        case 1:
            return AddTo<TZEPCircle>(&parent)->XForm()->Scale()->SetData(4, 2, 1);
        case 2: {
            auto* chain = AddTo<TZEPPolyline>(&parent);
            chain->SetSmooth(m_dice.OneIn(2));
            for (int i = 0; i < 4; ++i) {
                const double x = m_dice.Between(-3, 3);
                chain->Vertexes()->Add()->SetPoint({x, m_dice.Between(-3, 3), 0});
            }
            return;
        }
        case 3: {
            auto* face = AddTo<TZEPPolygon>(&parent);
            face->SetColorVertexes(false);
            for (const TGLArrayd3& corner : {TGLArrayd3{0, 0, 0}, {2, 0, 0}, {0, 2, 0}})
                face->Vertexes()->Add()->SetPoint(corner);
            return;
        }
        case 4:
            return static_cast<void>(AddTo<TZEPBox>(&parent));
        case 5:
            return AddTo<TZEPLabel>(&parent)->SetCaption(QStringLiteral("Ab"));
        case 6:
            return static_cast<void>(AddTo<TZEPBatch>(&parent));
        default:
            return static_cast<void>(AddTo<TZEPNode>(&parent));
        }
    }

    /// More than is told one by one, of few or of all.
    void ChangeMany() {
        const int each = 1 << m_dice.Below(7);
        std::vector<TZEPObject*> all;
        m_batch->ListChildren(all);
        for (TZEPObject* object : all)
            if (!m_dice.OneIn(each))
                continue;
            else if (each % 2 == 0)
                object->SetSelected(!object->Selected());
            else
                object->SetColor(Color());
    }

    void Renew() {
        TZEPBatch* old = std::exchange(m_batch, AddTo<TZEPBatch>(&m_scene));
        m_batch->XForm()->Translate()->Assign(old->XForm()->Translate());
        m_batch->SetFrontier(old->Frontier());
        while (old->GetItemsCount() > 0) old->GetItem(0)->SetParentComponent(m_batch);
        delete old;
    }

    TDice m_dice;
    bool m_fresh;
    TZEPScene m_scene;
    TZEPPanel m_panel;
    TZEPBatch* m_batch = AddTo<TZEPBatch>(&m_scene);
};

int Differing(const QImage& a, const QImage& b, int shade) {
    int differ = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            differ += std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) > shade;
    return differ;
}

TEST(EditedBatch, LooksAsANewOne) {
    for (unsigned seed = 0; seed < 12; ++seed) {
        const bool crowded = seed >= 8;
        TEditedBatch edited(seed, false);
        TEditedBatch renewed(seed, true);
        for (TEditedBatch* batch : {&edited, &renewed})
            if (crowded) batch->Crowd();
        for (int step = 0; step < (crowded ? 150 : 60); ++step) {
            edited.Step();
            renewed.Step();
            if (step % (crowded ? 5 : 2) != 1) continue; // several changes before a frame
            const int differ = Differing(edited.Picture(), renewed.Picture(), crowded ? 16 : 40);
            ASSERT_LE(differ, crowded ? 2 : 15) << seed << ' ' << step;
        }
    }
}

TEST(Batch, WhatIsToComeIsFaintFromAnyChildOn) {
    constexpr int Side = 70; // 4,900 objects in some blocks, each in its nine pixels
    TZEPScene scene;
    auto* camera = Add<TZEPCamera>(&scene);
    camera->SetOrthographic(true);
    camera->SetFOVY(90);
    camera->Position()->SetData(0, 0, 5);
    camera->Up()->SetData(0, 1, 0);
    TZEPPanel panel;
    panel.resize(3 * Side, 3 * Side);
    panel.SetCamera(camera);
    auto* batch = Add<TZEPBatch>(&scene);
    const auto place = [](int i) { return (i + 0.5) * 10 / Side - 5; };
    for (int i = 0; i < Side * Side; ++i) {
        const TGLArrayd3 at{place(i % Side), -place(i / Side), 0};
        if (i % 3 == 0) {
            auto* point = Add<TZEPPoint>(batch);
            point->SetWidth(2);
            point->P()->SetData(at);
        } else if (i % 3 == 1) {
            auto* line = Add<TZEPLine>(batch);
            line->SetWidth(static_cast<float>(1 + i % 2));
            line->P1()->SetData(at[0] - 0.03, at[1], 0);
            line->P2()->SetData(at[0] + 0.03, at[1], 0);
        } else {
            auto* circle = Add<TZEPCircle>(batch);
            circle->XForm()->Translate()->SetData(at);
            circle->XForm()->Scale()->SetData(0.06, 0.06, 1);
        }
        batch->GetItem(i)->SetColor(clWhite);
    }
    const QImage all = panel.GrabFrame();
    for (const int frontier : {0, 1, 700, 1023, 1024, 2048, 3001, 4898, 4900, 9000}) {
        batch->SetFrontier(frontier);
        const QImage seen = panel.GrabFrame();
        int wrong = 0;
        for (int i = 0; i < Side * Side; ++i) {
            int bright = 0, whole = 0;
            for (int k = 0; k < 9; ++k) {
                const QPoint pixel(3 * (i % Side) + k % 3, 3 * (i / Side) + k / 3);
                bright += qGray(seen.pixel(pixel));
                whole += qGray(all.pixel(pixel));
            }
            wrong += (bright == whole) != (i < frontier) || bright == 0;
        }
        EXPECT_EQ(wrong, 0) << "from " << frontier << " on";
    }
}

} // namespace
} // namespace ZEP
