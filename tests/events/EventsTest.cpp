#include "tests/objects/RepaintCounter.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/framework/stream/Reader.h>
#include <zep/framework/stream/StreamFile.h>

#include <QPointer>

#include <gmock/gmock.h>

#include <thread>

namespace ZEP {
namespace {

/// Notes what it hears, and acts once.
class TListener {
public:
    TListener(TZEPObject& object, std::function<void()> act = {})
        : m_object(&object), m_act(std::move(act)) {
        object.RegisterNotify(Entry());
    }
    ~TListener() { Leave(); }
    TListener(const TListener&) = delete;
    TListener& operator=(const TListener&) = delete;

    void Leave() {
        if (m_object) m_object->UnregisterNotify(Entry());
    }
    std::vector<TZEPObjectAction> Heard;

private:
    TZEPObjectNotify Entry() {
        return {[](void* context, TZEPObject*, TZEPObjectAction action, const void*) {
                    auto& self = *static_cast<TListener*>(context);
                    self.Heard.push_back(action);
                    if (const auto act = std::exchange(self.m_act, {})) act();
                },
                this};
    }

    QPointer<TZEPObject> m_object;
    std::function<void()> m_act;
};

TEST(Listeners, OneThatLeavesInItsCallLeavesTheOthersTold) {
    TZEPScene scene;
    std::unique_ptr<TListener> first;
    TListener second(scene);
    scene.UnregisterNotify({});
    first = std::make_unique<TListener>(scene, [&] { first->Leave(); });
    TListener third(scene);
    Add<TZEPBox>(&scene);
    EXPECT_THAT(second.Heard, testing::ElementsAre(saInsert));
    EXPECT_THAT(third.Heard, testing::ElementsAre(saInsert));
}

TEST(Listeners, OnceTheSenderIsGoneTheRestIsNotTold) {
    TZEPScene scene;
    QPointer<TZEPBox> box = Add<TZEPBox>(&scene);
    const TListener first(scene, [&] { delete box; });
    const TListener second(scene);
    box->SetName("Box");
    EXPECT_FALSE(box);
    // The removal, which happens within the renaming, is told to both.
    EXPECT_THAT(second.Heard, testing::ElementsAre(saRemove));
}

TEST(Listeners, ALightMayBeFreedAsItComes) {
    TZEPScene scene;
    QPointer<TZEPLight> light = new TZEPLight;
    const TListener listener(scene, [&] { delete light; });
    light->SetParentComponent(&scene);
    EXPECT_FALSE(light);
}

TEST(Listeners, WhatIsReadMayBeFreedAsSoonAsItIsHeardOf) {
    for (const char* text :
         {"object Read: TZEPActor end", "object A: TZEPActor object TZEPCamera end end"}) {
        TZEPScene scene;
        const QPointer<TZEPObject> group = Add<TZEPActor>(&scene);
        group->SetName(QStringLiteral("A"));
        const TListener listener(scene, [&] { // the name, or the camera
            delete (group->GetItemsCount() > 0 ? group->GetItem(0) : group.data());
        });
        const auto source = MakeSource(TStreamForm::Text, text);
        TReader reader(*source);
        group->LoadFromReader(reader);
        EXPECT_EQ(group ? group->GetItemsCount() : 0, 0) << text;
    }
}

TEST(Listeners, WhatOneDoesWithWhatLeavesHolds) {
    TZEPScene scene;
    auto* from = Add<TZEPActor>(&scene);
    auto* to = Add<TZEPActor>(&scene);
    auto* box = Add<TZEPBox>(from);
    const TListener mover(*from, [&] { box->SetParentComponent(to); });
    box->SetParentComponent(&scene);
    EXPECT_EQ(box->Parent(), to);
    EXPECT_EQ(from->GetItemsCount(), 0);
    EXPECT_THAT(mover.Heard, testing::ElementsAre(saRemove)); // once
}

TEST(Listeners, WhatComesIntoASceneMayGoOnToAnother) {
    TZEPScene first, second;
    TZEPActor group;
    auto* camera = Add<TZEPCamera>(&group);
    auto* box = Add<TZEPBox>(&group);
    QObject::connect(camera, &TZEPCamera::SceneChanged, [&] {
        if (camera->Scene() == &first) group.SetParentComponent(&second);
    });
    group.SetParentComponent(&first);
    EXPECT_EQ(box->Scene(), &second);
}

TEST(Listeners, OneThatThrowsIsToldOfTheNextTry) {
    TZEPActor from;
    auto* box = Add<TZEPBox>(&from);
    const TListener listener(from, [] { throw Exception(QStringLiteral("stays")); });
    EXPECT_THROW(box->SetParentComponent(nullptr), Exception);
    EXPECT_EQ(box->Parent(), &from);
    box->SetParentComponent(nullptr);
    EXPECT_THAT(listener.Heard, testing::ElementsAre(saRemove, saRemove));
}

TEST(Listeners, TheParentOfWhatIsFreedMayBeFreedFirst) {
    TZEPScene scene;
    QPointer<TZEPActor> group = Add<TZEPActor>(&scene);
    QPointer<TZEPBox> box = Add<TZEPBox>(group);
    const TListener listener(scene, [&] {
        delete box; // goes already
        delete group;
    });
    delete box;
    EXPECT_FALSE(box);
    EXPECT_FALSE(group);
    EXPECT_EQ(scene.GetItemsCount(), 0);
}

class THears : public TComponent {
public:
    std::function<void()> Act;
    int Told = 0;

protected:
    void Notification(TComponent*, TOperation) override {
        ++Told;
        if (Act) Act();
    }
};

TEST(Listeners, AFreedOneIsNotToldOfAnEnd) {
    auto a = std::make_unique<THears>();
    auto b = std::make_unique<THears>();
    auto watched = std::make_unique<TComponent>();
    watched->FreeNotification(a.get());
    watched->FreeNotification(b.get());
    a->Act = [&] { b.reset(); };
    b->Act = [&] { a.reset(); };
    watched.reset();
    EXPECT_TRUE(!a || !b);
}

TEST(Repaints, AreAskedForWhateverGoes) {
    TZEPScene scene;
    TRepaintCounter shown(scene);
    auto* camera = Add<TZEPCamera>(&scene);
    auto* target = new TZEPBox;
    camera->SetTargetObject(target);
    auto* group = Add<TZEPActor>(&scene);
    auto* box = Add<TZEPBox>(group);
    auto* other = Add<TZEPBox>(group);
    const std::pair<const char*, std::function<void()>> changes[] = {
        {"freed", [&] { delete box; }},
        {"out", [&] { other->SetParentComponent(nullptr); }},
        {"target gone", [&] { delete target; }},
        {"after animation",
         [&] {
             scene.SetAnimation(true);
             group->SetVisible(false);
             scene.SetAnimation(false);
         }},
    };
    for (const auto& [name, change] : changes) {
        shown.Count = 0;
        change();
        EXPECT_GT(shown.Count, 0) << name;
    }
    EXPECT_EQ(camera->TargetObject(), nullptr);
}

TEST(Animation, IsNotOnWhereThereAreNoTimers) {
    std::thread([] { // which Qt did not start
        TZEPScene scene;
        EXPECT_THROW(scene.SetAnimation(true), Exception);
        EXPECT_FALSE(scene.Animation());
    })
        .join();
}

TEST(ChangeIndex, FollowsAnotherParent) {
    TZEPActor first, second;
    TZEPBox box;
    box.SetParentComponent(&first);
    const int before = box.GetChangeIndex();
    box.SetParentComponent(&second);
    EXPECT_NE(box.GetChangeIndex(), before);
}

TEST(Nesting, EndsWithAnErrorBeforeAnyWalkDoes) {
    TZEPScene scene;
    TZEPObject* last = &scene;
    for (int level = 0; level < DeepestNesting; ++level) {
        auto* next = new TZEPActor(&scene);
        next->SetParentComponent(last);
        next->XForm()->Translate()->SetX(1);
        last = next;
    }
    EXPECT_DOUBLE_EQ(last->GetAbsoluteMatrix()[3][0], DeepestNesting);
    EXPECT_DOUBLE_EQ(last->GetAbsoluteCenter()[0], DeepestNesting);
    auto* beyond = new TZEPActor(&scene);
    EXPECT_THROW(beyond->SetParentComponent(last), Exception);
    EXPECT_EQ(beyond->Parent(), nullptr);
    // What hangs below counts, and what has gone from there does not.
    beyond->SetParentComponent(last->Parent());
    auto* below = new TZEPActor(&scene);
    EXPECT_THROW(below->SetParentComponent(beyond), Exception);
    TZEPActor top;
    below->SetParentComponent(&top);
    EXPECT_THROW(top.SetParentComponent(last->Parent()), Exception);
    delete below;
    EXPECT_NO_THROW(top.SetParentComponent(last->Parent()));
    int visited = 0;
    scene.Iterate([](TZEPObject*, void* count) { ++*static_cast<int*>(count); }, &visited);
    EXPECT_EQ(visited, DeepestNesting + 3);
}

TEST(Nesting, OfOwnersEndsFromAboveAndFromBelow) {
    TComponent top;
    TComponent* last = &top;
    for (int level = 0; level < DeepestNesting; ++level) last = new TComponent(last);
    EXPECT_THROW(new TComponent(last), Exception);
    auto owned = std::make_unique<TComponent>();
    for (int level = 0; level < DeepestNesting; ++level) {
        auto owner = std::make_unique<TComponent>();
        owner->InsertComponent(owned.release());
        owned = std::move(owner);
    }
    TComponent beyond;
    EXPECT_THROW(beyond.InsertComponent(owned.get()), Exception);
    delete owned->Components(0);
    EXPECT_NO_THROW(beyond.InsertComponent(owned.get()));
    beyond.RemoveComponent(owned.get());
}

TEST(Assigning, CopiesWhatWasNeverTouched) {
    TZEPLine from, to;
    to.P2()->SetData(1, 2, 3);
    to.Assign(&from);
    EXPECT_EQ(to.P2()->Data(), zero3d);
}

} // namespace
} // namespace ZEP
