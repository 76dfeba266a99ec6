#include <zep/framework/Component.h>
#include <zep/framework/Exception.h>

#include <QPointer>

#include <gtest/gtest.h>

#include <algorithm>

namespace ZEP {
namespace {

/// Remembers whose end it was told of.
class Listener : public TComponent {
public:
    using TComponent::TComponent;
    std::vector<TComponent*> Removed;

protected:
    void Notification(TComponent* component, TOperation operation) override {
        if (operation == opRemove) Removed.push_back(component);
        TComponent::Notification(component, operation);
    }
};

TEST(Component, OwnerFreesWhatItOwnsAndForgetsWhatIsFreed) {
    TComponent owner;
    QPointer<TComponent> a = new TComponent(&owner);
    QPointer<TComponent> b = new TComponent(&owner);
    delete a;
    EXPECT_EQ(owner.ComponentCount(), 1);
    EXPECT_EQ(owner.Components(0), b.data());
    {
        TComponent other;
        other.InsertComponent(b);
        EXPECT_EQ(owner.ComponentCount(), 0);
    }
    EXPECT_TRUE(b.isNull());
    EXPECT_THROW(static_cast<void>(owner.Components(0)), Exception);
}

TEST(Component, NamesAreIdentifiersUniqueInTheirOwner) {
    TComponent owner;
    TComponent other;
    auto* a = new TComponent(&owner);
    auto* b = new TComponent(&owner);
    a->SetName(QStringLiteral("Box1"));
    EXPECT_THROW(b->SetName(QStringLiteral("BOX1")), Exception);
    EXPECT_EQ(b->Name(), QString());
    for (const char* bad : {"1Box", "a b", "Bo-x", "Bö"})
        EXPECT_THROW(b->SetName(QString::fromUtf8(bad)), Exception) << bad;
    EXPECT_EQ(owner.FindComponent(QStringLiteral("bOx1")), a);
    a->SetName(QStringLiteral("BOX1")); // only the case: still its own name
    b->SetName(QStringLiteral("_b2"));
    other.InsertComponent(a);
    EXPECT_EQ(owner.FindComponent(QStringLiteral("Box1")), nullptr);
    EXPECT_EQ(other.FindComponent(QStringLiteral("Box1")), a);
    b->SetName(QStringLiteral("Box1"));
    EXPECT_THROW(other.InsertComponent(b), Exception);
    EXPECT_EQ(b->Owner(), &owner);
}

TEST(Component, RemovalFromTheMiddleLeavesEveryIndexRight) {
    TComponent owner;
    std::vector<TComponent*> all;
    for (int i = 0; i < 6; ++i) all.push_back(new TComponent(&owner));
    for (const std::size_t middle : {1U, 4U, 0U}) { // the second one was moved by the first

        owner.RemoveComponent(all[middle]);
        delete all[middle];
        all.erase(all.begin() + static_cast<std::ptrdiff_t>(middle));
        std::vector<TComponent*> left;
        for (int i = 0; i < owner.ComponentCount(); ++i) left.push_back(owner.Components(i));
        EXPECT_TRUE(std::ranges::is_permutation(left, all));
    }
}

TEST(Component, ARenamedOneGivesItsNameFree) {
    TComponent owner;
    auto* a = new TComponent(&owner);
    auto* b = new TComponent(&owner);
    a->SetName(QStringLiteral("Box"));
    a->SetName(QStringLiteral("Cube"));
    EXPECT_EQ(owner.FindComponent(QStringLiteral("Box")), nullptr);
    b->SetName(QStringLiteral("Box"));
    EXPECT_EQ(owner.FindComponent(QStringLiteral("box")), b);
    a->SetName({});
    EXPECT_EQ(owner.FindComponent(QStringLiteral("Cube")), nullptr);
}

TEST(Component, ListenersAreToldOnceAndMayGoFirst) {
    Listener listener;
    auto watched = std::make_unique<TComponent>();
    {
        Listener gone;
        watched->FreeNotification(&gone);
    }
    watched->FreeNotification(&listener);
    watched->FreeNotification(&listener);
    TComponent* address = watched.get();
    watched.reset();
    EXPECT_EQ(listener.Removed, std::vector<TComponent*>{address});

    TComponent quiet;
    quiet.FreeNotification(&listener);
    quiet.RemoveFreeNotification(&listener);
    EXPECT_EQ(listener.Removed.size(), 1U);
}

} // namespace
} // namespace ZEP
