#include "tests/widgets/SceneModelFixture.h"
#include <zep/framework/Exception.h>
#include <zep/view/Camera.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <functional>
#include <set>

namespace ZEP {
namespace {

using TTester = QAbstractItemModelTester;
using SceneModel = SceneModelTest;

TEST_F(SceneModel, ManyObjectsComeAsOneChange) {
    auto* layer = Add(*m_scene);
    Settle();
    const QSignalSpy inserted(&m_model, &QAbstractItemModel::rowsInserted);
    m_scene->BeginUpdate();
    for (int i = 0; i < 1000; ++i) Add(*layer, QString::number(i));
    for (int i = 0; i < 1000; ++i) Add(*layer->GetItem(i));
    m_scene->EndUpdate();
    EXPECT_EQ(m_model.IndexOf(*layer->GetItem(999)->GetItem(0)).parent().row(), 999);
    ASSERT_EQ(inserted.count(), 1);
    EXPECT_EQ(inserted[0][2].toInt(), 999);
}

TEST_F(SceneModel, ManyObjectsGoAsOneChange) {
    auto* layer = Add(*m_scene);
    for (int i = 0; i < 1000; ++i) Add(*layer);
    ExpectInStep();
    const QSignalSpy removed(&m_model, &QAbstractItemModel::rowsRemoved);
    layer->Clear();
    EXPECT_LE(removed.count(), 100);
    ExpectInStep();
    delete Add(*m_scene);
    ExpectInStep();
}

TEST_F(SceneModel, WhatAnotherListenerHasTakenOutAgainIsNoRow) {
    TZEPObject elsewhere;
    m_model.SetRoot(nullptr);
    const TZEPObjectNotify first{
        [](void* to, TZEPObject* sender, TZEPObjectAction action, const void*) {
            if (action == saInsert) sender->SetParentComponent(static_cast<TZEPObject*>(to));
        },
        &elsewhere};
    m_scene->RegisterNotify(first); // before the model does
    m_model.SetRoot(&*m_scene);
    Add(*m_scene);
    ExpectInStep();
    EXPECT_EQ(m_model.rowCount(), 0);
    m_scene->UnregisterNotify(first);
}

TEST_F(SceneModel, RootsAreRowsAndComeBack) {
    auto* a = Add(*m_scene, QStringLiteral("a"));
    auto* b = Add(*m_scene, QStringLiteral("b"));
    auto* below = Add(*a);
    auto* camera = new TZEPCamera(a);
    camera->SetParentComponent(a);
    m_model.SetRoots({b, a, below, b});
    const TTester tester(&m_model, TTester::FailureReportingMode::Fatal);
    EXPECT_EQ(m_model.rowCount(), 2);
    EXPECT_EQ(m_model.IndexOf(*a).row(), 1);
    EXPECT_EQ(m_model.IndexOf(*below).parent().row(), 1);
    EXPECT_FALSE(m_model.flags(m_model.IndexOf(*camera)) & Qt::ItemIsUserCheckable);
    a->SetParentComponent(nullptr);
    Settle();
    EXPECT_EQ(m_model.rowCount(), 1);
    a->SetParentComponent(b);
    Settle();
    EXPECT_EQ(m_model.IndexOf(*a).parent(), m_model.IndexOf(*b)) << "no row of its own";
    delete b;
    Settle();
    EXPECT_EQ(m_model.rowCount(), 0);
    m_model.SetRoot(&*m_scene);
    TZEPObject outside;
    TZEPScene other;
    EXPECT_THROW(m_model.SetRoot(&outside), Exception);
    EXPECT_THROW(m_model.SetRoots({&*m_scene, &other}), Exception);
    ExpectInStep();
}

TEST_F(SceneModel, TellsOfNamesColoursAndBoxesThatChange) {
    auto* layer = Add(*m_scene, QStringLiteral("layer"));
    auto* object = Add(*layer);
    Settle();
    const auto text = [&] { return m_model.IndexOf(*object).data().toString(); };
    EXPECT_EQ(text(), QStringLiteral("Line"));
    std::set<void*> told;
    QObject::connect(&m_model, &QAbstractItemModel::dataChanged,
                     [&](const QModelIndex& first) { told.insert(first.internalPointer()); });
    const std::pair<const char*, std::function<void()>> changes[] = {
        {"name", [&] { object->SetName(QStringLiteral("Pin")); }},
        {"colour", [&] { object->SetColor(clRed), object->Invalidate(object); }},
        {"box", [&] { object->SetVisible(false); }},
        {"count", [&] { Add(*object); }},
        {"by hand",
         [&] {
             object->SetIdent(QStringLiteral("pin 1"));
             EXPECT_TRUE(m_model.index(0, 0, m_model.IndexOf(*layer)).isValid());
             m_model.Refresh();
         }},
    };
    for (const auto& [name, change] : changes) {
        told.clear();
        change();
        Settle();
        EXPECT_TRUE(told.contains(object) && told.contains(layer)) << name;
    }
    EXPECT_EQ(text(), QStringLiteral("pin 1"));
    told.clear();
    TZEPObject* other = Add(*m_scene);
    Settle();
    for (const bool byBox : {false, true}) { // what stands beside it is not told
        told.clear();
        if (byBox)
            m_model.setData(m_model.IndexOf(*other), Qt::Unchecked, Qt::CheckStateRole);
        else
            other->Invalidate(other);
        Settle();
        EXPECT_EQ(told, std::set<void*>{other}) << byBox;
    }
    EXPECT_FALSE(other->Visible());
}

TEST_F(SceneModel, ASlotMayFreeWhatIsYetToBeTold) {
    TZEPObject* shown = Add(*m_scene);
    TZEPObject* other = Add(*m_scene);
    for (int i = 0; i < 50; ++i) Add(*other);
    m_model.SetRoot(shown);
    Settle();
    int told = 0;
    QObject::connect(&m_model, &QAbstractItemModel::dataChanged, [&] {
        ++told;
        other->Clear();
    });
    for (int i = 0; i < 50; ++i) other->GetItem(i)->Invalidate(other->GetItem(i));
    Add(*shown)->SetVisible(false);
    Settle();
    EXPECT_GT(told, 0);
}

TEST_F(SceneModel, AFilterSearchesAgainWhenTheTreeChanges) {
    auto* layer = Add(*m_scene, QStringLiteral("layer"));
    auto* door = Add(*layer, QStringLiteral("door"));
    Add(*layer, QStringLiteral("wall"));
    const TTester tester(&m_model, TTester::FailureReportingMode::Fatal);
    m_model.SetFilter(
        [](const TZEPObject& object) { return object.Ident() == QLatin1String("door"); });
    EXPECT_EQ(m_model.Found(), 1);
    EXPECT_EQ(m_model.rowCount(m_model.IndexOf(*layer)), 1);
    Add(*layer, QStringLiteral("door"), false);
    delete door;
    Add(*layer, QStringLiteral("door"));
    Settle();
    EXPECT_EQ(m_model.Found(), 2);
    EXPECT_EQ(m_model.rowCount(m_model.IndexOf(*layer)), 2);
    m_model.SetFilter({});
    ExpectInStep();
}

TEST_F(SceneModel, FollowsAFileThatIsReadIntoTheScene) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("a.zep"));
    Add(*Add(*m_scene, QStringLiteral("a")), QStringLiteral("b"))->SetVisible(false);
    m_scene->SaveToFile(file);
    Add(*m_scene, QStringLiteral("c"));
    const TTester tester(&m_model, TTester::FailureReportingMode::Fatal);
    m_scene->LoadFromFile(file);
    ExpectInStep();
    EXPECT_EQ(m_model.rowCount(), 1);
}

} // namespace
} // namespace ZEP
