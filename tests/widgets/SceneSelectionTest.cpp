#include <zep/widgets/SceneSelection.h>

#include <zep/objects/Line.h>
#include <zep/scene/Add.h>
#include <zep/scene/Scene.h>
#include <zep/widgets/SceneModel.h>

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QItemSelectionModel>

#include <optional>

namespace ZEP {
namespace {

using testing::UnorderedElementsAre;

/// A scene of "layer" with "a", "b", "c".
class SceneSelection : public testing::Test {
protected:
    SceneSelection() { m_model.SetRoot(&*m_scene); }
    static void Settle() { QCoreApplication::sendPostedEvents(); }
    void SelectRow(TZEPObject* object, QItemSelectionModel::SelectionFlags how) {
        m_rows.select(m_model.IndexOf(*object), how | QItemSelectionModel::Rows);
    }
    std::vector<TZEPObject*> Rows() {
        Settle();
        std::vector<TZEPObject*> objects;
        for (const QModelIndex& row : m_rows.selectedRows())
            objects.push_back(TZEPSceneModel::ObjectAt(row));
        return objects;
    }

    std::optional<TZEPScene> m_scene{std::in_place};
    TZEPObject* m_layer = Add<TZEPLine>(&*m_scene);
    TZEPObject* m_a = Add<TZEPLine>(m_layer);
    TZEPObject* m_b = Add<TZEPLine>(m_layer);
    TZEPObject* m_c = Add<TZEPLine>(m_layer);
    TZEPSceneModel m_model;
    QItemSelectionModel m_rows{&m_model};
    std::optional<TZEPSceneSelection> m_selection{std::in_place, &m_model, &m_rows};
};

constexpr auto Only = QItemSelectionModel::ClearAndSelect;

TEST_F(SceneSelection, RowsAndObjectsFollowEachOther) {
    SelectRow(m_a, Only);
    SelectRow(m_b, QItemSelectionModel::Select);
    EXPECT_TRUE(m_a->Selected() && m_b->Selected() && !m_layer->Selected());
    SelectRow(m_c, Only);
    EXPECT_TRUE(!m_a->Selected() && !m_b->Selected() && m_c->Selected());
    m_a->SetSelected(true);
    EXPECT_THAT(Rows(), UnorderedElementsAre(m_a, m_c));
    EXPECT_THAT(m_selection->Objects(), UnorderedElementsAre(m_a, m_c));
    m_scene->DeselectAll();
    EXPECT_TRUE(Rows().empty());
    m_model.SetRoots({&*m_scene});
    SelectRow(&*m_scene, Only);
    EXPECT_TRUE(m_scene->Selected());
}

TEST_F(SceneSelection, AVetoOfTheSceneReachesTheRows) {
    QObject::connect(&*m_scene, &TZEPScene::AfterSelect, [this](TZEPObject* object) {
        if (object == m_b) object->SetSelected(false);
    });
    SelectRow(m_a, Only);
    SelectRow(m_b, QItemSelectionModel::Select);
    EXPECT_THAT(Rows(), UnorderedElementsAre(m_a));
}

TEST_F(SceneSelection, SurvivesMovesReplacedTreesAndWhoeverGoesFirst) {
    SelectRow(m_a, Only);
    auto* other = Add<TZEPLine>(&*m_scene);
    m_a->SetParentComponent(other);
    EXPECT_THAT(Rows(), UnorderedElementsAre(m_a));
    EXPECT_TRUE(m_a->Selected()) << "moved is not deselected";
    m_model.SetRoot(m_layer);
    EXPECT_TRUE(Rows().empty());
    SelectRow(m_b, Only);
    EXPECT_TRUE(m_a->Selected()) << "outside of the tree";
    m_model.SetRoot(&*m_scene);
    EXPECT_THAT(Rows(), UnorderedElementsAre(m_a, m_b));
    delete m_a;
    EXPECT_THAT(Rows(), UnorderedElementsAre(m_b));
    m_scene.reset();
    EXPECT_TRUE(Rows().empty() && m_selection->Objects().empty());
}

TEST_F(SceneSelection, EventsMayFreeWhatIsToBeSelected) {
    QObject::connect(&*m_scene, &TZEPScene::AfterSelect,
                     [this](TZEPObject*) { delete std::exchange(m_c, nullptr); });
    const QItemSelection all(m_model.IndexOf(*m_a), m_model.IndexOf(*m_c));
    m_rows.select(all, Only | QItemSelectionModel::Rows);
    EXPECT_THAT(Rows(), UnorderedElementsAre(m_a, m_b));
    QObject::connect(&*m_scene, &TZEPScene::AfterSelect, [this] { m_selection.reset(); });
    m_rows.clearSelection();
    Settle();
}

TEST_F(SceneSelection, WhatOtherSlotsFreeIsForgotten) {
    m_selection.reset();
    QObject context; // hears of it first
    QObject::connect(&*m_scene, &TZEPScene::AfterSelect, &context, [this](TZEPObject* object) {
        if (object == m_a) delete std::exchange(m_a, nullptr);
    });
    m_selection.emplace(&m_model, &m_rows);
    m_a->SetSelected(true);
    EXPECT_TRUE(Rows().empty() && m_selection->Objects().empty());
    QObject::connect(&m_model, &QAbstractItemModel::rowsAboutToBeRemoved, &context,
                     [this] { m_c->SetSelected(true); }); // is about to go with its layer
    delete m_layer;
    EXPECT_TRUE(Rows().empty() && m_selection->Objects().empty());
}

TEST_F(SceneSelection, ARowMayStandForTheLeavesBelow) {
    m_selection->SetRowsMeanLeaves(true);
    SelectRow(m_layer, Only);
    EXPECT_THAT(Rows(), UnorderedElementsAre(m_layer));
    EXPECT_THAT(m_selection->Objects(), UnorderedElementsAre(m_a, m_b, m_c));
    m_b->SetSelected(false);
    EXPECT_THAT(Rows(), UnorderedElementsAre(m_a, m_c));
    m_selection->SetMostObjects(2);
    SelectRow(m_layer, Only);
    EXPECT_THAT(Rows(), UnorderedElementsAre(m_layer));
    EXPECT_TRUE(m_selection->Objects().empty());
}

} // namespace
} // namespace ZEP
