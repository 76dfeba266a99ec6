#include <zep/scene/Scene.h>
#include <zep/view/Actor.h>

#include <gtest/gtest.h>

#include <QTest>

namespace ZEP {
namespace {

TZEPActor* AddActor(TZEPObject* parent, const QString& name, QStringList& notes) {
    auto* actor = new TZEPActor(parent);
    actor->SetName(name);
    actor->SetParentComponent(parent);
    QObject::connect(actor, &TZEPActor::OnAction, [&notes](TZEPObject* sender, double time) {
        notes << sender->Name() + ' ' + QString::number(time);
    });
    return actor;
}

TEST(Actor, PassesTheTickOnAfterItsOwnEvent) {
    TZEPScene scene;
    QStringList notes;
    TZEPActor* a = AddActor(&scene, "A", notes);
    TZEPActor* silent = AddActor(a, "Silent", notes);
    silent->disconnect();
    AddActor(silent, "Below", notes);
    AddActor(&scene, "B", notes);
    scene.Action(2.5);
    EXPECT_EQ(notes, (QStringList{"A 2.5", "Below 2.5", "B 2.5"}));
}

TEST(Actor, AHandlerMayFreeActors) {
    TZEPScene scene;
    QStringList notes;
    TZEPActor* first = AddActor(&scene, "First", notes);
    AddActor(first, "Child", notes);
    TZEPActor* second = AddActor(&scene, "Second", notes);
    AddActor(&scene, "Third", notes);
    QObject::connect(first, &TZEPActor::OnAction, [&] {
        delete second;
        delete first;
    });
    scene.Action(1);
    EXPECT_EQ(notes, (QStringList{"First 1", "Third 1"}));
    EXPECT_EQ(scene.GetItemsCount(), 1);
}

/// A panel that notes when it is asked to repaint.
struct NotedPanel : TZEPScenePanel {
    NotedPanel(QString name, QStringList& notes) : Name(std::move(name)), Notes(notes) {}
    void Invalidate() override { Notes << Name; }
    void SceneDestroyed() override {}
    QString Name;
    QStringList& Notes;
};

TEST(Animation, TicksTheTreeAndThenThePanelsInOrder) {
    TZEPScene scene;
    QStringList notes;
    NotedPanel second(QStringLiteral("second"), notes), first(QStringLiteral("first"), notes);
    scene.RegisterGLPanel(&first);
    scene.RegisterGLPanel(&second);
    TZEPActor* actor = AddActor(&scene, "Actor", notes);
    std::vector<double> times;
    QObject::connect(actor, &TZEPActor::OnAction,
                     [&](TZEPObject*, double time) { times.push_back(time); });
    notes.clear();
    scene.SetAnimation(true);
    scene.SetAnimation(true);
    actor->Invalidate(actor);
    EXPECT_EQ(notes, QStringList()) << "the tick repaints";
    ASSERT_TRUE(QTest::qWaitFor([&] { return times.size() >= 5; }));
    scene.SetAnimation(false);
    for (qsizetype i = 0; i + 2 < notes.size(); i += 3) {
        EXPECT_TRUE(notes[i].startsWith(QStringLiteral("Actor"))) << i;
        EXPECT_EQ(notes.mid(i + 1, 2), (QStringList{"first", "second"})) << i;
    }
    EXPECT_GE(times[4] - times[0], 0.1) << "four periods of 40 ms, in seconds";
    const auto ticks = times.size();
    QTest::qWait(150);
    EXPECT_EQ(times.size(), ticks) << "no tick once it is off";
    actor->Invalidate(actor);
    EXPECT_EQ(notes.last(), "second") << "a change repaints again";
}

TEST(Animation, DesigningKeepsTheFlagAlone) {
    TZEPScene scene;
    QStringList notes;
    AddActor(&scene, "Actor", notes);
    scene.SetDesigning(true);
    scene.SetAnimation(true);
    EXPECT_TRUE(scene.Animation());
    QTest::qWait(150);
    EXPECT_EQ(notes, QStringList());
}

TEST(Animation, TheTimerGoesWithTheScene) {
    QStringList notes;
    auto scene = std::make_unique<TZEPScene>();
    TZEPActor* actor = AddActor(scene.get(), "Actor", notes);
    bool ticked = false;
    QObject::connect(actor, &TZEPActor::OnAction, [&ticked] { ticked = true; });
    scene->SetAnimation(true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ticked; }));
    scene.reset();
    notes.clear();
    QTest::qWait(100);
    EXPECT_EQ(notes, QStringList());
}

} // namespace
} // namespace ZEP
