#include "tests/widgets/SceneModelFixture.h"
#include <zep/scene/ForEach.h>

#include <QAbstractItemModelTester>
#include <QPointer>
#include <QSortFilterProxyModel>
#include <QTreeView>

#include <functional>
#include <random>

namespace ZEP {
namespace {

using TTester = QAbstractItemModelTester;
using SceneModelView = SceneModelTest;

/// Edits as a host or a user might make them, one after the other.
class RandomEdits {
public:
    RandomEdits(TZEPScene& scene, TZEPSceneModel& model) : m_scene(scene), m_model(model) {}

    void Step() {
        TZEPObject& object = *Any();
        TZEPObject& other = *Any();
        const bool isScene = &object == &m_scene;
        const auto die = m_random() % 13;
        if (die == 1 && !isScene) return object.SetParentComponentExt(&other, m_random() % 2);
        if (die == 2 && !isScene) return delete &object;
        if (die == 3) return object.SetItemIndex(static_cast<int>(m_random() % 9));
        if (die == 4) return object.SetVisible(!object.Visible());
        if (die == 5 && !isScene) return m_model.SetShown({&object}, m_random() % 2);
        if (die == 6 && object.GetItemsCount() < 9) return object.Clear();
        if (die == 7) return m_scene.UpdateLevel() ? m_scene.EndUpdate() : m_scene.BeginUpdate();
        if (die == 0 || die > 7) Add(object, QString::number(++m_names), die != 0);
    }

private:
    TZEPObject* Any() {
        std::vector<TZEPObject*> all{&m_scene};
        ForEachObject(m_scene, [&](TZEPObject& object) { all.push_back(&object); });
        return all[m_random() % all.size()];
    }

    TZEPScene& m_scene;
    TZEPSceneModel& m_model;
    std::mt19937 m_random{7};
    int m_names = 0;
};

/// Calls the slot at one of the signals that frame a change.
template <class Slot>
void ConnectAt(int signal, TZEPSceneModel& model, Slot slot) {
    using Model = QAbstractItemModel;
    if (signal == 0) QObject::connect(&model, &Model::rowsAboutToBeInserted, slot);
    if (signal == 1) QObject::connect(&model, &Model::rowsInserted, slot);
    if (signal == 2) QObject::connect(&model, &Model::dataChanged, slot);
    if (signal == 3) QObject::connect(&model, &Model::rowsAboutToBeMoved, slot);
    if (signal == 4) QObject::connect(&model, &Model::rowsMoved, slot);
    if (signal == 5) QObject::connect(&model, &Model::rowsAboutToBeRemoved, slot);
    if (signal == 6) QObject::connect(&model, &Model::modelAboutToBeReset, slot);
    if (signal == 7) QObject::connect(&model, &Model::rowsRemoved, slot);
}

TEST_F(SceneModelView, FollowsWhateverIsDoneToTheTree) {
    const TTester tester(&m_model, TTester::FailureReportingMode::Fatal);
    TZEPSceneModel second;
    second.SetRoot(&*m_scene);
    QSortFilterProxyModel proxy;
    proxy.setSourceModel(&m_model);
    QTreeView view;
    view.setModel(&m_model);
    RandomEdits edits(*m_scene, m_model);
    for (int step = 0; step < 1500; ++step) {
        edits.Step();
        if (step % 3 == 0) continue; // several edits in one turn of the event loop
        Settle();
        if (m_scene->UpdateLevel() == 0) {
            ASSERT_NO_FATAL_FAILURE(ExpectRows(m_model, {}, *m_scene)) << step;
            ASSERT_NO_FATAL_FAILURE(ExpectRows(proxy, {}, *m_scene)) << step;
            ASSERT_NO_FATAL_FAILURE(ExpectRows(second, {}, *m_scene)) << step;
        }
        view.expandAll();
    }
    m_scene.reset();
    EXPECT_EQ(m_model.rowCount() + proxy.rowCount() + second.rowCount(), 0);
    EXPECT_EQ(m_model.Scene(), nullptr);
    Settle();
}

TEST_F(SceneModelView, SlotsMayDoAsTheyLikeWithTheTree) {
    struct THost {
        TZEPScene& Scene;
        TZEPObject*& Object; // what the signal is about
        QPointer<TZEPObject> Parent;
    };
    using TDeed = std::function<void(THost&)>;
    const std::pair<const char*, TDeed> deeds[] = {
        {"free it", [](THost& host) { delete std::exchange(host.Object, nullptr); }},
        {"free its parent",
         [](THost& host) {
             delete host.Parent;
             host.Object = nullptr;
         }},
        {"add to it", [](THost& host) { Add(*host.Object); }},
        {"add before it", [](THost& host) { Add(*host.Parent, {}, false); }},
        {"put it elsewhere", [](THost& host) { host.Object->SetParentComponent(&host.Scene); }},
        {"clear the scene",
         [](THost& host) {
             host.Scene.Clear();
             host.Object = nullptr;
         }},
    };
    for (const auto& [name, deed] : deeds) {
        for (int signal = 0; signal < 7; ++signal) {
            TZEPScene scene;
            TZEPSceneModel model;
            model.SetRoot(&scene);
            QTreeView view;
            view.setModel(&model);
            auto* parent = Add(scene);
            auto* object = Add(*parent);
            Add(*parent);
            model.Sync();
            view.expandAll();
            THost host{scene, object, parent};
            bool done = false;
            const auto act = [&, deed = deed] {
                if (!std::exchange(done, true)) deed(host);
            };
            ConnectAt(signal, model, act);
            Add(*parent);
            object->SetVisible(false);
            Settle();
            if (object) object->SetItemIndex(1);
            if (signal == 5 && object) object->SetParentComponent(nullptr);
            if (signal == 6) model.SetRoot(&scene);
            EXPECT_TRUE(done) << name << signal;
            Settle();
            ASSERT_NO_FATAL_FAILURE(ExpectRows(model, {}, scene)) << name << signal;
            view.grab();
        }
    }
}

TEST_F(SceneModelView, WhatSlotsAppendWaitsForTheEndOfTheChange) {
    for (const int signal : {0, 1, 2, 3, 4, 5, 7}) {
        SCOPED_TRACE(signal);
        TZEPScene scene;
        TZEPSceneModel model;
        model.SetRoot(&scene);
        TZEPObject* parent = Add(scene);
        for (const char* ident : {"a", "b", "c", "d"}) Add(*parent, QLatin1String(ident));
        model.Sync();
        const TTester tester(&model, TTester::FailureReportingMode::Fatal);
        QTreeView view;
        view.setModel(&model);
        view.expandAll();
        int edits = 0;
        const auto act = [&] {
            if (++edits > 3) return;
            Add(*parent);
            Add(*parent->GetItem(1)); // which may be the one that goes
            Add(scene);
        };
        ConnectAt(signal, model, act);
        Add(*parent, QStringLiteral("first"), false);
        delete parent->GetItem(1);
        parent->GetItem(2)->SetItemIndex(0);
        delete parent->GetItem(1);
        for (int turn = 0; turn < 5; ++turn) Settle();
        EXPECT_GT(edits, 0);
        ASSERT_NO_FATAL_FAILURE(ExpectRows(model, {}, scene));
    }
}

TEST_F(SceneModelView, ASlotMayTakeAwayTheModelOrTheScene) {
    for (const bool takesScene : {true, false}) {
        auto* scene = new TZEPScene;
        auto* model = new TZEPSceneModel;
        model->SetRoot(scene);
        QObject::connect(model, &QAbstractItemModel::rowsInserted, [&] {
            if (takesScene)
                delete scene;
            else
                delete model;
        });
        Add(*scene);
        Settle();
        if (takesScene) {
            EXPECT_EQ(model->rowCount(), 0);
            delete model;
        } else {
            delete scene;
        }
    }
}

} // namespace
} // namespace ZEP
