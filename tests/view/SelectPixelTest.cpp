#include "tests/Cases.h"
#include "tests/Words.h"
#include "tests/objects/RepaintCounter.h"
#include "tests/view/FakeBinding.h"
#include "tests/view/SelectFixture.h"
#include <zep/batch/Batch.h>
#include <zep/framework/DebugLog.h>
#include <zep/framework/Registry.h>
#include <zep/objects/Polygon.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/Add.h>

#include <gmock/gmock.h>

#include <map>
#include <random>

namespace ZEP {
namespace {

using testing::ElementsAre;

/// Tiles under the commands of `tests/data/cases/view/select.txt`.
class SelectCases : public SelectTest {
protected:
    std::string Do(const std::string& line) {
        const TWords words(line);
        const std::string verb = words.Verb();
        if (verb == "tile") return Put(words), "";
        if (verb == "selection-off") return Scene.SetSelectionEnabled(false), "";
        if (verb == "manual-depth") return Scene.SetManualDepthCheck(true), "";
        if (verb == "pick") return NameOf(PickAt(words.Number(1), words.Number(2), words.Int(3)));
        if (verb == "click" || verb == "region" || verb == "count") return Select(words);
        return Change(*m_tiles.at(words.At(2)), verb, words), "";
    }
    [[nodiscard]] QStringList& Events() { return m_events; }

private:
    void Put(const TWords& words) {
        Tile* tile = AddTile(words.Number(2), words.Number(3), words.Number(4));
        tile->SetIdent(QString::fromStdString(words.At(1)));
        if (words.Has("wide")) tile->XForm()->Scale()->SetX(4);
        m_tiles[words.At(1)] = tile;
    }
    static void Change(Tile& tile, const std::string& verb, const TWords& words) {
        const QString value = QString::fromStdString(words.At(1));
        const bool on = value != QLatin1String("off");
        if (verb == "selected") tile.SetSelected(on);
        if (verb == "visible") tile.SetVisible(on);
        if (verb == "selectable") tile.SetSelectable(on);
        if (verb == "pickable") tile.SetPickable(on);
        if (verb == "level") tile.SetPickLevel(words.Int(1));
        if (verb == "priority") tile.SetSelectPriority(words.Int(1));
        if (verb == "name") tile.SetName(value == QLatin1String("none") ? QString() : value);
    }
    std::string Select(const TWords& words) {
        const bool isClick = words.Verb() == "click";
        m_events.clear();
        const int hits =
            Scene.Select(words.Has("no-camera") ? nullptr : &Camera, 200, 100,
                         100 + static_cast<int>(10 * words.Number(1)),
                         50 + static_cast<int>(10 * words.Number(2)), isClick ? 4 : words.Int(3),
                         isClick ? 4 : words.Int(4), words.Verb() != "count", words.Has("toggle"),
                         !words.Has("keep"));
        std::string text = std::to_string(hits) + " hit, selected:";
        for (const TZEPObject* object : Selected()) text += " " + NameOf(object);
        return text + (m_events.isEmpty() ? "" : "; " + m_events.join(", ").toStdString());
    }
    static std::string NameOf(const TZEPObject* object) {
        return object ? object->Ident().toStdString() : "nothing";
    }

    std::map<std::string, Tile*> m_tiles;
    QStringList m_events;
};

TEST_F(SelectCases, FindWhatIsWrittenDown) {
    const auto note = [this](const char* when) {
        return [this, when](TZEPObject* object) {
            Events() << QLatin1String(when) + object->Ident() +
                            QLatin1String(object->Selected() ? " on" : " off");
        };
    };
    QObject::connect(&Scene, &TZEPScene::BeforeSelect, note("before "));
    QObject::connect(&Scene, &TZEPScene::AfterSelect, note("after "));
    ExpectCases("view/select.txt", [this](const TCase& c) {
        Scene.SetSelectionEnabled(true);
        Scene.SetManualDepthCheck(false);
        for (int i = Scene.GetItemsCount(); i-- > 0;)
            if (Scene.GetItem(i) != &Camera) delete Scene.GetItem(i);
        return EachLine(c, [this](const std::string& line) { return Do(line); });
    });
}

// What the tessellator makes of it are several kinds of primitives, of which Mesa draws no list
// here.
TEST_F(SelectTest, ADentedPolygonIsPickedAfterItWasDrawnFromItsList) {
    auto* polygon = Add<TZEPPolygon>(&Scene);
    for (const auto& [x, y] :
         {std::pair(-3, -3), {3, -3}, {3, 3}, {1, 3}, {1, -1}, {-1, -1}, {-1, 3}, {-3, 3}})
        polygon->Vertexes()->Add()->SetPoint({1. * x, 1. * y, 0});
    Scene.Render(&Camera, 200, 100, false);
    for (const auto& [x, y, hit] :
         {std::tuple{-2, 2, true}, {0, 2, false}, {2, 2, true}, {0, -2, true}, {4, 0, false}})
        EXPECT_EQ(PickAt(x, y) != nullptr, hit) << x << ", " << y;
}

TEST_F(SelectTest, MeasuresFromTheEyeToTheNearestCorner) {
    Tile* tile = AddTile(3, 4, 10, QStringLiteral("Far"));
    tile->XForm()->Scale()->SetData(0, 0, 0);
    LogKeeper log;
    EXPECT_DOUBLE_EQ(Scene.GetObjectDistance(&Camera, tile), 5);
    Camera.Move(3, 0, 0, 0, 0, 0);
    EXPECT_DOUBLE_EQ(Scene.GetObjectDistance(&Camera, tile), 4);
    EXPECT_EQ(log.Lines[0], "Camera: 0.000000 0.000000 10.000000");
    EXPECT_EQ(log.Lines[1], "Dist: 5.000000 Picked: Far Pos: (3.000000 4.000000 10.000000) -- "
                            "(3.000000 4.000000 10.000000)");
}

TEST_F(SelectTest, RepaintsUnlessUpdatedByHand) {
    const TRepaintCounter panel(Scene);
    EXPECT_EQ(Click(0, 0), 0);
    EXPECT_EQ(panel.Count, 1);
    static_cast<void>(PickAt(0, 0));
    EXPECT_EQ(panel.Count, 1);
    Scene.SetManualUpdate(true);
    Click(0, 0);
    EXPECT_EQ(panel.Count, 1);
}

TEST_F(SelectTest, HandlersMayTakeHitsOutOfTheTree) {
    auto* group = Add<TZEPObject>(&Scene);
    Tile* first = AddTile(0, 0, 0);
    for (int i = 0; i < 3; ++i) AddTile(0, 0, -1 - i)->SetParentComponent(group);
    group->SetParentComponent(&Scene); // after the first
    QObject::connect(&Scene, &TZEPScene::AfterSelect,
                     [&] { delete std::exchange(group, nullptr); });
    EXPECT_EQ(Region(0, 0, 9, 9), 4);
    EXPECT_THAT(Selected(), ElementsAre(first));
    EXPECT_EQ(Region(0, 0, 9, 9), 1);
}

TEST_F(SelectTest, TakesMoreHitsThanTheBufferHeld) {
    for (int i = 0; i < 1500; ++i) AddTile(0, 0, 0.001 * i);
    EXPECT_EQ(Region(0, 0, 9, 9), 1500);
    EXPECT_EQ(Selected().size(), 1500U);
    EXPECT_EQ(Click(0, 0), 1500);
    EXPECT_EQ(Selected().size(), 1U);
}

TEST_F(SelectTest, DrawsOnlyWhatIsNear) {
    std::vector<Tile*> tiles;
    for (int i = 0; i < 40'000; ++i) tiles.push_back(AddTile(i % 200 * 2, i / 200 * 2, 0));
    EXPECT_EQ(Click(0, 0), 1);
    EXPECT_EQ(std::count_if(tiles.begin(), tiles.end(), [](Tile* t) { return t->Draws > 0; }), 1);
    tiles[39'999]->Inside = false; // nobody knows where it draws
    tiles[39'999]->Invalidate(tiles[39'999]);
    Click(0, 0);
    EXPECT_EQ(tiles[39'999]->Draws, 1);
}

/// Notes which object has which name.
class NamingScene : public TZEPScene {
public:
    GLuint SelectName(TZEPObject* object) override {
        const GLuint name = TZEPScene::SelectName(object);
        Names.resize(name + 1);
        return Names[name] = object, name;
    }
    std::vector<TZEPObject*> Names;
};

/// A tree that changes at random, and a view of it.
class RandomTree {
public:
    explicit RandomTree(unsigned seed, int objects = 600) : m_random(seed) {
        m_camera.SetParentComponent(&Scene);
        m_camera.SetFarClipPlane(50);
        for (int i = 0; i < objects; ++i) Add();
        MoveCamera();
    }

    void Change() {
        TZEPObject* object = Any();
        const int die = Int(0, 11);
        if (die == 0) return delete object;
        if (die == 1) return static_cast<void>(Add());
        if (die == 2) return object->SetParentComponentExt(Any(), Int(0, 1) == 0);
        if (die == 3) return object->SetItemIndex(Int(0, 100));
        if (die == 4) return object->SetVisible(!object->Visible());
        if (die == 5) return Scene.SetManualUpdate(!Scene.ManualUpdate());
        if (die == 6) return Int(0, 1) ? Any()->BeginUpdate() : Any()->EndUpdate();
        if (die == 7) return MoveCamera();
        if (die == 8) return Place(object);
        if (die == 9) return object->SetSelected(true);
        Reshape(object);
    }
    std::vector<TZEPObject*> Select(int x, int y, int width, int height) {
        Scene.DeselectAll();
        Scene.Select(&m_camera, 200, 100, x, y, width, height, true, false, true);
        return Sorted([](TZEPObject* object) { return object->Selected(); });
    }
    std::vector<TZEPObject*> DrawAll(int x, int y, int width, int height) {
        std::vector<GLuint> buffer(100'000);
        glMatrixMode(GL_MODELVIEW);
        m_camera.Pick(200, 100, x, y, width, height);
        glSelectBuffer(static_cast<GLsizei>(buffer.size()), buffer.data());
        glRenderMode(GL_SELECT);
        glInitNames();
        Scene.Draw(Scene, dsAllObjects, dkSelect);
        std::set<TZEPObject*> hit;
        const int hits = glRenderMode(GL_RENDER);
        for (std::size_t i = 0; i < static_cast<std::size_t>(hits); ++i)
            hit.insert(Scene.Names[buffer[4 * i + 3]]);
        return Sorted([&](TZEPObject* object) { return hit.count(object) > 0; });
    }
    void Place(TZEPObject* object) {
        object->XForm()->Translate()->SetData(Real(), Real(), Real());
        object->XForm()->Rotate()->SetData(Real() * 60, Real() * 60, 0);
        object->XForm()->Scale()->SetData(0.2 + Int(0, 2), 0.3, 1);
    }
    void MoveCamera() {
        m_camera.SetOrthographic(Int(0, 2) == 0);
        m_camera.Position()->SetData(3 * Real(), 3 * Real(), 3 * Real());
    }
    int Int(int from, int to) { return std::uniform_int_distribution(from, to)(m_random); }

    NamingScene Scene;

private:
    double Real() { return std::uniform_real_distribution(-3.0, 3.0)(m_random); }
    template <class Test>
    std::vector<TZEPObject*> Sorted(Test test) {
        std::vector<TZEPObject*> all;
        Scene.ListChildren(all);
        std::erase_if(all, [&](TZEPObject* object) { return !test(object); });
        return all;
    }
    TZEPObject* Any() {
        std::vector<TZEPObject*> all;
        Scene.ListChildren(all);
        std::erase(all, &m_camera);
        return all.empty() ? Add() : all[static_cast<std::size_t>(Int(0, int(all.size()) - 1))];
    }
    TZEPObject* Add() {
        const int die = Int(0, 5);
        TZEPObject* object = die == 0   ? new TZEPObject(&Scene)
                             : die == 5 ? new TZEPBatch(&Scene)
                             : die == 1 ? new Tile(&Scene)
                             : die == 2 ? static_cast<TZEPObject*>(new TZEPPolyline(&Scene))
                                        : new TZEPLine(&Scene);
        if (die == 1) static_cast<Tile*>(object)->Inside = Int(0, 1) == 0;
        Reshape(object);
        TZEPObject* parent = Int(0, 2) == 0 && Scene.GetItemsCount() > 1 ? Any() : &Scene;
        object->SetParentComponentExt(parent, Int(0, 9) != 0);
        return object;
    }
    void Reshape(TZEPObject* object) {
        if (auto* line = qobject_cast<TZEPLine*>(object)) {
            line->P1()->SetData(Real(), Real(), Real());
            line->P2()->SetData(Real(), Real(), Real());
        } else if (auto* chain = qobject_cast<TZEPPolyline*>(object)) {
            chain->SetSmooth(Int(0, 1) == 0);
            chain->Vertexes()->Add()->SetPoint({Real(), Real(), Real()});
        } else {
            Place(object);
        }
    }
    std::mt19937 m_random;
    TZEPCamera m_camera{&Scene};
};

TEST_F(SelectTest, FindsWhatDrawingAllFindsWhateverChanges) {
    std::size_t hits = 0;
    for (unsigned seed = 1; seed <= 4; ++seed) {
        RandomTree tree(seed);
        for (int turn = 0; turn < 400; ++turn) {
            for (int i = tree.Int(0, 3); i > 0; --i) tree.Change();
            const int x = tree.Int(-10, 210), y = tree.Int(-10, 110);
            const int width = tree.Int(5, 60), height = tree.Int(1, 30);
            const auto found = tree.Select(x, y, width, height);
            ASSERT_EQ(found, tree.DrawAll(x, y, width, height)) << seed << ", turn " << turn;
            hits += found.size();
        }
    }
    EXPECT_GT(hits, 10'000U) << "the view shows too little";
}

/// A class that says that it stays within its size must do so.
TEST_F(SelectTest, FindsObjectsOfEveryClassAsDrawingAllDoes) {
    int found = 0;
    for (const QString& name : TClassRegistry::Instance().ClassNames()) {
        RandomTree tree(11, 0);
        for (int i = 0; i < 12; ++i) {
            auto* object =
                qobject_cast<TZEPObject*>(TClassRegistry::Instance().Find(name)->Make(&tree.Scene));
            if (!object || qobject_cast<TZEPScene*>(object)) break;
            tree.Place(object);
            object->SetParentComponent(&tree.Scene);
        }
        for (int turn = 0; turn < 30; ++turn) {
            tree.MoveCamera();
            const int x = tree.Int(0, 200), y = tree.Int(0, 100), size = tree.Int(5, 20);
            const auto hits = tree.Select(x, y, size, size);
            ASSERT_EQ(hits, tree.DrawAll(x, y, size, size)) << name.toStdString() << ' ' << turn;
            found += hits.empty() ? 0 : 1;
        }
    }
    EXPECT_GT(found, 50) << "the view shows too little";
}

} // namespace
} // namespace ZEP
